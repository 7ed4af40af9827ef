#include "app/touchctl/commands/simulated_hand.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace touch {

using namespace measure;

namespace {

constexpr Seconds pauseBetween{0.6};  // a tap that comes sooner would count as the same one
constexpr Seconds restTime{3.2};
constexpr Seconds lineTime{2};
constexpr Seconds tapTime{0.1};
constexpr double rowsApart = 2;  // mm

}  // namespace

std::vector<std::string> tasksOf(const Plan& plan) {
  std::vector<std::string> tasks;
  if (plan.lines)
    for (const Guide* guide : guidesOf(plan.lineSet))
      tasks.emplace_back(guide->name);
  if (plan.rest)
    for (const Target& target : restTargets())
      tasks.push_back(target.name);
  if (plan.taps)
    for (const Target& target : tapTargets(plan.tapTargets))
      tasks.push_back(target.name);
  if (plan.coverage) tasks.emplace_back(rubTask);
  return tasks;
}

Source SimulatedHand::source() {
  return {SourceKind::pointer, 1, 1, true, "simulation"};
}

std::vector<Trace> SimulatedHand::carryOut(std::string_view task, const Plan& plan) {
  // What changes with time on the panel does so in the hand's time, which takes none.
  simulation_.holdTime();
  auto traces = move(task, plan);
  simulation_.letTimeGo();
  return traces;
}

void SimulatedHand::pause(Seconds time) {
  simulation_.holdTime();
  pass(time);
  simulation_.letTimeGo();
}

SimulatedHand::Traces SimulatedHand::move(std::string_view task, const Plan& plan) {
  if (const Guide* const guide = findGuide(task)) return draw(*guide);
  for (const Target& target : restTargets())
    if (target.name == task) return rest(target);
  for (const Target& target : tapTargets(plan.tapTargets))
    if (target.name == task) return tap(target);
  return rub();
}

SimulatedHand::Traces SimulatedHand::draw(const Guide& guide) {
  Traces traces;
  const int samples = reportsIn(lineTime);
  for (int sample = 0; sample < samples; ++sample) {
    const double along = (sample + 0.5) / samples;
    move(traces, guide.name,
         {std::lerp(guide.from.x, guide.to.x, along), std::lerp(guide.from.y, guide.to.y, along)});
  }
  lift();
  return traces;
}

SimulatedHand::Traces SimulatedHand::tap(const Target& target) {
  Traces traces;
  for (int tap = 0; tap < tapsPerTarget; ++tap) {
    for (int sample = 0; sample < reportsIn(tapTime); ++sample)
      move(traces, target.name, target.at);
    lift();
  }
  return traces;
}

SimulatedHand::Traces SimulatedHand::rest(const Target& target) {
  Traces traces;
  for (const Seconds end = time_ + restTime; time_ <= end;)
    move(traces, target.name, target.at);
  lift();
  return traces;
}

SimulatedHand::Traces SimulatedHand::rub() {
  Traces traces;
  for (double y = rowsApart / 4; y < size_.height.value; y += rowsApart)
    for (double x = rowsApart / 4; x < size_.width.value; x += rowsApart)
      move(traces, rubTask, {x / size_.width.value, y / size_.height.value});
  lift();
  return traces;
}

void SimulatedHand::move(Traces& traces, std::string_view task, Place at) {
  pass(Seconds(1 / rate_));
  const auto reported = simulation_.report(at.x, at.y, controller_);
  if (!reported) {
    down_ = false;
    return;
  }
  if (!std::exchange(down_, true)) traces.push_back({std::string(task), 0, Blame::undecided, {}});
  traces.back().samples.push_back({time_, reported->x, reported->y});
}

void SimulatedHand::lift() {
  down_ = false;
  pass(pauseBetween);
}

void SimulatedHand::pass(Seconds time) {
  time_ += time;
  simulation_.letPass(std::chrono::duration_cast<std::chrono::microseconds>(time));
}

int SimulatedHand::reportsIn(Seconds time) const {
  return std::max(static_cast<int>(std::lround(time.count() * rate_)), 1);
}

}  // namespace touch
