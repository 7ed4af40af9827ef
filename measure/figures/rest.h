#pragma once

#include <vector>

#include "measure/measurement.h"

namespace touch::measure {

/// What a finger that rests on one place says of the panel. Lengths in mm.
struct RestFigures {
  std::string task;
  std::size_t samples = 0;
  Seconds duration{};     ///< 0 when times are not known
  double noiseRms = 0;    ///< of one direction, the mean of both, without the drift
  double peakToPeak = 0;  ///< of the direction in which it is greater
  double drift = 0;       ///< how far the place wanders in this time
};

/// One for each place that was touched.
std::vector<RestFigures> measureRest(const Measurement& measurement);

/// The noise of all places together, which is known better than that of one.
double restNoise(std::span<const RestFigures> rests);

}  // namespace touch::measure
