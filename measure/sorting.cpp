#include "measure/sorting.h"

#include <algorithm>

namespace touch::measure {

namespace {

PointMm middleOf(const Measurement& measurement, const Trace& trace) {
  PointMm sum = PointMm::Zero();
  for (const Sample& sample : trace.samples)
    sum += measurement.point(trace, sample);
  return sum / static_cast<double>(trace.samples.size());
}

std::string nearestTarget(const Measurement& measurement, const Trace& trace,
                          const std::vector<Target>& targets) {
  const PointMm middle = middleOf(measurement, trace);
  return std::ranges::min(targets, {},
                          [&](const Target& target) {
                            return (measurement.size.point(target.at) - middle).norm();
                          })
      .name;
}

std::string nearestGuide(const Measurement& measurement, const Trace& trace) {
  const auto guides = guidesOf(measurement.plan.lineSet);
  const PointMm first = measurement.point(trace, trace.samples.front());
  const PointMm last = measurement.point(trace, trace.samples.back());
  const auto distance = [&](const Guide* guide) {
    const GuideFrame frame(*guide, measurement.size);
    double sum = 0;
    for (const Sample& sample : trace.samples)
      sum += std::abs(frame.across(measurement.point(trace, sample)));
    // A line and its way back differ by the direction alone, and most lines have no way back.
    const bool otherWay = frame.along(last) < frame.along(first);
    return std::pair(sum, guide->back ? (otherWay ? 1 : -1) : 0);
  };
  return std::string(std::ranges::min(guides, {}, distance)->name);
}

std::string taskOf(const Measurement& measurement, Test test, const Trace& trace) {
  switch (test) {
    case Test::lines:
      return nearestGuide(measurement, trace);
    case Test::taps:
      return nearestTarget(measurement, trace, tapTargets(measurement.plan.tapTargets));
    case Test::rest:
      return nearestTarget(measurement, trace, restTargets());
    case Test::coverage:
      break;
  }
  return std::string(rubTask);
}

}  // namespace

void addStrokes(Measurement& measurement, Test test, const Source& source,
                std::vector<Trace> strokes) {
  measurement.sources.push_back(source);
  for (Trace& stroke : strokes) {
    if (stroke.samples.empty()) continue;
    stroke.source = measurement.sources.size() - 1;
    stroke.task = taskOf(measurement, test, stroke);
    measurement.traces.push_back(std::move(stroke));
  }
}

std::vector<Trace> tracesOf(std::span<const Stroke> drawing) {
  std::vector<Trace> traces;
  for (const Stroke& stroke : drawing) {
    Trace& trace = traces.emplace_back();
    for (const TwipsPoint& sample : stroke.samples)
      trace.samples.push_back({{}, static_cast<double>(sample.x), static_cast<double>(sample.y)});
  }
  return traces;
}

std::vector<Trace> tracesOf(std::span<const Arrival> stream) {
  constexpr Seconds longestBetween{0.2};  // reports that take longer were not on their way
  std::vector<Trace> traces;
  bool touching = false;
  Seconds last{};
  for (const auto& [time, reports] : stream) {
    const Seconds between = std::min(time - last, longestBetween);
    const auto count = static_cast<double>(reports.size());
    double number = 0;
    for (const TouchReport& report : reports) {
      ++number;
      if (report.touching && !touching) traces.emplace_back();
      touching = report.touching;
      if (!touching) continue;
      traces.back().samples.push_back({time - between * (1 - number / count),
                                       static_cast<double>(report.x.value),
                                       static_cast<double>(report.y.value)});
    }
    if (!reports.empty()) last = time;
  }
  return traces;
}

}  // namespace touch::measure
