#include "measure/procedure/procedure.h"

#include <algorithm>
#include <utility>

#include "measure/figures/taps.h"

namespace touch::measure {

namespace {

std::vector<Task> tasksOf(TouchTest test, const Plan& plan) {
  std::vector<Task> tasks;
  switch (test) {
    case TouchTest::rest:
      for (const Target& target : restTargets())
        tasks.push_back({target.name, target.at});
      break;
    case TouchTest::taps:
      for (const Target& target : tapTargets(plan.tapTargets))
        tasks.push_back({target.name, target.at});
      break;
    case TouchTest::coverage:
      tasks.push_back({std::string(rubTask)});
      break;
    case TouchTest::directions:
      // Each line is followed by its way back, so that little time is between them.
      for (const char* const name :
           {"D-1", "D-1 back", "D-2", "V-5", "V-5 back", "H-5", "H-5 back"})
        tasks.push_back({name, {}, findGuide(name)});
      break;
  }
  return tasks;
}

std::size_t placeOf(std::vector<Source>& sources, const Source& source) {
  const auto found = std::ranges::find(sources, source);
  const auto place = static_cast<std::size_t>(found - sources.begin());
  if (found == sources.end()) sources.push_back(source);
  return place;
}

}  // namespace

std::vector<std::optional<TouchTest>> testsOf(const Plan& plan) {
  std::vector<std::optional<TouchTest>> tests;
  if (plan.lines) tests.emplace_back();
  if (plan.lines && plan.lineSet == LineSet::full) tests.emplace_back(TouchTest::directions);
  if (plan.taps) tests.emplace_back(TouchTest::taps);
  if (plan.rest) tests.emplace_back(TouchTest::rest);
  if (plan.coverage) tests.emplace_back(TouchTest::coverage);
  return tests;
}

Procedure::Procedure(Measurement& measurement, TouchTest test)
    : measurement_(measurement),
      test_(test),
      tasks_(tasksOf(test, measurement.plan)),
      cells_(measureCoverage(measurement)) {
  if (test == TouchTest::coverage) return;
  const auto open =
      std::ranges::find_if(tasks_, [this](const Task& task) { return !isDone(task); });
  if (open != tasks_.end()) at_ = static_cast<std::size_t>(open - tasks_.begin());
}

void Procedure::use(const Source& source) {
  source_ = placeOf(measurement_.sources, source);
}

bool Procedure::isFarOff(const Trace& trace) const {
  const Guide* const guide = findGuide(trace.task);
  if (guide == nullptr || trace.blame != Blame::undecided) return false;
  const GuideFrame frame(*guide, measurement_.size);
  const double limit = measurement_.limits[Length::farOff].on(frame.side()).value;
  return std::ranges::any_of(trace.samples, [&](const Sample& sample) {
    return std::abs(frame.across(measurement_.point(trace, sample))) > limit;
  });
}

bool Procedure::wasTouched(const Task& task) const {
  return std::ranges::any_of(measurement_.traces, [&](const Trace& trace) {
    return trace.task == task.name && trace.blame != Blame::hand;
  });
}

bool Procedure::isDone(const Task& task) const {
  switch (test_) {
    case TouchTest::taps: {
      const auto taps = measureTaps(measurement_).targets;
      const auto target = std::ranges::find(taps, task.name, &TapTarget::task);
      return target != taps.end() && target->taps.size() + target->missed >= tapsPerTarget;
    }
    case TouchTest::coverage:
      return cells_.part >= 1;
    default:
      return wasTouched(task) && std::ranges::none_of(measurement_.traces, [&](const Trace& trace) {
               return trace.task == task.name && isFarOff(trace);
             });
  }
}

std::size_t Procedure::tapsMade() const {
  if (test_ != TouchTest::taps || current() == nullptr || visitBegins_) return 0;
  const TapTarget target = measureTaps(measurement_).targets[at_];
  return target.taps.size() + target.missed;
}

double Procedure::rested() const {
  if (test_ != TouchTest::rest || !open_ || open_->samples.empty()) return 0;
  const Seconds time = open_->samples.back().time - open_->samples.front().time;
  return std::min(time / measurement_.limits.rest, 1.0);
}

bool Procedure::asksWhoDidThat() const {
  const Task* const task = current();
  return task != nullptr && task->guide != nullptr && !open_ &&
         std::ranges::any_of(measurement_.traces, [&](const Trace& trace) {
           return trace.task == task->name && isFarOff(trace);
         });
}

void Procedure::down(const Sample& sample) {
  if (current() == nullptr) return;
  const bool again = !lastTap_.empty() && sample.time - lastLift_ < sameTap;
  open_ = Trace{again ? lastTap_ : current()->name, source_, Blame::undecided, {}};
  move(sample);
}

std::optional<std::size_t> Procedure::move(const Sample& sample) {
  if (!open_) return std::nullopt;
  // What comes after the time is the finger's leaving.
  if (rested() < 1) open_->samples.push_back(sample);
  if (test_ != TouchTest::coverage) return std::nullopt;
  const CellGrid grid(measurement_.size);
  const std::size_t cell = grid.of(measurement_.point(*open_, sample));
  if (cells_.touched[cell]) return std::nullopt;
  cells_.touched[cell] = true;
  cells_.part += 1 / static_cast<double>(cells_.touched.size());
  return cell;
}

TouchResult Procedure::up() {
  if (!open_) return TouchResult::tooShort;
  const bool isFull = rested() >= 1;
  Trace trace = std::move(*open_);
  open_.reset();
  switch (test_) {
    case TouchTest::rest:
      if (!isFull) return TouchResult::tooShort;
      keep(std::move(trace));
      go(at_ + 1);
      return TouchResult::kept;
    case TouchTest::taps: {
      const bool again = !lastTap_.empty() && trace.samples.front().time - lastLift_ < sameTap;
      lastTap_ = trace.task;
      lastLift_ = trace.samples.back().time;
      if (again) {
        measurement_.traces.push_back(std::move(trace));
        return TouchResult::doubled;
      }
      keep(std::move(trace));
      if (tapsMade() >= tapsPerTarget) go(at_ + 1);
      return TouchResult::kept;
    }
    case TouchTest::coverage:
      measurement_.traces.push_back(std::move(trace));
      cells_ = measureCoverage(measurement_);
      return TouchResult::kept;
    case TouchTest::directions:
      break;
  }
  const bool strayed = isFarOff(trace);
  keep(std::move(trace));
  return strayed ? TouchResult::farOff : TouchResult::kept;
}

void Procedure::keep(Trace trace) {
  if (std::exchange(visitBegins_, false)) forget(tasks_[at_]);
  measurement_.traces.push_back(std::move(trace));
}

/// How often a line was drawn again because of the hand stays known.
void Procedure::forget(const Task& task) {
  std::erase_if(measurement_.traces, [&](const Trace& trace) {
    return trace.task == task.name && trace.blame != Blame::hand;
  });
}

void Procedure::nothingCame() {
  if (test_ != TouchTest::taps || current() == nullptr || open_) return;
  lastTap_.clear();
  keep({current()->name, source_, Blame::panel, {}});
  if (tapsMade() >= tapsPerTarget) go(at_ + 1);
}

void Procedure::decide(Blame blame) {
  if (current() == nullptr) return;
  for (Trace& trace : measurement_.traces)
    if (trace.task == current()->name && isFarOff(trace)) trace.blame = blame;
}

void Procedure::go(std::size_t number) {
  open_.reset();
  at_ = number;
  visitBegins_ = true;
}

void Procedure::next() {
  if (current() != nullptr) go(at_ + 1);
}

void Procedure::back() {
  if (at_ > 0) go(at_ - 1);
}

void Procedure::repeat() {
  if (current() == nullptr || !wasTouched(*current())) back();
  if (current() == nullptr) return;
  forget(*current());
  go(at_);
  lastTap_.clear();
  if (test_ == TouchTest::coverage) cells_ = measureCoverage(measurement_);
}

}  // namespace touch::measure
