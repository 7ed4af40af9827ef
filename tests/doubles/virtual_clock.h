#pragma once

#include "support/system_clock.h"
#include "tests/doubles/test.h"

namespace touch::test {

/// Time that jumps: a wait takes none, but everything that is due in it runs, and each wait of the
/// main line is written to the journal ("delay 100"). Waits inside a timer's tick are written as
/// well, where they happen.
class VirtualClock final : public QueuedClock {
 public:
  explicit VirtualClock(std::vector<std::string>& journal) : journal_(journal) {}

  TimePoint now() const override { return now_; }
  std::chrono::milliseconds elapsed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(now_ - TimePoint{});
  }

  void delay(std::chrono::milliseconds duration,
             const std::function<bool()>& cutShort = nullptr) override {
    const TimePoint end = now_ + duration;
    const std::size_t line = journal_.size();
    journal_.push_back("delay " + std::to_string(duration.count()));
    QueuedClock::delay(duration, cutShort);
    if (now_ < end) journal_[line] += " (cut short)";
  }
  void yield(int passes = 1) override {
    if (passes > 1) journal_.push_back("yield " + std::to_string(passes));
    QueuedClock::yield(passes);
  }

  void stand(std::chrono::milliseconds longest,
             const std::function<bool(std::chrono::milliseconds)>& arrives) override {
    if (!arrives(std::chrono::milliseconds(0))) sleepUntil(now_ + longest);
  }

  /// Runs `event` once when `time` from now has passed.
  void after(std::chrono::milliseconds time, std::function<void()> event) {
    const auto index = events_.size();
    events_.push_back(makeTimer([this, index, event = std::move(event)] {
      events_[index]->stop();
      event();
    }));
    events_.back()->start(time);
  }

  /// Told how far time has moved each time that it does: for what keeps a clock of its own.
  std::function<void(std::chrono::milliseconds)> onAdvance;

 private:
  void sleepUntil(TimePoint time) override {
    if (time <= now_) return;
    const auto step = time - now_;
    now_ = time;
    if (onAdvance) onAdvance(std::chrono::duration_cast<std::chrono::milliseconds>(step));
  }

  std::vector<std::string>& journal_;
  std::vector<std::unique_ptr<Timer>> events_;
  TimePoint now_{};
};

}  // namespace touch::test
