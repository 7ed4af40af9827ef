#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "measure/measurement.h"
#include "support/result.h"

namespace touch::measure {

/// A serial port, as it is chosen from a list.
struct PortChoice {
  int number = 0;
  std::string caption;  ///< "COM1 (/dev/ttyS0)"
};

/// What is told once before a measurement and kept as long as the program runs: made once in main()
/// and passed by reference.
struct MeasureSetup {
  std::optional<PanelSize> size;  ///< as the user has entered it
  std::optional<int> reportPort;  ///< COM port of the reports to measure; nothing: the pointer
  Plan plan;
  Limits limits = profiles().front().limits;
  std::string limitsName{profiles().front().name};  ///< of the profile, or of the file
  std::string panel, serialNumber, person;
};

/// A measurement that somebody else has begun and keeps.
struct GuidedMeasuring {
  Measurement begun;
  std::filesystem::path folder;  ///< of its lines' files
  /// Whatever is added is kept at once; why not, when that cannot be done.
  std::function<Status(const Measurement&)> keep;
  std::string recording{};  ///< file in the folder for what the controller reports, if it is read
};

}  // namespace touch::measure
