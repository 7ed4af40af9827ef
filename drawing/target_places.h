#pragma once

#include <array>
#include <vector>

#include "drawing/surface.h"

namespace touch {

/// The lines on which targets sit: the outer ones 1/32 of the screen in from each edge, the others
/// at its quarters.
struct CalibrationGrid {
  explicit CalibrationGrid(TwipsSize screen);
  std::array<float, 5> x;
  std::array<float, 5> y;
};

/// The targets in the order in which they are touched, for 2, 3, 5 or 9 points; none for any other
/// count.
std::vector<TwipsPoint> calibrationTargets(int count, TwipsSize screen);

}  // namespace touch
