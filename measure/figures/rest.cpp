#include "measure/figures/rest.h"

#include <Eigen/QR>

namespace touch::measure {

namespace {

// A finger that comes down settles.
constexpr Seconds settling{0.1};

RestFigures measure(const Measurement& measurement, const Trace& trace) {
  RestFigures figures{.task = trace.task};
  const bool timed = measurement.isTimed(trace);
  std::vector<const Sample*> settled;
  for (const Sample& sample : trace.samples)
    if (!timed || sample.time - trace.samples.front().time >= settling) settled.push_back(&sample);
  figures.samples = settled.size();
  if (settled.size() < 3) return figures;
  if (timed) figures.duration = trace.samples.back().time - trace.samples.front().time;

  const auto count = static_cast<Eigen::Index>(settled.size());
  Eigen::MatrixX2d times(count, 2);
  Eigen::MatrixX2d places(count, 2);
  for (Eigen::Index i = 0; i < count; ++i) {
    const Sample& sample = *settled[static_cast<std::size_t>(i)];
    const double time =
        timed ? (sample.time - settled.front()->time).count() : static_cast<double>(i);
    times.row(i) << 1, time;
    places.row(i) = measurement.point(trace, sample).transpose();
  }
  const Eigen::Matrix2d line = times.colPivHouseholderQr().solve(places);
  const Eigen::MatrixX2d noise = places - times * line;
  figures.noiseRms = std::sqrt(noise.squaredNorm() / static_cast<double>(2 * (count - 2)));
  figures.peakToPeak = (noise.colwise().maxCoeff() - noise.colwise().minCoeff()).maxCoeff();
  figures.drift = line.row(1).norm() * (times(count - 1, 1) - times(0, 1));
  return figures;
}

}  // namespace

std::vector<RestFigures> measureRest(const Measurement& measurement) {
  std::vector<RestFigures> all;
  for (const Target& target : restTargets())
    for (const Trace& trace : measurement.traces)
      if (trace.task == target.name && trace.blame != Blame::hand && !trace.samples.empty())
        all.push_back(measure(measurement, trace));
  return all;
}

double restNoise(std::span<const RestFigures> rests) {
  double squares = 0;
  for (const RestFigures& rest : rests)
    squares += rest.noiseRms * rest.noiseRms;
  return rests.empty() ? 0 : std::sqrt(squares / static_cast<double>(rests.size()));
}

}  // namespace touch::measure
