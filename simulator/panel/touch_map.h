#pragma once

#include <optional>
#include <span>

#include "simulator/panel/panel.h"

namespace touch::simulator {

/// A calibration: the affine map from raw readings to places on the screen, both as fractions.
/// The default is what a controller leaves the factory with: what is read is what is reported.
struct TouchMap {
  double xFromX = 1;
  double xFromY = 0;
  double xShift = 0;
  double yFromX = 0;
  double yFromY = 1;
  double yShift = 0;

  Point operator()(Point raw) const {
    return {xFromX * raw.x + xFromY * raw.y + xShift, yFromX * raw.x + yFromY * raw.y + yShift};
  }
};

/// From places back to readings. Nothing for a map that takes places that are far apart to nearly
/// the same.
std::optional<TouchMap> inverse(const TouchMap& map);

/// A target that was touched: what was read there and where it stands on the screen.
struct CalibrationPair {
  Point raw;
  Point target;
};

/// The map with the least squared distance to the targets. Nothing for fewer than three pairs or
/// when the readings lie on one line.
std::optional<TouchMap> fitAffine(std::span<const CalibrationPair> pairs);

/// The map that fits two opposite corners, each axis by itself: skew stays. Nothing when the
/// readings are less than 200 counts apart in either axis.
std::optional<TouchMap> fitCorners(const CalibrationPair& first, const CalibrationPair& second);

}  // namespace touch::simulator
