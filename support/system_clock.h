#pragma once

#include <map>
#include <vector>

#include "support/clock.h"

namespace touch {

/// A clock whose timers wait in a queue and run, in the order in which they are due, while it waits
/// itself. How time passes is left to the derived class.
class QueuedClock : public Clock {
 public:
  void delay(std::chrono::milliseconds duration, const std::function<bool()>& cutShort) override;
  void yield(int passes) override;
  void stand(std::chrono::milliseconds longest,
             const std::function<bool(std::chrono::milliseconds)>& arrives) override {
    arrives(longest);
  }
  std::unique_ptr<Timer> makeTimer(std::function<void()> onTick) override;

 protected:
  /// Returns when `now()` has reached `time`.
  virtual void sleepUntil(TimePoint time) = 0;

 private:
  class QueuedTimer;
  /// Runs the timer that is due first, if one is due by `time`; sleeps until then.
  bool runNext(TimePoint time);

  std::vector<QueuedTimer*> timers_;
};

/// Real time, for programs without windows.
class SystemClock final : public QueuedClock {
 public:
  TimePoint now() const override { return std::chrono::steady_clock::now(); }

 private:
  void sleepUntil(TimePoint time) override;
};

}  // namespace touch
