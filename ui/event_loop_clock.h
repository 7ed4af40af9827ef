#pragma once

#include "support/clock.h"

namespace touch {

/// Real time in a program with windows: while it waits, a local event loop serves the windows.
class EventLoopClock final : public Clock {
 public:
  TimePoint now() const override { return std::chrono::steady_clock::now(); }
  void delay(std::chrono::milliseconds duration, const std::function<bool()>& cutShort) override;
  void yield(int passes) override;
  std::unique_ptr<Timer> makeTimer(std::function<void()> onTick) override;
};

}  // namespace touch
