#pragma once

#include "measure/measurement.h"

namespace touch::measure {

/// How the panel's directions became those of the reports, as parts of width and height counted
/// from the middle.
struct Orientation {
  Eigen::Matrix2d map = Eigen::Matrix2d::Identity();  ///< as measured
  Eigen::Matrix2d whole =
      Eigen::Matrix2d::Identity();  ///< the nearest quarter turn or mirror image
  double independence = 1;          ///< how far both directions are told apart, 0 to 1
};

/// Below this independence a panel does not tell X from Y.
inline constexpr double tooAlike = 0.4;

/// The middle of each guide against that of what was reported for it.
Orientation orientationOf(const Measurement& measurement);

/// The measurement as it would be if the directions were right.
Measurement turnedBack(const Measurement& measurement, const Eigen::Matrix2d& whole);

}  // namespace touch::measure
