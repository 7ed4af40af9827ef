#include "support/system_clock.h"

#include <algorithm>
#include <optional>
#include <thread>

namespace touch {

class QueuedClock::QueuedTimer final : public Timer {
 public:
  QueuedTimer(QueuedClock& clock, std::function<void()> onTick)
      : clock_(clock), onTick_(std::move(onTick)) {
    clock_.timers_.push_back(this);
  }
  ~QueuedTimer() override { std::erase(clock_.timers_, this); }
  QueuedTimer(const QueuedTimer&) = delete;
  QueuedTimer& operator=(const QueuedTimer&) = delete;

  void start(std::chrono::milliseconds interval) override {
    if (due_ && interval == interval_) return;
    interval_ = interval;
    due_ = clock_.now() + interval;
  }
  void stop() override { due_.reset(); }

  std::optional<TimePoint> due() const { return due_; }
  void tick() {
    // Ticks that were missed while something else held the thread are not made up for.
    due_ = std::max(*due_, clock_.now()) + interval_;
    // A copy: the tick may destroy its own timer.
    const auto onTick = onTick_;
    onTick();
  }

 private:
  QueuedClock& clock_;
  std::function<void()> onTick_;
  std::chrono::milliseconds interval_{};
  std::optional<TimePoint> due_;
};

std::unique_ptr<Timer> QueuedClock::makeTimer(std::function<void()> onTick) {
  return std::make_unique<QueuedTimer>(*this, std::move(onTick));
}

bool QueuedClock::runNext(TimePoint time) {
  QueuedTimer* next = nullptr;
  for (QueuedTimer* const timer : timers_) {
    if (timer->due() && (next == nullptr || *timer->due() < *next->due())) next = timer;
  }
  if (next == nullptr || *next->due() > time) return false;
  sleepUntil(*next->due());
  next->tick();
  return true;
}

void QueuedClock::delay(std::chrono::milliseconds duration, const std::function<bool()>& cutShort) {
  const TimePoint end = now() + duration;
  const auto isCut = [&cutShort] { return cutShort && cutShort(); };
  while (!isCut() && runNext(end)) {
  }
  if (!isCut()) sleepUntil(end);
}

void QueuedClock::yield(int passes) {
  // More passes than any handler needs are a rest: ten milliseconds, as long as they take on a slow
  // machine.
  constexpr int manyPasses = 1000;
  constexpr std::chrono::milliseconds rest{10};
  if (passes >= manyPasses) {
    QueuedClock::delay(rest, nullptr);
  } else {
    while (passes-- > 0 && runNext(now())) {
    }
  }
}

void SystemClock::sleepUntil(TimePoint time) {
  std::this_thread::sleep_until(time);
}

}  // namespace touch
