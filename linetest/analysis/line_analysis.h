#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "drawing/guide_lines.h"

namespace touch {

/// Halves go to the even neighbour. Positions have 16 bits on screens up to 2184 pixels wide;
/// larger screens need more.
int roundedTwips(float position);

/// The guide line that a stroke is measured against.
struct LineMatch {
  int index = 0;     ///< as in GuideLines
  int position = 0;  ///< of the line, rounded, in twips

  Orientation orientation() const { return GuideLines::orientation(index); }
  friend bool operator==(const LineMatch&, const LineMatch&) = default;
};

/// What the matching of a stroke's start leaves behind.
struct Matching {
  std::optional<LineMatch> line;
  /// The pen's width from now on. It comes back from 1 only when the orientation that was tried
  /// last matched: a thin stroke stands for a start that hit no line, and stays thin until the user
  /// chooses a width.
  int drawWidth = 1;
};

/// Finds the guide line on which a stroke starts: the start lies in the line's band, not on the
/// band's edge.
class LineMatcher {
 public:
  LineMatcher(const GuideLines& guides, Bands bands) : guides_(guides), bands_(bands) {}

  /// Tries the vertical lines at `x`, the horizontal lines at `y`.
  Matching Hpostest(int x, int drawWidth) const;
  Matching Vpostest(int y, int drawWidth) const;
  /// Tries both. Where two lines cross the horizontal one wins, except at the upper and lower edge
  /// of the screen, where only a vertical line can begin.
  Matching postest(int x, int y, int drawWidth) const;

  /// `point` has left the band of line `index`.
  bool hasStrayed(int index, TwipsPoint point) const;

 private:
  Matching tryLines(Orientation orientation, int coordinate, int drawWidth) const;

  const GuideLines& guides_;
  Bands bands_;
};

/// How far `coordinate` lies from a line, in percent of the screen's width. The width is the
/// measure for horizontal lines as well, so that a percent is the same length in both directions,
/// although the band of a horizontal line is cut from the height.
Percent deviation(float coordinate, int position, TwipsSize screen);

struct StrokeStatistics {
  double sum = 0;  ///< percent
  Percent maximum;
  Percent minimum;
  std::size_t count = 0;

  double average() const { return sum / static_cast<double>(count); }
};

/// The signed deviations of at least one sample: x counts for a vertical line, y for a horizontal
/// one.
StrokeStatistics measureStroke(std::span<const TwipsPoint> samples, const LineMatch& line,
                               TwipsSize screen);

/// The results list of a measured stroke.
std::vector<std::string> resultLines(std::span<const TwipsPoint> samples, const LineMatch& line,
                                     TwipsSize screen, Percent tolerance);

/// "Vertical #3", "Horizontal #1".
std::string lineTitle(int index);

/// `start`, moved so that a panel of this length lies on the screen; at its beginning when it is
/// longer than that.
float onScreen(float start, float length, float screen);
/// The upper left corner of a list of `size` beside the pen, on the side where there is room.
TwipsPoint placeBeside(TwipsPoint pen, TwipsSize size, TwipsSize screen);
/// That corner, moved on the screen and off what must be seen beside the list: no farther than it
/// takes. Where there is no such place the list stays.
TwipsPoint clearOf(TwipsPoint corner, TwipsSize size, TwipsSize screen,
                   std::span<const TwipsRect> needed);
/// The guide line with some room on both sides, for a list that must not cover it.
TwipsRect aroundLine(const GuideLines& guides, int index);

}  // namespace touch
