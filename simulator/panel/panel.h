#pragma once

#include <random>

namespace touch::simulator {

/// A place as fractions of a full range: 0 is left or top, 1 is right or bottom.
struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

/// The height of every simulated panel as a fraction of its width: they are 4:3.
inline constexpr double panelHeight = 0.75;

/// The highest count of the converter; the lowest is 0.
inline constexpr double highestCount = 4095;

/// How a resistive panel falsifies a touch. All values are fractions of the converter's full range.
struct PanelTraits {
  double offsetX = 0;    ///< what the converter reads at the left edge
  double offsetY = 0;    ///< what it reads at the top edge
  double gainX = 1;      ///< how much of its range the panel's width takes
  double gainY = 1;      ///< how much of its range the panel's height takes
  double skew = 0;       ///< what is added to x from the top edge to the bottom edge
  double noise = 0;      ///< standard deviation of a single reading
  double bow = 0;        ///< how far the middle of each edge is drawn towards the panel's centre
  double deadStrip = 0;  ///< height of a strip across the panel that feels no touch
};

/// What the converter would read for `finger` without noise and without steps, from 0 to 1.
Point rawReading(const PanelTraits& panel, Point finger);

/// The middle of the dead strip as a fraction of the panel's height.
inline constexpr double deadStripMiddle = 0.325;
/// False on the dead strip.
bool feels(const PanelTraits& panel, Point finger);

/// Readings of a panel with its noise. Every sampler makes the same noise in the same order.
class PanelSampler {
 public:
  /// The mean of `samples` readings of what would be `clean` without noise, as fractions of the
  /// range. Each is in whole counts up to `highest`, with `noise` as its standard deviation. At
  /// least one is taken.
  Point average(Point clean, Point noise, double highest, int samples);

 private:
  std::mt19937 random_{4095};
};

}  // namespace touch::simulator
