#pragma once

#include <span>
#include <vector>

#include "drawing/stroke.h"
#include "measure/measurement.h"
#include "reports/report_decoder.h"

namespace touch::measure {

enum class Test : std::uint8_t { lines, taps, rest, coverage };

/// Adds strokes of which nobody said what they follow: each goes to the guide or target that it is
/// nearest to.
void addStrokes(Measurement& measurement, Test test, const Source& source,
                std::vector<Trace> strokes);

/// The strokes of a drawing, which has no times.
std::vector<Trace> tracesOf(std::span<const Stroke> drawing);

/// Reports that came in together.
struct Arrival {
  Seconds time{};
  std::vector<TouchReport> reports;
};
/// The touches of a stream: from a touch to its release. Reports that came together get the times
/// between the arrival before and theirs.
std::vector<Trace> tracesOf(std::span<const Arrival> stream);

}  // namespace touch::measure
