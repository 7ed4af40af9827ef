#include "simulator/panel/touch_map.h"

#include <cmath>

namespace touch::simulator {

namespace {

// Readings closer than this are one spot that was touched twice.
constexpr double sameSpot = 200 / highestCount;

Point mean(std::span<const CalibrationPair> pairs, Point CalibrationPair::*which) {
  Point sum;
  for (const CalibrationPair& pair : pairs) {
    sum.x += (pair.*which).x;
    sum.y += (pair.*which).y;
  }
  const auto count = static_cast<double>(pairs.size());
  return {sum.x / count, sum.y / count};
}

}  // namespace

std::optional<TouchMap> inverse(const TouchMap& map) {
  constexpr double flat = 0.01;
  const double determinant = map.xFromX * map.yFromY - map.xFromY * map.yFromX;
  if (!(std::abs(determinant) >= flat)) return std::nullopt;
  TouchMap back;
  back.xFromX = map.yFromY / determinant;
  back.xFromY = -map.xFromY / determinant;
  back.yFromX = -map.yFromX / determinant;
  back.yFromY = map.xFromX / determinant;
  back.xShift = -(back.xFromX * map.xShift + back.xFromY * map.yShift);
  back.yShift = -(back.yFromX * map.xShift + back.yFromY * map.yShift);
  return back;
}

std::optional<TouchMap> fitAffine(std::span<const CalibrationPair> pairs) {
  if (pairs.size() < 3) return std::nullopt;
  const Point rawMean = mean(pairs, &CalibrationPair::raw);
  const Point targetMean = mean(pairs, &CalibrationPair::target);

  double xx = 0, xy = 0, yy = 0;
  Point withX, withY;
  for (const auto& [raw, target] : pairs) {
    const Point r{raw.x - rawMean.x, raw.y - rawMean.y};
    const Point t{target.x - targetMean.x, target.y - targetMean.y};
    xx += r.x * r.x;
    xy += r.x * r.y;
    yy += r.y * r.y;
    withX.x += r.x * t.x;
    withX.y += r.x * t.y;
    withY.x += r.y * t.x;
    withY.y += r.y * t.y;
  }
  // The determinant is the squared area that the readings span.
  const double determinant = xx * yy - xy * xy;
  if (determinant < sameSpot * sameSpot * sameSpot * sameSpot) return std::nullopt;

  TouchMap map;
  map.xFromX = (withX.x * yy - withY.x * xy) / determinant;
  map.xFromY = (withY.x * xx - withX.x * xy) / determinant;
  map.yFromX = (withX.y * yy - withY.y * xy) / determinant;
  map.yFromY = (withY.y * xx - withX.y * xy) / determinant;
  map.xShift = targetMean.x - map.xFromX * rawMean.x - map.xFromY * rawMean.y;
  map.yShift = targetMean.y - map.yFromX * rawMean.x - map.yFromY * rawMean.y;
  return map;
}

std::optional<TouchMap> fitCorners(const CalibrationPair& first, const CalibrationPair& second) {
  const Point raw{second.raw.x - first.raw.x, second.raw.y - first.raw.y};
  if (std::abs(raw.x) < sameSpot || std::abs(raw.y) < sameSpot) return std::nullopt;
  TouchMap map;
  map.xFromX = (second.target.x - first.target.x) / raw.x;
  map.yFromY = (second.target.y - first.target.y) / raw.y;
  map.xShift = first.target.x - map.xFromX * first.raw.x;
  map.yShift = first.target.y - map.yFromY * first.raw.y;
  return map;
}

}  // namespace touch::simulator
