#include "ui/controls/chart_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

#include "ui/text.h"

namespace touch {

namespace {

QPointF pointOf(TwipsPoint point) {
  return {static_cast<qreal>(point.x), static_cast<qreal>(point.y)};
}

QColor colourOf(Colour colour) {
  return {colour.red, colour.green, colour.blue};
}

QPen penOf(Colour colour, int width) {
  return {colourOf(colour), static_cast<qreal>(static_cast<float>(width) * twipsPerPixel),
          Qt::SolidLine, Qt::RoundCap};
}

}  // namespace

void ChartPainter::line(TwipsPoint from, TwipsPoint to, Colour colour, int width) {
  painter_.setPen(penOf(colour, width));
  painter_.drawLine(pointOf(from), pointOf(to));
}

void ChartPainter::circle(TwipsPoint centre, float radius, Colour colour, int width) {
  painter_.setPen(penOf(colour, width));
  painter_.setBrush(Qt::NoBrush);
  const auto around = static_cast<qreal>(radius);
  painter_.drawEllipse(pointOf(centre), around, around);
}

void ChartPainter::text(TwipsPoint at, std::string_view text, Colour colour, float height,
                        TextAnchor anchor) {
  QFont font = painter_.font();
  font.setPixelSize(static_cast<int>(height));
  painter_.setFont(font);
  painter_.setPen(colourOf(colour));
  const QString shown = shownText(text);
  const qreal width = QFontMetricsF(font, painter_.device()).horizontalAdvance(shown);
  QPointF start = pointOf(at);
  if (anchor == TextAnchor::middle) start.rx() -= width / 2;
  if (anchor == TextAnchor::end) start.rx() -= width;
  painter_.drawText(start, shown);
}

void ChartPainter::area(TwipsPoint corner, TwipsSize size, Colour colour) {
  painter_.fillRect(QRectF(pointOf(corner),
                           QSizeF(static_cast<qreal>(size.width), static_cast<qreal>(size.height))),
                    colourOf(colour));
}

void paintPage(QPainter& painter, const QRectF& room, TwipsSize page,
               const std::function<void(ChartSurface&)>& draw) {
  const QSizeF size(static_cast<qreal>(page.width), static_cast<qreal>(page.height));
  const qreal scale = std::min(room.width() / size.width(), room.height() / size.height());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(room.center());
  painter.scale(scale, scale);
  painter.translate(-size.width() / 2, -size.height() / 2);
  painter.setClipRect(QRectF({}, size), Qt::IntersectClip);  // around it there may be a text
  ChartPainter surface(painter);
  draw(surface);
  painter.restore();
}

}  // namespace touch
