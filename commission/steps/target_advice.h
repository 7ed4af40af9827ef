#pragma once

#include <filesystem>
#include <string>

#include "commission/run/run.h"

namespace touch::commission {

/// With how many targets a panel is best calibrated.
struct TargetAdvice {
  int targets = 0;  ///< 2, 3, 5 or 9
  std::string why;  ///< a sentence
  friend bool operator==(const TargetAdvice&, const TargetAdvice&) = default;
};

/// As the last measurement of this panel has it, told by its serial number among the runs in
/// `base`; where none is known, as the run's use wants it.
TargetAdvice adviseTargets(const std::filesystem::path& base, const Run& run);

}  // namespace touch::commission
