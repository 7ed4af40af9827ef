#include "measure/windows/reported_touch.h"

#include <QApplication>
#include <QMouseEvent>
#include <utility>

#include "ui/screens/touch_canvas.h"

namespace touch::measure {

namespace {

using namespace std::chrono_literals;

constexpr auto readingInterval = 10ms;
// A finger that rests is reported all the time; after this silence it has gone without a word.
constexpr auto longestSilence = 150ms;

std::chrono::milliseconds inMilliseconds(std::chrono::duration<double> time) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(time);
}

void send(QWidget& widget, QEvent::Type type, const QPointF& global) {
  const bool isRelease = type == QEvent::MouseButtonRelease;
  const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  QMouseEvent event(type, widget.mapFromGlobal(global), global, button,
                    isRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}

}  // namespace

ReportedTouch::ReportedTouch(QWidget& window, Clock& clock, TouchStream& stream,
                             std::function<void(const std::string&)> onLost)
    : window_(window),
      clock_(clock),
      stream_(stream),
      onLost_(std::move(onLost)),
      timer_(clock.makeTimer([this] { read(); })) {}

ReportedTouch::~ReportedTouch() = default;

Result<void, std::string> ReportedTouch::begin(int port) {
  if (port_ != 0) return {};
  if (auto begun = stream_.begin(port); !begun) return begun;
  port_ = port;
  expectReports(true);
  timer_->start(readingInterval);
  return {};
}

void ReportedTouch::expectReports(bool expected) const {
  for (TouchCanvas* const canvas : window_.findChildren<TouchCanvas*>())
    canvas->expectReports(expected);
}

void ReportedTouch::end() {
  if (std::exchange(port_, 0) == 0) return;
  timer_->stop();
  waiting_.clear();
  lift(inMilliseconds(clock_.now().time_since_epoch()));
  expectReports(false);
  stream_.end();
}

std::optional<Source> ReportedTouch::source() const {
  if (port_ == 0) return std::nullopt;
  return Source{SourceKind::reports, static_cast<double>(greatest_.value),
                static_cast<double>(greatest_.value), true, "COM" + std::to_string(port_)};
}

void ReportedTouch::read() {
  auto arrived = stream_.read();
  if (!arrived.empty()) {
    heard_ = clock_.now();
    waiting_.insert(waiting_.end(), arrived.begin(), arrived.end());
    // Not from within the tick: a touch may bring up a box, and the box is to be touched, too.
    QMetaObject::invokeMethod(
        &window_, [this] { deliver(); }, Qt::QueuedConnection);
  } else if (touched_ && waiting_.empty() && clock_.now() - heard_ >= longestSilence) {
    lift(inMilliseconds(heard_.time_since_epoch()));
  }
  if (const auto why = stream_.lost()) {
    end();
    onLost_(*why);
  }
}

void ReportedTouch::deliver() {
  while (!waiting_.empty()) {
    const ArrivedReport next = waiting_.front();
    waiting_.pop_front();
    follow(next);
  }
}

void ReportedTouch::follow(const ArrivedReport& arrived) {
  const TouchReport& report = arrived.report;
  const auto time = inMilliseconds(arrived.time);
  greatest_ = report.greatest;
  at_ = {fractionOf(report.x, report.greatest) * window_.width(),
         fractionOf(report.y, report.greatest) * window_.height()};
  if (!report.touching) return lift(time);
  const QPointF global = window_.mapToGlobal(at_);
  const bool isNew = touched_.isNull();
  if (isNew) touched_ = QApplication::widgetAt(global.toPoint());
  if (!touched_) return;
  if (auto* const canvas = qobject_cast<TouchCanvas*>(touched_.data())) {
    canvas->touchAt(at_, time);
  } else {
    send(*touched_, isNew ? QEvent::MouseButtonPress : QEvent::MouseMove, global);
  }
}

void ReportedTouch::lift(std::chrono::milliseconds time) {
  QWidget* const touched = std::exchange(touched_, nullptr);
  if (touched == nullptr) return;
  if (auto* const canvas = qobject_cast<TouchCanvas*>(touched)) {
    canvas->liftAt(time);
  } else {
    send(*touched, QEvent::MouseButtonRelease, window_.mapToGlobal(at_));
  }
}

}  // namespace touch::measure
