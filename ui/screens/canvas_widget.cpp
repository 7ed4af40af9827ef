#include "ui/screens/canvas_widget.h"

#include <QPaintEvent>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace touch {

namespace {

constexpr std::ptrdiff_t pixelSize = sizeof(QRgb);

QPointF pixels(TwipsPoint point) {
  return {static_cast<qreal>(point.x / twipsPerPixel), static_cast<qreal>(point.y / twipsPerPixel)};
}

QColor asQt(Colour colour) {
  return {colour.red, colour.green, colour.blue};
}

QRect touched(const QRectF& shape, int width) {
  const qreal margin = width / 2.0 + 1;
  return shape.normalized().adjusted(-margin, -margin, margin, margin).toAlignedRect();
}

/// Copies `parts` of a picture, in the widget's pixels, to where `shift` moves them in `screen`.
/// Does nothing, and says so, when that takes more than to copy bytes.
bool copyPixels(const QRegion& parts, const QImage& picture, QPoint shift, QPaintDevice* screen) {
  if (screen == nullptr || screen->devType() != QInternal::Image) return false;
  auto& target = static_cast<QImage&>(*screen);
  const bool holdsPixelsAlike = target.format() == QImage::Format_RGB32 ||
                                target.format() == QImage::Format_ARGB32_Premultiplied;
  const qreal ratio = picture.devicePixelRatio();
  if (!holdsPixelsAlike || target.devicePixelRatio() != ratio || ratio != std::floor(ratio)) {
    return false;
  }
  const auto scale = static_cast<int>(ratio);
  const QPoint by = shift * scale;
  for (const QRect& part : parts) {
    const QRect here = QRect(part.topLeft() * scale, part.size() * scale) & picture.rect() &
                       target.rect().translated(-by);
    for (int y = here.top(); y <= here.bottom(); ++y) {
      const auto* const from = picture.constScanLine(y) + here.left() * pixelSize;
      auto* const to = target.scanLine(y + by.y()) + (here.left() + by.x()) * pixelSize;
      std::copy_n(from, here.width() * pixelSize, to);
    }
  }
  return true;
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
  painter_.setPen(QPen(asQt(colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void CanvasWidget::showPart(const QRect& part) {
  if (atOnce_) {
    repaint(part);
  } else {
    // One rectangle around all: a region of ten thousand pieces would take longer to put together
    // than to paint.
    changed_ |= part;
    update(changed_);
  }
}

void CanvasWidget::clear() {
  image_.fill(asQt(paper_));
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
  if (event->region().contains(changed_)) changed_ = {};
  // To begin a painter on a widget takes five times as long as to draw a piece of ink. A painter of
  // others may scale.
  QPoint origin;
  QPaintDevice* screen = redirected(&origin);
  const bool plain = !focusIsShown_ && sharedPainter() == nullptr;
  if (plain && copyPixels(event->region(), image_, -origin, screen)) return;

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

// Whoever draws has left the keys.
void CanvasWidget::mousePressEvent(QMouseEvent* event) {
  if (std::exchange(focusIsShown_, false)) update();
  QWidget::mousePressEvent(event);
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
  image.fill(asQt(paper_));
  if (!image_.isNull()) {
    painter_.end();
    QPainter(&image).drawImage(0, 0, image_);
  }
  image_ = std::move(image);
  painter_.begin(&image_);
  width_ = 0;
}

}  // namespace touch
