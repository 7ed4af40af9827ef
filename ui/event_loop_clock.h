#pragma once

#include <QPointer>
#include <QWidget>

#include "support/clock.h"

namespace touch {

/// Real time in a program with windows: while it waits, a local event loop serves the windows.
class EventLoopClock final : public Clock {
 public:
  TimePoint now() const override { return std::chrono::steady_clock::now(); }
  void delay(std::chrono::milliseconds duration, const std::function<bool()>& cutShort) override;
  void yield(int passes) override;
  void stand(std::chrono::milliseconds longest,
             const std::function<bool(std::chrono::milliseconds)>& arrives) override;
  std::unique_ptr<Timer> makeTimer(std::function<void()> onTick) override;

  /// While the clock stands, what the user does reaches this window alone; without one none.
  void letThrough(QWidget* window) { throughTo_ = window; }

 private:
  QPointer<QWidget> throughTo_;
  bool stands_ = false;
};

}  // namespace touch
