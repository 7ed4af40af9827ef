#include "measure/truth/figures.h"

#include <algorithm>
#include <cmath>

namespace touch::measure::truth {

namespace {

// A bow of A along a line is A(1 - v²), v from -1 to 1. Its best straight line is 2/3 A.
constexpr double bowFromLine = 2.0 / 3;
const double bowRms = std::sqrt(4.0 / 45);
// Where the outermost guides lie, from the middle.
constexpr double outermost = 1 - 2.0 / 32;

/// The hand of a machine, and a sheet without any error.
Trial exactPanel(std::uint32_t seed) {
  Trial trial;
  trial.calibrated = false;
  trial.hand.wander = 0;
  trial.seed = seed;
  return trial;
}

/// Bows upright lines at the edges of the panel by `mm`.
void bow(Trial& trial, double mm) {
  trial.traits.bow = mm / (outermost * trial.size.width.value);
}

/// How far the finger itself strayed between the taps on a target: its standard deviation in one
/// direction. Of 75 taps that is chance, and no panel's doing.
double spreadOfFinger(std::span<const PointMm> tapped) {
  constexpr std::size_t perTarget = tapsPerTarget;
  double squares = 0;
  for (std::size_t first = 0; first + perTarget <= tapped.size(); first += perTarget) {
    const auto taps = tapped.subspan(first, perTarget);
    PointMm sum = PointMm::Zero();
    for (const PointMm& tap : taps)
      sum += tap;
    for (const PointMm& tap : taps)
      squares += (tap - sum / perTarget).squaredNorm();
  }
  const std::size_t targets = tapped.size() / perTarget;
  return std::sqrt(squares / (static_cast<double>(targets) * 2 * (perTarget - 1)));
}

const LineFigures& lineNamed(const Analysis& analysis, std::string_view name) {
  return *std::ranges::find_if(analysis.lines,
                               [&](const LineFigures& line) { return line.guide->name == name; });
}

}  // namespace

bool Told::holds() const {
  return std::abs(measured - told) <= std::max(0.02, 0.02 * std::abs(told));
}

std::vector<Told> compareFigures(std::uint32_t seed) {
  constexpr double bent = 1.8;
  Trial trial = exactPanel(seed);
  trial.offset = {0.7, 0};
  trial.tilt = {0.45, 0};
  trial.noise = 0.03;
  trial.hand.speed = 30;
  trial.hand.tapSpread = 0.15;
  bow(trial, bent);
  Plan plan;
  plan.rest = plan.taps = true;
  plan.tapTargets = 25;
  const Recording recording = recordAll(trial, plan, profiles().front().limits);
  const Analysis analysis = analyse(recording.measurement);
  // On the left the sheet is drawn to the right.
  const LineFigures& line = lineNamed(analysis, "V-1");
  const double offset = trial.offset.x() + bowFromLine * bent;
  const double tilt = 2 * trial.tilt.x();
  const double straightness = bowRms * bent;
  const double rms = std::sqrt(offset * offset + tilt * tilt / 12 + straightness * straightness +
                               trial.noise * trial.noise);
  // A tap is the mean of its reports.
  constexpr double reportsOfTap = 11;
  const double spread =
      std::hypot(spreadOfFinger(recording.tapped), trial.noise / std::sqrt(reportsOfTap));
  return {{"straightness, maximum", bowFromLine * bent, line.straightness.maximum},
          {"straightness, RMS", straightness, line.straightness.rms},
          {"offset", offset, line.offset},
          {"tilt, end to end", tilt, line.tilt},
          {"RMS from the guide", rms, line.off.rms},
          {"scatter", trial.noise, line.scatter},
          {"jitter of a resting finger", trial.noise, restNoise(analysis.rests)},
          {"repeatability of taps", spread, analysis.taps->spread}};
}

Outcome judgeNear(Length limit, double factor, std::uint32_t seed) {
  Limits limits = profiles().front().limits;
  const double value = limits[limit].mm.value_or(Millimetres{}).value * factor;
  for (std::size_t i = 0; i < lengthCount; ++i)
    if (static_cast<Length>(i) != limit && static_cast<Length>(i) != Length::gap)
      limits.lengths[i] = {Millimetres{1000}, std::nullopt};
  Trial trial = exactPanel(seed);
  Plan plan;
  switch (limit) {
    case Length::straightness:
      bow(trial, value / bowFromLine);
      break;
    case Length::straightnessRms:
      bow(trial, value / bowRms);
      break;
    case Length::offset:
      trial.offset = {value, 0};
      break;
    case Length::tilt:
      trial.tilt = {value / 2, 0};
      break;
    case Length::scale:
      trial.scale = {value, 0};
      break;
    default:
      trial.noise = value;
      plan.lines = false;
      plan.rest = true;
      break;
  }
  const Measurement measurement = record(trial, plan, limits);
  return judge(measurement, analyse(measurement)).outcome();
}

}  // namespace touch::measure::truth
