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

std::optional<TwipsPoint> TouchCanvas::reported(const QPointF& pointer) const {
  const TwipsSize size = sizeInTwips();
  const TwipsPoint at{static_cast<float>(pointer.x()) * twipsPerPixel,
                      static_cast<float>(pointer.y()) * twipsPerPixel};
  if (!simulation_.isThere()) return at;
  const auto report = simulation_.report(static_cast<double>(at.x / size.width),
                                         static_cast<double>(at.y / size.height), controller_);
  if (!report) return std::nullopt;
  return TwipsPoint{static_cast<float>(report->x) * size.width,
                    static_cast<float>(report->y) * size.height};
}

void TouchCanvas::follow(const QMouseEvent& event) {
  eventTime_ = std::chrono::milliseconds(event.timestamp());
  const auto at = reported(event.position());
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
  button_ = Qt::NoButton;
  if (const auto last = std::exchange(pen_, std::nullopt)) emit penUp(*last);
}

}  // namespace touch
