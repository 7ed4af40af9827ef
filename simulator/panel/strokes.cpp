#include "simulator/panel/strokes.h"

#include <array>
#include <cmath>
#include <numbers>

namespace touch::simulator {

namespace {
constexpr std::array guides{0.03125, 0.265625, 0.5, 0.734375, 0.96875};
constexpr std::array radii{0.1, 0.2, 0.3};
constexpr Point panelMiddle{0.5, 0.5};
}  // namespace

Stroke lineStroke(Point from, Point to, int steps) {
  Stroke stroke;
  for (int step = 0; step <= steps; ++step) {
    const double part = static_cast<double>(step) / steps;
    stroke.push_back({std::lerp(from.x, to.x, part), std::lerp(from.y, to.y, part)});
  }
  return stroke;
}

Stroke circleStroke(Point centre, double radius, int steps) {
  Stroke stroke;
  for (int step = 0; step <= steps; ++step) {
    const double angle = 2 * std::numbers::pi * step / steps;
    stroke.push_back(
        {centre.x + radius * std::cos(angle), centre.y + radius / panelHeight * std::sin(angle)});
  }
  return stroke;
}

std::vector<Stroke> lines(int steps) {
  std::vector<Stroke> strokes;
  strokes.reserve(2 * guides.size());
  for (const double x : guides)
    strokes.push_back(lineStroke({x, guides.front()}, {x, guides.back()}, steps));
  for (const double y : guides)
    strokes.push_back(lineStroke({guides.front(), y}, {guides.back(), y}, steps));
  return strokes;
}

std::vector<Stroke> circles(int steps) {
  std::vector<Stroke> strokes;
  strokes.reserve(radii.size());
  for (const double radius : radii)
    strokes.push_back(circleStroke(panelMiddle, radius, steps));
  return strokes;
}

}  // namespace touch::simulator
