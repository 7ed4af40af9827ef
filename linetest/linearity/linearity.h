#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/guide_lines.h"

namespace touch {

/// The panel that is measured: what its screen is in twips, and how large it is.
struct MeasuredPanel {
  TwipsSize screen;
  double widthMm = 0;
  double heightMm = 0;

  /// For a panel of unknown size: 96 logical pixels an inch.
  static MeasuredPanel ofNominalSize(TwipsSize screen);

  /// The length over which a line's deviations are a percent: the width for a vertical line, the
  /// height for a horizontal one.
  double acrossMm(Orientation orientation) const {
    return orientation == Orientation::vertical ? widthMm : heightMm;
  }
  double alongMm(Orientation orientation) const {
    return orientation == Orientation::vertical ? heightMm : widthMm;
  }
  double percentOf(double millimetres, Orientation orientation) const {
    return millimetres * 100 / acrossMm(orientation);
  }
};

/// Samples nearer to the panel's edge than this are judged apart: resistive panels bend there.
inline constexpr double edgeZoneMm = 3.5;

/// A straight line that was to be followed; `position` is its x or y in twips.
struct GuidedLine {
  Orientation orientation = Orientation::vertical;
  float position = 0;
};

/// Signed distances from the guide in mm, positive to the right and downwards. All 0 when `count`
/// is.
struct DeviationFigures {
  std::size_t count = 0;
  double average = 0;
  double maximum = 0;
  double minimum = 0;
  double rms = 0;
  double absoluteMaximum = 0;
};

/// What a traced line says of the panel. Lengths in mm. The best-fitting line is the one with the
/// least sum of squared perpendicular distances, so that no direction is preferred.
struct LineFigures {
  DeviationFigures all;
  DeviationFigures centre;  ///< samples outside the edge zone
  DeviationFigures edge;    ///< samples within it
  double offset =
      0;  ///< signed distance of the best-fitting line from the guide, at the guide's middle
  double tilt = 0;          ///< how far it drifts across the guide in 100 mm
  double straightness = 0;  ///< greatest perpendicular distance of a sample from it
  double straightnessRms = 0;
  double coverage = 0;    ///< part of the guide's length between the outermost samples, 0 to 1
  double largestGap = 0;  ///< longest piece between them without a sample: a dead strip shows here
};

/// `samples` in twips, at least one.
LineFigures measureLine(const GuidedLine& guide, std::span<const TwipsPoint> samples,
                        const MeasuredPanel& panel);

enum class LimitUnit : std::uint8_t { millimetres, percent };

/// The greatest absolute deviation that passes.
struct LinearityLimits {
  double centre = 1;
  double edge = 2;
  LimitUnit unit = LimitUnit::millimetres;
};

struct LineVerdict {
  bool centre = true;
  bool edge = true;
  bool passed() const { return centre && edge; }
};

/// Deviations of exactly the limit pass.
LineVerdict judge(const LineFigures& figures, const LinearityLimits& limits,
                  const MeasuredPanel& panel, Orientation orientation);

/// The limit in mm for a line of this orientation.
double limitMm(double limit, LimitUnit unit, const MeasuredPanel& panel, Orientation orientation);

/// A line with its measurement.
struct LineResult {
  std::string label;  ///< "V-1", "H-9"
  GuidedLine guide;
  std::vector<TwipsPoint> samples;
  LineFigures figures;
};

/// "V-3": number counted from 1.
std::string lineLabel(Orientation orientation, int number);

}  // namespace touch
