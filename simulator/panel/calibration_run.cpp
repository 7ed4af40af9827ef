#include "simulator/panel/calibration_run.h"

#include <array>

namespace touch::simulator {

namespace {

// The grid's outer lines stand 1/32 of the screen in from its edges.
constexpr double near = 1.0 / 32;
constexpr double middle = 1.0 / 2;
constexpr double far = 31.0 / 32;

constexpr std::array<Point, 2> twoTargets{{{1.0 / 8, 7.0 / 8}, {7.0 / 8, 1.0 / 8}}};
constexpr std::array<Point, 3> threeTargets{{{far, near}, {near, near}, {near, far}}};
constexpr std::array<Point, 5> fiveTargets{
    {{middle, middle}, {far, near}, {near, near}, {near, far}, {far, far}}};
constexpr std::array<Point, 9> nineTargets{{{middle, middle},
                                            {far, middle},
                                            {far, near},
                                            {middle, near},
                                            {near, near},
                                            {near, middle},
                                            {near, far},
                                            {middle, far},
                                            {far, far}}};

}  // namespace

std::span<const Point> expectedTargets(int count) {
  switch (count) {
    case 2:
      return twoTargets;
    case 3:
      return threeTargets;
    case 5:
      return fiveTargets;
    case 9:
      return nineTargets;
    default:
      return {};
  }
}

bool CalibrationRun::arm(int point, int count, int samples) {
  const auto targets = expectedTargets(count);
  if (point < 0 || static_cast<std::size_t>(point) >= targets.size()) return false;
  if (targets.size() != readings_.size()) readings_.assign(targets.size(), std::nullopt);
  targets_ = targets;
  armed_ = static_cast<std::size_t>(point);
  samples_ = samples;
  readings_[armed_].reset();
  return true;
}

std::optional<int> CalibrationRun::wanted() const {
  if (readings_.empty() || readings_[armed_]) return std::nullopt;
  return samples_;
}

void CalibrationRun::take(Point raw) {
  if (wanted()) readings_[armed_] = raw;
}

std::optional<Point> CalibrationRun::current() const {
  return readings_.empty() ? std::nullopt : readings_[armed_];
}

std::vector<CalibrationPair> CalibrationRun::pairs() const {
  std::vector<CalibrationPair> pairs;
  for (std::size_t i = 0; i < readings_.size(); ++i) {
    if (!readings_[i]) return {};
    pairs.push_back({*readings_[i], targets_[i]});
  }
  return pairs;
}

}  // namespace touch::simulator
