#include "ui/screens/touch_canvas.h"

#include <QMouseEvent>
#include <algorithm>
#include <utility>

namespace touch {

TouchCanvas::TouchCanvas(QWidget* parent) : CanvasWidget(parent) {}

void TouchCanvas::touchThrough(const Simulation& simulation, std::string controller) {
  simulation_ = simulation;
  controller_ = std::move(controller);
}

void TouchCanvas::expectReports(bool expected) {
  lift();
  expectsReports_ = expected;
}

TwipsPoint TouchCanvas::inTwips(const QPointF& pixels) {
  return {static_cast<float>(pixels.x()) * twipsPerPixel,
          static_cast<float>(pixels.y()) * twipsPerPixel};
}

std::optional<TwipsPoint> TouchCanvas::reported(const QPointF& pointer) const {
  const TwipsSize size = sizeInTwips();
  const TwipsPoint at = inTwips(pointer);
  if (!simulation_.isThere()) return at;
  const auto report = simulation_.report(static_cast<double>(at.x / size.width),
                                         static_cast<double>(at.y / size.height), controller_);
  if (!report) return std::nullopt;
  return TwipsPoint{static_cast<float>(report->x) * size.width,
                    static_cast<float>(report->y) * size.height};
}

void TouchCanvas::follow(const QMouseEvent& event) {
  if (expectsReports_) {
    return simulation_.touch(std::clamp(event.position().x() / width(), 0.0, 1.0),
                             std::clamp(event.position().y() / height(), 0.0, 1.0));
  }
  eventTime_ = std::chrono::milliseconds(event.timestamp());
  put(reported(event.position()));
}

void TouchCanvas::touchAt(const QPointF& place, std::chrono::milliseconds time) {
  eventTime_ = time;
  put(inTwips(place));
}

void TouchCanvas::liftAt(std::chrono::milliseconds time) {
  eventTime_ = time;
  put(std::nullopt);
}

void TouchCanvas::put(const std::optional<TwipsPoint>& at) {
  const auto before = std::exchange(pen_, at);
  if (at && !before) {
    emit penDown(button_, *at);
  } else if (at) {
    // A piece of ink, and no more: where a stroke ends, whole pictures may be drawn anew and boxes
    // come up.
    showAtOnce(true);
    emit penMoved(*at);
    showAtOnce(false);
  } else if (before) {
    emit penUp(*before);
  }
}

void TouchCanvas::mousePressEvent(QMouseEvent* event) {
  CanvasWidget::mousePressEvent(event);
  event->accept();
  if (event->button() == button_ || !event->buttons().testFlag(button_)) lift();
  if (button_ != Qt::NoButton) return;
  button_ = event->button();
  follow(*event);
}

void TouchCanvas::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(button_)) lift();
  if (button_ != Qt::NoButton) follow(*event);
}

void TouchCanvas::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == button_) lift();
}

// Also when a window that came up has had the button's release.
void TouchCanvas::lift() {
  const bool wasHeld = std::exchange(button_, Qt::NoButton) != Qt::NoButton;
  if (!expectsReports_) return put(std::nullopt);
  if (wasHeld) simulation_.lift();
}

}  // namespace touch
