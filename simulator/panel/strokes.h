#pragma once

#include <vector>

#include "simulator/panel/panel.h"

namespace touch::simulator {

/// The places of a finger that draws one stroke, in equal times.
using Stroke = std::vector<Point>;

/// A straight line in `steps` steps, at least one.
Stroke lineStroke(Point from, Point to, int steps);
/// A full circle that is round on the panel; `radius` as a fraction of the panel's width.
Stroke circleStroke(Point centre, double radius, int steps);

/// Five vertical and five horizontal lines over nearly the whole panel.
std::vector<Stroke> lines(int steps);
/// Three circles around the panel's middle.
std::vector<Stroke> circles(int steps);

}  // namespace touch::simulator
