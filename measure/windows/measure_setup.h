#pragma once

#include <optional>
#include <string>

#include "measure/measurement.h"

namespace touch::measure {

/// What is told once before a measurement and kept as long as the program runs: made once in main()
/// and passed by reference.
struct MeasureSetup {
  std::optional<PanelSize> size;  ///< as the user has entered it
  Plan plan;
  Limits limits = profiles().front().limits;
  std::string limitsName{profiles().front().name};  ///< of the profile, or of the file
  std::string panel, serialNumber, person;
};

}  // namespace touch::measure
