#include "ui/event_loop_clock.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QWindow>

namespace touch {

namespace {

/// Keeps what the user begins from all windows but one. What was begun before comes to its end.
class InputFilter final : public QObject {
 public:
  explicit InputFilter(QWidget* throughTo) : throughTo_(throughTo) {
    QCoreApplication::instance()->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
      case QEvent::KeyPress:
      case QEvent::ShortcutOverride:
      case QEvent::Shortcut:
      case QEvent::ContextMenu:
      case QEvent::TouchBegin:
      case QEvent::TabletPress:
        return !belongs(watched);
      default:
        return false;
    }
  }

 private:
  bool belongs(const QObject* watched) const {
    if (!throughTo_) return false;
    if (const auto* const widget = qobject_cast<const QWidget*>(watched))
      return widget->window() == throughTo_;
    return watched == throughTo_->windowHandle();
  }

  QPointer<QWidget> throughTo_;
};

class EventLoopTimer final : public Timer {
 public:
  EventLoopTimer(std::function<void()> onTick, const bool& clockStands) {
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [onTick = std::move(onTick), &clockStands] {
      if (clockStands) return;
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

void EventLoopClock::stand(std::chrono::milliseconds longest,
                           const std::function<bool(std::chrono::milliseconds)>& arrives) {
  // As long as nobody sees that a window is not painted.
  constexpr std::chrono::milliseconds glance{10};
  const auto end = now() + longest;
  stands_ = true;
  const InputFilter filter(throughTo_);
  do {
    // Closing a window counts as the user's input, and must be heard.
    QCoreApplication::processEvents();
  } while (!arrives(glance) && now() < end);
  stands_ = false;
}

std::unique_ptr<Timer> EventLoopClock::makeTimer(std::function<void()> onTick) {
  return std::make_unique<EventLoopTimer>(std::move(onTick), stands_);
}

}  // namespace touch
