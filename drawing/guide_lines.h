#pragma once

#include <array>
#include <cstdint>

#include "drawing/surface.h"
#include "support/quantity.h"

namespace touch {

enum class Orientation : std::uint8_t { vertical, horizontal };

/// Hundredths of the screen's width or height: a tolerance, or how far a sample is from its line.
using Percent = Quantity<struct ScreenPercentUnit, float>;

/// Half-widths of the tolerance bands around the guide lines, in twips.
struct Bands {
  float vertical = 0;    ///< of the vertical lines
  float horizontal = 0;  ///< of the horizontal lines
};

/// `tolerance` of the screen's width for vertical lines, of its height for horizontal ones.
Bands bandsOf(TwipsSize screen, Percent tolerance);

struct Segment {
  TwipsPoint from;
  TwipsPoint to;
};

/// The canvas's ten guide lines: index 0 to 4 are the vertical lines 1 to 5 from left to right, 5
/// to 9 the horizontal lines 1 to 5 from top to bottom.
class GuideLines {
 public:
  static constexpr int perOrientation = 5;
  static constexpr int count = 2 * perOrientation;
  /// The order in which the grid is drawn: the lines that cross the whole screen first.
  static constexpr std::array<int, count> drawingOrder = {0, 2, 4, 5, 7, 9, 1, 3, 6, 8};

  explicit GuideLines(TwipsSize screen);

  TwipsSize screen() const { return screen_; }
  /// x of vertical line `i`, 0 to 4.
  float V(int i) const { return vertical_[static_cast<std::size_t>(i)]; }
  /// y of horizontal line `i`, 0 to 4.
  float H(int i) const { return horizontal_[static_cast<std::size_t>(i)]; }

  static Orientation orientation(int index) {
    return index < perOrientation ? Orientation::vertical : Orientation::horizontal;
  }
  /// x or y of the line.
  float position(int index) const {
    return index < perOrientation ? V(index) : H(index - perOrientation);
  }

  /// The line from one edge of the screen to the other.
  Segment whole(int index) const;
  /// The line as the grid shows it, moved by `shift`: the second and the fourth end at the outer
  /// lines.
  Segment inGrid(int index, float shift = 0) const;

  /// The crossings of the first, third and fifth lines.
  std::array<TwipsPoint, 9> targets() const;

  /// Left, right, above or below the rectangle of the outer lines: where strokes along a line
  /// begin.
  bool isInMargin(TwipsPoint point) const;

 private:
  TwipsSize screen_;
  std::array<float, perOrientation> vertical_;
  std::array<float, perOrientation> horizontal_;
};

/// Bands and samples are compared on the side that matters for the line: x for a vertical one, y
/// for a horizontal one.
inline float across(Orientation orientation, TwipsPoint point) {
  return orientation == Orientation::vertical ? point.x : point.y;
}
inline float along(Orientation orientation, TwipsPoint point) {
  return orientation == Orientation::vertical ? point.y : point.x;
}

}  // namespace touch
