#pragma once

#include <vector>

#include "measure/figures/spread.h"
#include "measure/measurement.h"

namespace touch::measure {

/// Nobody taps the same target again so soon: such a touch is the same one, reported twice.
constexpr Seconds sameTap{0.15};

/// The taps on one target. Lengths in mm.
struct TapTarget {
  std::string task;
  PointMm at;
  std::vector<PointMm> taps{};     ///< where they were reported
  PointMm miss = PointMm::Zero();  ///< from the target to their mean
  std::size_t missed = 0;          ///< taps that nothing came of
  std::size_t doubled = 0;         ///< reported once more in the same moment
};

struct TapFigures {
  std::vector<TapTarget> targets;
  double meanMiss = 0;  ///< distance of a tap from its target
  double worstMiss = 0;
  PointMm meanVector = PointMm::Zero();  ///< in which direction taps miss
  double spread = 0;  ///< standard deviation of one direction around each target's own mean
  std::size_t missed = 0;
  std::size_t doubled = 0;
  std::size_t wanting = 0;  ///< taps that have not been made
};

TapFigures measureTaps(const Measurement& measurement);

}  // namespace touch::measure
