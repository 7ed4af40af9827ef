#include "drawing/target_places.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace touch {

namespace {

/// A target as the indices of the grid lines that cross in it.
struct Crossing {
  std::size_t x;
  std::size_t y;
};

constexpr Crossing threePoints[] = {{4, 0}, {0, 0}, {0, 4}};
constexpr Crossing fivePoints[] = {{2, 2}, {4, 0}, {0, 0}, {0, 4}, {4, 4}};
constexpr Crossing ninePoints[] = {{2, 2}, {4, 2}, {4, 0}, {2, 0}, {0, 0},
                                   {0, 2}, {0, 4}, {2, 4}, {4, 4}};

std::span<const Crossing> crossings(int count) {
  switch (count) {
    case 3:
      return threePoints;
    case 5:
      return fivePoints;
    case 9:
      return ninePoints;
    default:
      return {};
  }
}

std::array<float, 5> gridLines(float length) {
  const float edge = length * 128 / 4096;
  const float quarter = length / 4;
  return {edge, quarter, 2 * quarter, quarter + 2 * quarter, length - edge};
}

}  // namespace

CalibrationGrid::CalibrationGrid(TwipsSize screen)
    : x(gridLines(screen.width)), y(gridLines(screen.height)) {}

std::vector<TwipsPoint> calibrationTargets(int count, TwipsSize screen) {
  if (count == 2) {
    // The controller's own two-point calibration expects them an eighth in from two opposite
    // corners.
    const float right = screen.width / 8;
    const float down = screen.height / 8;
    return {{right, screen.height - down}, {screen.width - right, down}};
  }
  const CalibrationGrid grid(screen);
  const auto chosen = crossings(count);
  std::vector<TwipsPoint> targets;
  std::transform(chosen.begin(), chosen.end(), std::back_inserter(targets), [&grid](Crossing at) {
    return TwipsPoint{grid.x[at.x], grid.y[at.y]};
  });
  return targets;
}

}  // namespace touch
