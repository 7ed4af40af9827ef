#include "measure/truth/trial.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "simulator/panel/calibration_run.h"

namespace touch::measure::truth {

namespace {

constexpr double steps = 16383;
constexpr double pauseBetween = 1.5;  // seconds

double uniform(std::mt19937& random, double least, double most) {
  return std::uniform_real_distribution(least, most)(random);
}

PointMm anyVector(double length, std::mt19937& random) {
  const double angle = uniform(random, 0, 2 * std::numbers::pi);
  return PointMm(std::cos(angle), std::sin(angle)) * length;
}

// One draw after the other: compilers take arguments in different orders.
PointMm scattered(std::mt19937& random) {
  std::normal_distribution chance;
  const double y = chance(random);
  return {chance(random), y};
}

/// What a hand strays while it follows a guide: slow waves of any phase.
class Wander {
 public:
  Wander(const Hand& hand, std::mt19937& random) : amplitude_(hand.wander) {
    for (Wave& wave : waves_)
      wave = {uniform(random, 25, 150), uniform(random, 0, 2 * std::numbers::pi)};
    shift_ = std::normal_distribution()(random) * amplitude_ / 2;
  }
  double at(double along) const {
    double sum = 0;
    for (const auto& [length, phase] : waves_)
      sum += std::sin(2 * std::numbers::pi * along / length + phase);
    const auto count = static_cast<double>(waves_.size());
    return shift_ + amplitude_ * sum * std::sqrt(2 / count);
  }

 private:
  struct Wave {
    double length;  // mm
    double phase;
  };
  double amplitude_;
  double shift_ = 0;
  std::array<Wave, 3> waves_{};
};

class Finger {
 public:
  Finger(const Trial& trial, Measurement& into)
      : trial_(trial), into_(into), random_(trial.seed), corner_(trial.size.point({1, 1})) {
    if (!trial.calibrated) return;
    std::vector<simulator::CalibrationPair> pairs;
    for (const simulator::Point& target : simulator::expectedTargets(9))
      pairs.push_back({simulator::rawReading(trial.traits, target), target});
    map_ = simulator::fitAffine(pairs).value_or(simulator::TouchMap{});
  }

  void draw(const Guide& guide) {
    const GuideFrame frame(guide, trial_.size);
    const Wander wander(trial_.hand, random_);
    constexpr double leastSamples = 150;
    const double speed = std::min(trial_.hand.speed, frame.length() * trial_.rate / leastSamples);
    const PointMm shift = guide.back ? trial_.hysteresis : PointMm(0, 0);
    lift();
    for (double along = 0; along <= frame.length(); along += speed / trial_.rate)
      report(guide.name, frame.at(along) + wander.at(along) * frame.normal(), shift);
    blameFarStrokes(guide.name, frame);
    time_ += pauseBetween;
  }

  void touch(std::string_view task, const PointMm& at, double seconds, double pause) {
    lift();
    for (const double end = time_ + seconds; time_ <= end;)
      report(task, at, PointMm::Zero());
    time_ += pause;
  }

  void tap(const Target& target) {
    const PointMm at = trial_.size.point(target.at) + scattered(random_) * trial_.hand.tapSpread;
    tapped_.push_back(at);
    touch(target.name, at, 0.1, 0.5);
  }
  const std::vector<PointMm>& tapped() const { return tapped_; }

  void rub() {
    constexpr double row = 2;  // mm
    lift();
    for (double y = 0.5; y < corner_.y(); y += row)
      for (double x = 0.5; x < corner_.x(); x += row)
        report(rubTask, {x, y}, PointMm::Zero());
  }

 private:
  void lift() { down_ = false; }

  /// One report of a finger at `at`, unless the panel feels none there.
  void report(std::string_view task, const PointMm& at, const PointMm& shift) {
    time_ += 1 / trial_.rate;
    if (trial_.dead) {
      const double place = trial_.dead->upright ? at.x() : at.y();
      if (place >= trial_.dead->from && place <= trial_.dead->to) return lift();
    }
    if (!down_) into_.traces.push_back({std::string(task), 0, Blame::undecided, {}});
    down_ = true;
    const Eigen::Vector2d part = distorted(at) + shift.cwiseQuotient(corner_);
    const auto inSteps = [](double value) {
      return std::round(std::clamp(value, 0.0, 1.0) * steps);
    };
    into_.traces.back().samples.push_back({Seconds(time_), inSteps(part.x()), inSteps(part.y())});
  }

  /// Where the panel reports a finger, as parts of its width and height.
  Eigen::Vector2d distorted(const PointMm& finger) {
    const simulator::Point raw =
        simulator::rawReading(trial_.traits, {finger.x() / corner_.x(), finger.y() / corner_.y()});
    const simulator::Point touched = map_(raw);
    const double u = 2 * finger.x() / corner_.x() - 1;
    const double v = 2 * finger.y() / corner_.y() - 1;
    PointMm at(touched.x * corner_.x(), touched.y * corner_.y());
    at += trial_.offset + trial_.scale.cwiseProduct(PointMm(u, v)) +
          trial_.tilt.cwiseProduct(PointMm(v, u)) + trial_.drift * time_;
    if (trial_.crack && (trial_.crack->upright ? finger.x() : finger.y()) > trial_.crack->place)
      at += trial_.crack->jump;
    at += scattered(random_) * trial_.noise;
    const Eigen::Vector2d half(0.5, 0.5);
    return trial_.directions * (at.cwiseQuotient(corner_) - half) + half;
  }

  /// The user of a trial always knows that it was not the hand.
  void blameFarStrokes(std::string_view task, const GuideFrame& frame) {
    const double far = into_.limits[Length::farOff].on(frame.side()).value;
    for (Trace& trace : into_.traces)
      if (trace.task == task && std::ranges::any_of(trace.samples, [&](const Sample& sample) {
            return std::abs(frame.across(into_.point(trace, sample))) > far;
          }))
        trace.blame = Blame::panel;
  }

  const Trial& trial_;
  Measurement& into_;
  std::mt19937 random_;
  PointMm corner_;
  simulator::TouchMap map_;
  double time_ = 0;
  bool down_ = false;
  std::vector<PointMm> tapped_;
};

}  // namespace

Recording recordAll(const Trial& trial, const Plan& plan, const Limits& limits) {
  Recording recording;
  Measurement& measurement = recording.measurement;
  measurement.size = trial.size;
  measurement.plan = plan;
  measurement.limits = limits;
  measurement.sources = {{SourceKind::reports, steps, steps, true, "simulation"}};
  Finger finger(trial, measurement);
  if (plan.lines)
    for (const Guide* guide : guidesOf(plan.lineSet))
      finger.draw(*guide);
  if (plan.rest)
    for (const Target& target : restTargets())
      finger.touch(target.name, trial.size.point(target.at), 3.2, pauseBetween);
  if (plan.taps)
    for (const Target& target : tapTargets(plan.tapTargets))
      for (int tap = 0; tap < tapsPerTarget; ++tap)
        finger.tap(target);
  if (plan.coverage) finger.rub();
  recording.tapped = finger.tapped();
  return recording;
}

Measurement record(const Trial& trial, const Plan& plan, const Limits& limits) {
  return recordAll(trial, plan, limits).measurement;
}

Trial goodPanel(std::mt19937& random, const Limits& limits) {
  constexpr std::array sizes{PanelSize{{96}, {54}, SizeSource::user},
                             PanelSize{{211}, {158}, SizeSource::user},
                             PanelSize{{344}, {194}, SizeSource::user}};
  Trial trial;
  trial.size = sizes[random() % sizes.size()];
  const auto small = [&](Length length) {
    return uniform(random, 0, 0.35) * limits[length].on(trial.size.height).value;
  };
  // The sheet's own errors are what its calibration is for.
  trial.traits = {.offsetX = 0.08, .offsetY = 0.1, .gainX = 0.82, .gainY = 0.78, .skew = 0.01};
  trial.traits.bow = small(Length::straightness) / trial.size.width.value;
  trial.offset = anyVector(small(Length::offset), random);
  trial.scale = anyVector(small(Length::scale), random);
  trial.tilt = anyVector(small(Length::tilt), random) / 2;
  trial.noise = uniform(random, 0.1, 0.5) * limits[Length::restNoise].on(trial.size.height).value;
  trial.hand = {uniform(random, 0.03, 0.2), uniform(random, 0.1, 0.3), uniform(random, 60, 200)};
  trial.rate = uniform(random, 60, 150);
  trial.seed = static_cast<std::uint32_t>(random());
  return trial;
}

void addFault(Trial& trial, CauseId cause, std::mt19937& random, const Limits& limits) {
  const PointMm corner = trial.size.point({1, 1});
  const auto broken = [&](Length length) {
    return uniform(random, 1.6, 4) * limits[length].on(trial.size.height).value;
  };
  const bool upright = random() % 2 == 0;
  const double side = upright ? corner.x() : corner.y();
  const auto anySign = [&] { return random() % 2 == 0 ? 1.0 : -1.0; };
  switch (cause) {
    case CauseId::offset:
      trial.offset = anyVector(broken(Length::offset), random);
      break;
    case CauseId::scale:
      trial.scale = anyVector(broken(Length::scale), random);
      break;
    case CauseId::tilt:
      trial.tilt = anyVector(broken(Length::tilt), random) / 2;
      break;
    case CauseId::turned: {
      constexpr std::array<std::array<double, 4>, 5> turns{
          {{-1, 0, 0, 1}, {1, 0, 0, -1}, {-1, 0, 0, -1}, {0, 1, -1, 0}, {0, -1, 1, 0}}};
      const auto& turn = turns[random() % turns.size()];
      trial.directions << turn[0], turn[1], turn[2], turn[3];
      break;
    }
    case CauseId::swapped:
      trial.directions << 0, 1, 1, 0;
      break;
    case CauseId::bow:
      // Of x and y it bends the longer side by that much.
      trial.traits.bow = anySign() * 1.5 * broken(Length::straightness) / corner.x();
      break;
    case CauseId::noise:
      trial.noise = broken(Length::restNoise);
      break;
    case CauseId::deadStrip: {
      const double width =
          std::max(uniform(random, 0.03, 0.12) * side, 1.5 * limits[Length::gap].on({side}).value);
      const double from = uniform(random, 0.1, 0.85) * (side - width);
      trial.dead = Strip{upright, from, from + width};
      break;
    }
    case CauseId::jump:
      trial.crack = Crack{upright, uniform(random, 0.2, 0.8) * side,
                          anyVector(broken(Length::straightness), random)};
      break;
    case CauseId::drift: {
      constexpr double duration = 100;  // seconds, about that of a measurement
      trial.drift = anyVector(2 * broken(Length::drift), random) / duration;
      break;
    }
    case CauseId::wires: {
      const double mix = uniform(random, 0.4, 0.6);
      trial.directions << mix, 1 - mix, mix + uniform(random, -0.1, 0.1), 1 - mix;
      break;
    }
    case CauseId::hand:
      trial.hand.wander = broken(Length::straightnessRms);
      break;
  }
}

}  // namespace touch::measure::truth
