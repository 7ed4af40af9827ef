#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "measure/units.h"

namespace touch::measure {

/// A line to follow with the finger.
struct Guide {
  std::string_view name;  ///< "V-1" to "V-9", "H-1" to "H-9", "D-1", "D-2", "V-5 back" …
  Place from;
  Place to;
  bool back = false;  ///< the same line as another, in the other direction
};

/// All guides. "V-1" to "V-9" lie at equal distances from left to right, "H-1" to "H-9" from top to
/// bottom, the outer ones 1/32 of the panel from its edge.
std::span<const Guide> allGuides();

/// Which lines a measurement wants.
enum class LineSet : std::uint8_t {
  ten,       ///< those of the canvas: every other of the eighteen
  eighteen,  ///< the vertical and the horizontal ones
  full,      ///< also two diagonals, and three lines in both directions
};
std::vector<const Guide*> guidesOf(LineSet set);

/// Nothing for other names.
const Guide* findGuide(std::string_view name);

/// A guide on a panel: its frame of coordinates, along and across.
class GuideFrame {
 public:
  GuideFrame(const Guide& guide, const PanelSize& size);
  double length() const { return length_; }
  double along(const PointMm& point) const { return (point - from_).dot(direction_); }
  /// Positive to the right and downwards; the same for a line and its way back.
  double across(const PointMm& point) const { return (point - from_).dot(normal_); }
  PointMm at(double along) const { return from_ + along * direction_; }
  const PointMm& normal() const { return normal_; }
  const PointMm& direction() const { return direction_; }
  /// The panel's side over which it is a percent: the width for a vertical line, the height for a
  /// horizontal one, the smaller of both for a diagonal.
  Millimetres side() const { return side_; }

 private:
  PointMm from_;
  PointMm direction_;
  PointMm normal_;
  double length_;
  Millimetres side_;
};

/// A place to touch: "tap 1" … "tap 25", row by row, or "rest 1" … "rest 5".
struct Target {
  std::string name;
  Place at;
};

constexpr int tapsPerTarget = 3;
/// For 9 or 25 targets.
std::vector<Target> tapTargets(int count);
/// The middle, and four towards the corners.
std::vector<Target> restTargets();
/// The task of all strokes that rub the panel.
inline constexpr std::string_view rubTask = "rub";

/// Whether a task of a file is one of those.
bool isTask(std::string_view name);

}  // namespace touch::measure
