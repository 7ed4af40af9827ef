#include "ui/event_loop_clock.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

namespace touch {

namespace {

class EventLoopTimer final : public Timer {
 public:
  explicit EventLoopTimer(std::function<void()> onTick) {
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [onTick = std::move(onTick)] {
      const auto tick = onTick;  // a copy: the tick may destroy its own timer
      tick();
    });
  }

  void start(std::chrono::milliseconds interval) override {
    if (timer_.isActive() && timer_.intervalAsDuration() == interval) return;
    timer_.start(interval);
  }
  void stop() override { timer_.stop(); }

 private:
  QTimer timer_;
};

}  // namespace

void EventLoopClock::delay(std::chrono::milliseconds duration,
                           const std::function<bool()>& cutShort) {
  QEventLoop loop;
  QTimer end;
  end.setSingleShot(true);
  end.setTimerType(Qt::PreciseTimer);
  QObject::connect(&end, &QTimer::timeout, &loop, &QEventLoop::quit);
  end.start(duration);
  if (!cutShort) {
    loop.exec();
    return;
  }
  while (end.isActive() && !cutShort())
    loop.processEvents(QEventLoop::WaitForMoreEvents);
}

void EventLoopClock::yield(int passes) {
  // More passes than any event handler needs are a rest; spinning through them would only heat the
  // processor.
  constexpr int manyPasses = 1000;
  constexpr std::chrono::milliseconds rest{10};
  if (passes >= manyPasses) {
    delay(rest, nullptr);
    return;
  }
  while (passes-- > 0)
    QCoreApplication::processEvents();
}

std::unique_ptr<Timer> EventLoopClock::makeTimer(std::function<void()> onTick) {
  return std::make_unique<EventLoopTimer>(std::move(onTick));
}

}  // namespace touch
