#include "ui/canvas_widget.h"

#include <QPaintEvent>
#include <QStyle>
#include <QStyleOption>
#include <utility>

namespace touch {

namespace {

QPointF pixels(TwipsPoint point) {
  return {static_cast<qreal>(point.x / twipsPerPixel), static_cast<qreal>(point.y / twipsPerPixel)};
}

QRect touched(const QRectF& shape, int width) {
  const qreal margin = width / 2.0 + 1;
  return shape.normalized().adjusted(-margin, -margin, margin, margin).toAlignedRect();
}

}  // namespace

CanvasWidget::CanvasWidget(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

TwipsSize CanvasWidget::sizeInTwips() const {
  return {static_cast<float>(width()) * twipsPerPixel,
          static_cast<float>(height()) * twipsPerPixel};
}

void CanvasWidget::usePen(Colour colour, int width) {
  if (colour == colour_ && width == width_) return;
  colour_ = colour;
  width_ = width;
  painter_.setPen(QPen(QColor(colour.red, colour.green, colour.blue), width, Qt::SolidLine,
                       Qt::RoundCap, Qt::RoundJoin));
}

void CanvasWidget::showPart(const QRect& part) {
  if (atOnce_) {
    repaint(part);
  } else {
    update(part);
  }
}

void CanvasWidget::clear() {
  image_.fill(Qt::black);
  update();
}

void CanvasWidget::line(TwipsPoint from, TwipsPoint to, Colour colour, int width) {
  usePen(colour, width);
  painter_.drawLine(pixels(from), pixels(to));
  showPart(touched({pixels(from), pixels(to)}, width));
}

void CanvasWidget::circle(TwipsPoint centre, float radius, Colour colour, int width) {
  const auto inPixels = static_cast<qreal>(radius / twipsPerPixel);
  usePen(colour, width);
  painter_.setRenderHint(QPainter::Antialiasing, true);
  painter_.drawEllipse(pixels(centre), inPixels, inPixels);
  painter_.setRenderHint(QPainter::Antialiasing, false);
  const QPointF corner(inPixels, inPixels);
  showPart(touched({pixels(centre) - corner, pixels(centre) + corner}, width));
}

// A line without a length is no dot to Qt.
void CanvasWidget::point(TwipsPoint at, Colour colour, int width) {
  usePen(colour, width);
  painter_.drawPoint(pixels(at));
  showPart(touched({pixels(at), pixels(at)}, width));
}

void CanvasWidget::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const qreal ratio = image_.devicePixelRatio();
  const QRect part = event->rect();
  painter.drawImage(
      part, image_,
      QRectF(part.x() * ratio, part.y() * ratio, part.width() * ratio, part.height() * ratio));
  if (!focusIsShown_) return;
  QStyleOptionFocusRect frame;
  frame.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

void CanvasWidget::focusInEvent(QFocusEvent* event) {
  focusIsShown_ =
      event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  update();
}

void CanvasWidget::focusOutEvent(QFocusEvent*) {
  focusIsShown_ = false;
  update();
}

void CanvasWidget::resizeEvent(QResizeEvent*) {
  QImage image(size() * devicePixelRatioF(), QImage::Format_RGB32);
  image.setDevicePixelRatio(devicePixelRatioF());
  image.fill(Qt::black);
  if (!image_.isNull()) {
    painter_.end();
    QPainter(&image).drawImage(0, 0, image_);
  }
  image_ = std::move(image);
  painter_.begin(&image_);
  width_ = 0;
}

}  // namespace touch
