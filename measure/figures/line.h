#pragma once

#include <optional>
#include <vector>

#include "measure/figures/spread.h"
#include "measure/measurement.h"

namespace touch::measure {

/// A piece of a guide without samples.
struct Gap {
  double from = 0;  ///< mm along the guide
  double to = 0;
  /// Reports kept coming while it was passed: the hand was fast, or the readings jumped there.
  bool reportsKeptComing = false;

  double width() const { return to - from; }
};

/// A place of the course that the samples took, with noise averaged out.
struct Station {
  double along = 0;   ///< mm
  double across = 0;  ///< mm from the guide
  double time = 0;    ///< seconds
};

/// What the strokes along one guide say. Lengths in mm. Offset, tilt and straightness are those of
/// the course, so that a slow piece of the line counts no more than a fast one.
struct LineFigures {
  const Guide* guide = nullptr;
  Millimetres side;  ///< over which deviations are a percent
  double length = 0;
  std::size_t samples = 0;
  std::size_t byHand = 0;  ///< strokes that the user's hand spoiled, which do not count
  /// A stroke left its guide so far that it may belong elsewhere. It does not count until somebody
  /// has said who did that.
  bool farOff = false;
  bool blamesPanel = false;  ///< one did, and the user said that it was the panel

  Spread off;           ///< samples from the guide, also of strokes that do not count yet
  double centre = 0;    ///< the course's farthest from the guide, outside the edge zones
  double edge = 0;      ///< in them
  double offset = 0;    ///< of the best straight line at the guide's middle, with its sign
  double tilt = 0;      ///< how far that line drifts from end to end, with its sign
  Spread straightness;  ///< the course from it
  double scatter = 0;   ///< RMS of the samples around the course
  std::vector<Station> course;

  double coverage = 0;    ///< part of the guide's length, 0 to 1
  std::vector<Gap> gaps;  ///< those beyond the limit, and the largest in any case
  double largestGap = 0;
  bool reachesStart = false;  ///< samples in the edge zone there
  bool reachesEnd = false;

  std::optional<double> speed;       ///< mm a second
  std::optional<double> reportRate;  ///< reports a second
  std::optional<double> lost;        ///< seconds in which reports failed to come
};

LineFigures measureLine(const Measurement& measurement, const Guide& guide);

/// How far a line and its way back are apart at most; nothing when they have no place in common.
std::optional<double> hysteresis(const LineFigures& there, const LineFigures& back);

}  // namespace touch::measure
