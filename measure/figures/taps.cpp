#include "measure/figures/taps.h"

namespace touch::measure {

namespace {

PointMm meanOf(std::span<const PointMm> points) {
  PointMm sum = PointMm::Zero();
  for (const PointMm& point : points)
    sum += point;
  return sum / static_cast<double>(points.size());
}

PointMm placeOf(const Measurement& measurement, const Trace& trace) {
  std::vector<PointMm> points;
  for (const Sample& sample : trace.samples)
    points.push_back(measurement.point(trace, sample));
  return meanOf(points);
}

TapTarget measure(const Measurement& measurement, const Target& target) {
  TapTarget figures{.task = target.name, .at = measurement.size.point(target.at)};
  const Trace* before = nullptr;
  for (const Trace& trace : measurement.traces) {
    if (trace.task != target.name || trace.blame == Blame::hand) continue;
    if (trace.samples.empty()) {
      ++figures.missed;
      continue;
    }
    const bool again = before && before->source == trace.source && measurement.isTimed(trace) &&
                       trace.samples.front().time - before->samples.back().time < sameTap;
    before = &trace;
    if (again)
      ++figures.doubled;
    else
      figures.taps.push_back(placeOf(measurement, trace));
  }
  if (!figures.taps.empty()) figures.miss = meanOf(figures.taps) - figures.at;
  return figures;
}

}  // namespace

TapFigures measureTaps(const Measurement& measurement) {
  TapFigures all;
  double squares = 0;
  double freedom = 0;
  double taps = 0;
  for (const Target& target : tapTargets(measurement.plan.tapTargets)) {
    TapTarget figures = measure(measurement, target);
    const std::size_t made = figures.taps.size() + figures.missed;
    all.missed += figures.missed;
    all.doubled += figures.doubled;
    if (made < tapsPerTarget) all.wanting += tapsPerTarget - made;
    for (const PointMm& tap : figures.taps) {
      const PointMm miss = tap - figures.at;
      all.meanMiss += miss.norm();
      all.worstMiss = std::max(all.worstMiss, miss.norm());
      all.meanVector += miss;
      squares += (miss - figures.miss).squaredNorm();
      ++taps;
    }
    if (figures.taps.size() > 1) freedom += 2 * static_cast<double>(figures.taps.size() - 1);
    all.targets.push_back(std::move(figures));
  }
  if (taps > 0) {
    all.meanMiss /= taps;
    all.meanVector /= taps;
  }
  if (freedom > 0) all.spread = std::sqrt(squares / freedom);
  return all;
}

}  // namespace touch::measure
