#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "measure/judging/verdict.h"
#include "measure/truth/trial.h"

namespace touch::measure::truth {

/// A figure as the simulated panel was told to have it, and as it was measured, in mm.
struct Told {
  std::string_view figure;
  double told;
  double measured;

  /// Within 2 % or 0.02 mm.
  bool holds() const;
};

/// One panel with everything at once: shifted, aslant, bowed and trembling.
std::vector<Told> compareFigures(std::uint32_t seed);

/// The limits of which the verdict is tried close by.
inline constexpr Length triedLimits[] = {Length::straightness, Length::straightnessRms,
                                         Length::offset,       Length::tilt,
                                         Length::scale,        Length::restNoise};
/// What is thought of a panel that has this figure at `factor` times its limit, and nothing else.
Outcome judgeNear(Length limit, double factor, std::uint32_t seed);

}  // namespace touch::measure::truth
