#include "simulator/panel/panel.h"

#include <algorithm>
#include <cmath>

namespace touch::simulator {

namespace {

double inRange(double value) {
  return std::clamp(value, 0.0, 1.0);
}

double wholeCounts(double value, double highest) {
  return std::round(inRange(value) * highest) / highest;
}

}  // namespace

Point rawReading(const PanelTraits& panel, Point finger) {
  // From -1 at the left or top edge to 1 at the other.
  const double x = 2 * finger.x - 1;
  const double y = 2 * finger.y - 1;
  const Point bent{finger.x - panel.bow * x * (1 - y * y), finger.y - panel.bow * y * (1 - x * x)};
  return {inRange(panel.offsetX + panel.gainX * bent.x + panel.skew * bent.y),
          inRange(panel.offsetY + panel.gainY * bent.y)};
}

bool feels(const PanelTraits& panel, Point finger) {
  return std::abs(finger.y - deadStripMiddle) * 2 >= panel.deadStrip;
}

Point PanelSampler::average(Point clean, Point noise, double highest, int samples) {
  const int count = std::max(samples, 1);
  std::normal_distribution<double> spread;
  Point sum;
  for (int i = 0; i < count; ++i) {
    sum.x += wholeCounts(clean.x + noise.x * spread(random_), highest);
    sum.y += wholeCounts(clean.y + noise.y * spread(random_), highest);
  }
  return {sum.x / count, sum.y / count};
}

}  // namespace touch::simulator
