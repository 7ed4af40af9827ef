#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "simulator/panel/touch_map.h"

namespace touch::simulator {

/// Where the targets of a calibration stand, in the order in which they are touched; empty unless
/// `count` is 2, 3, 5 or 9.
std::span<const Point> expectedTargets(int count);

/// The targets of one calibration and the readings taken for them. A target takes the first touch
/// that begins after it was armed, however short.
class CalibrationRun {
 public:
  /// Waits for a touch on target `point` (from 0) of `count`, to be read `samples` times. Another
  /// count than before starts a new run. Returns false, and changes nothing, when there is no such
  /// target.
  bool arm(int point, int count, int samples);
  /// How many readings the armed target wants; nothing when none waits for a touch.
  std::optional<int> wanted() const;
  void take(Point raw);
  /// The reading of the target armed last, once it has been taken.
  std::optional<Point> current() const;
  /// Targets with their readings; empty while any is missing.
  std::vector<CalibrationPair> pairs() const;

 private:
  std::span<const Point> targets_;
  std::vector<std::optional<Point>> readings_;
  std::size_t armed_ = 0;
  int samples_ = 0;
};

}  // namespace touch::simulator
