#include "support/gate.h"

#include <chrono>
#include <utility>

namespace touch {

void runThen(const std::function<void()>& work, const std::function<void()>& after) {
  try {
    work();
  } catch (...) {
    after();
    throw;
  }
  after();
}

Gate::Gate(Clock& clock, Step onFree)
    : onFree_(std::move(onFree)), afterError_(clock.makeTimer([this] {
        afterError_->stop();
        takeWayOut();
      })) {}

bool Gate::run(const Step& action) {
  if (!isOpen()) return false;
  state_ = State::running;
  cutShort_ = false;
  finish(action);
  return true;
}

void Gate::runWithin(const Step& part) {
  if (isHeld()) {
    part();
  } else {
    run(part);
  }
}

void Gate::begin(const Step& opening, Step hurry) {
  if (!isOpen()) return;
  state_ = State::lasting;
  cutShort_ = false;
  hurry_ = std::move(hurry);
  try {
    opening();
  } catch (...) {
    finish([] { throw; });
  }
}

void Gate::end(const Step& last) {
  if (state_ == State::lasting) finish(last);
}

void Gate::finish(const Step& last) {
  try {
    runThen(last, [this] { letGo(); });
  } catch (...) {
    // A way out may be an action of its own. Nothing is begun while an error passes through.
    if (isLeaving()) afterError_->start(std::chrono::milliseconds::zero());
    throw;
  }
  takeWayOut();
}

void Gate::letGo() {
  hurry_ = nullptr;
  if (isShut()) return;
  state_ = State::open;
  if (onFree_) onFree_();
}

void Gate::cutShort() {
  cutShort_ = true;
  // A copy: who is told may end at once.
  if (const Step hurry = hurry_) hurry();
}

void Gate::leave(Step wayOut) {
  putOff(std::move(wayOut));
  takeWayOut();
}

void Gate::putOff(Step wayOut) {
  if (isShut()) return;
  wayOut_ = std::move(wayOut);
  cutShort();
}

void Gate::takeWayOut() {
  if (!isOpen()) return;
  if (const Step wayOut = std::exchange(wayOut_, nullptr)) wayOut();
}

void Gate::shut() {
  state_ = State::shut;
  wayOut_ = nullptr;
}

}  // namespace touch
