#include "simulator/panel/measured_panel.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace touch::simulator {

namespace {

/// Between which two of the lines a place is, and how far on the way to the second.
struct Between {
  std::size_t first = 0;
  std::size_t second = 0;
  double part = 0;
};

Between between(const std::vector<double>& lines, double place) {
  const auto next = std::ranges::upper_bound(lines, place);
  if (next == lines.begin()) return {};
  const auto second = static_cast<std::size_t>(next - lines.begin());
  const std::size_t first = second - 1;
  if (next == lines.end()) return {first, first, 0};
  return {first, second, (place - lines[first]) / (lines[second] - lines[first])};
}

}  // namespace

double Grid::at(Point place) const {
  if (values.empty()) return 0;
  const Between x = between(columns, place.x);
  const Between y = between(rows, place.y);
  const auto along = [&](std::size_t row) {
    const std::size_t start = row * columns.size();
    return std::lerp(values[start + x.first], values[start + x.second], x.part);
  };
  return std::lerp(along(y.first), along(y.second), y.part);
}

Point MeasuredPanel::reported(Point finger, double seconds) const {
  return directions({finger.x + errorX.at(finger) + drift.x * seconds,
                     finger.y + errorY.at(finger) + drift.y * seconds});
}

bool MeasuredPanel::feels(Point finger) const {
  return std::ranges::none_of(deadAreas, [finger](const DeadArea& area) {
    return finger.x >= area.from.x && finger.x <= area.to.x && finger.y >= area.from.y &&
           finger.y <= area.to.y;
  });
}

}  // namespace touch::simulator
