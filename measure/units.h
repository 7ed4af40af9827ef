#pragma once

#include <Eigen/Core>
#include <chrono>
#include <cstdint>

#include "support/quantity.h"

namespace touch::measure {

using Millimetres = Quantity<struct MillimetreUnit>;
using Percent = Quantity<struct PercentUnit>;
using Seconds = std::chrono::duration<double>;

constexpr Millimetres partOf(Millimetres side, Percent part) {
  return {side.value * part.value / 100};
}
constexpr Percent inPercent(Millimetres length, Millimetres side) {
  return {length.value * 100 / side.value};
}

/// A place on the panel in mm from its upper left corner, or a distance in both directions. The
/// algebra is on these.
using PointMm = Eigen::Vector2d;

/// A place as parts of the panel's width and height.
struct Place {
  double x = 0;
  double y = 0;
};

/// Where the size of a panel comes from; what rests on a nominal one is only as good as that.
enum class SizeSource : std::uint8_t { screenData, user, nominal };

/// The active area.
struct PanelSize {
  Millimetres width;
  Millimetres height;
  SizeSource source = SizeSource::nominal;

  PointMm point(Place at) const { return {at.x * width.value, at.y * height.value}; }
  friend bool operator==(const PanelSize&, const PanelSize&) = default;
};

/// 96 logical pixels an inch.
constexpr PanelSize nominalSize(double pixelsWide, double pixelsHigh) {
  constexpr double mmPerPixel = 25.4 / 96;
  return {{pixelsWide * mmPerPixel}, {pixelsHigh * mmPerPixel}, SizeSource::nominal};
}

}  // namespace touch::measure
