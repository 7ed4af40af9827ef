#pragma once

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "measure/judging/limits.h"
#include "measure/tasks.h"
#include "measure/units.h"

namespace touch::measure {

/// Where samples come from, and in what steps.
enum class SourceKind : std::uint8_t {
  reports,  ///< raw counts of the controller's serial reports
  pointer,  ///< pointer events of the system
};

struct Source {
  SourceKind kind = SourceKind::pointer;
  double stepsX = 1;  ///< the samples' range: from 0 to this
  double stepsY = 1;
  bool timed = false;  ///< whether the samples' times are known
  std::string from;    ///< the file or port that they were read from
  friend bool operator==(const Source&, const Source&) = default;
};

/// One report of a touch, in the steps of its source.
struct Sample {
  Seconds time{};
  double x = 0;
  double y = 0;
  friend bool operator==(const Sample&, const Sample&) = default;
};

/// A touch at a place that is given in parts of the panel's width and height. Raw counts are whole.
inline Sample sampleOf(const Source& source, Seconds time, double x, double y) {
  if (source.kind == SourceKind::reports)
    return {time, std::round(x * source.stepsX), std::round(y * source.stepsY)};
  return {time, x * source.stepsX, y * source.stepsY};
}

/// Who is to blame for a stroke far off its guide, or for a tap that nothing came of.
enum class Blame : std::uint8_t { undecided, panel, hand };

/// A finger from touching down to lifting up.
struct Trace {
  std::string task;  ///< the name of a guide or target, or `rubTask`
  std::size_t source = 0;
  Blame blame = Blame::undecided;
  std::vector<Sample> samples;  ///< none for a tap that the user made and nothing came of
  friend bool operator==(const Trace&, const Trace&) = default;
};

/// What the figures were taken on and by whom; empty where it is not known.
struct Conditions {
  std::string panel, serialNumber, screen, controller, firmware, unitType, program, date, person;
  std::map<std::string, std::string> settings;
  std::vector<std::string> parameterWords;
  friend bool operator==(const Conditions&, const Conditions&) = default;
};

/// The tests that a verdict wants.
struct Plan {
  bool lines = true;
  bool taps = false;
  bool rest = false;
  bool coverage = false;
  LineSet lineSet = LineSet::eighteen;
  int tapTargets = 9;
  friend bool operator==(const Plan&, const Plan&) = default;
};

/// All that was taken in one go on one panel. Figures and verdicts are computed from it, so that it
/// can be judged again with another size or other limits.
struct Measurement {
  Conditions conditions;
  PanelSize size;
  Plan plan;
  Limits limits = profiles().front().limits;
  std::vector<Source> sources;
  std::vector<Trace> traces;
  friend bool operator==(const Measurement&, const Measurement&) = default;

  PointMm point(const Trace& trace, const Sample& sample) const {
    const Source& source = sources[trace.source];
    return size.point({sample.x / source.stepsX, sample.y / source.stepsY});
  }
  bool isTimed(const Trace& trace) const { return sources[trace.source].timed; }
};

}  // namespace touch::measure
