#include "console/settings/rotation_option.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <algorithm>

#include "ui/style/colours.h"

namespace touch {

namespace {

constexpr QSizeF screenSize(38, 26);
constexpr int gap = 6;
constexpr qreal cardRadius = 6;

/// A screen on its foot, with an arrow to its upper edge.
void drawScreen(QPainter& painter, const QPointF& centre, int quarterTurns, const QColor& frame,
                const QColor& arrow) {
  constexpr qreal corners = 3;
  constexpr qreal foot = 5;
  constexpr qreal shaft = 5;
  constexpr qreal head = 4;
  painter.save();
  painter.translate(centre);
  painter.rotate(90.0 * quarterTurns);
  const QRectF place(QPointF(-screenSize.width() / 2, -screenSize.height() / 2), screenSize);
  painter.setPen(QPen(frame, 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(place, corners, corners);
  painter.fillRect(QRectF(place.left(), place.bottom() - foot, place.width(), foot), frame);
  const qreal middle = -foot / 2;
  painter.setPen(QPen(arrow, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawLine(QPointF(0, middle + shaft), QPointF(0, middle - shaft));
  painter.drawPolyline(QPolygonF(
      {{-head, middle - shaft + head}, {0, middle - shaft}, {head, middle - shaft + head}}));
  painter.restore();
}

}  // namespace

RotationOption::RotationOption(const QString& caption, int quarterTurns, QWidget* parent)
    : QRadioButton(caption, parent), quarterTurns_(quarterTurns) {
  setAttribute(Qt::WA_Hover);
}

QSize RotationOption::sizeHint() const {
  // The picture fits lying and standing.
  const int side = qRound(std::max(screenSize.width(), screenSize.height()));
  return {side + fontMetrics().horizontalAdvance("000") + 4 * gap, side + 2 * gap};
}

void RotationOption::paintEvent(QPaintEvent*) {
  QStyleOptionButton option;
  initStyleOption(&option);
  const Colours& colours = coloursOf(palette());
  const bool isPressed = option.state.testFlag(QStyle::State_Sunken);
  const bool isHovered = isEnabled() && option.state.testFlag(QStyle::State_MouseOver);
  const bool isChosen = isChecked();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const qreal width = isChosen ? 2 : 1;
  painter.setPen(QPen(!isEnabled() ? colours.line
                      : isChosen   ? colours.accent
                                   : colours.edge,
                      width));
  painter.setBrush(isPressed               ? colours.shade
                   : isChosen || isHovered ? colours.accentSoft
                                           : colours.card);
  // Around the whole of it there is room for the ring of the focus.
  constexpr qreal outside = 3;
  const qreal inset = outside + width / 2;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), cardRadius,
                          cardRadius);
  const qreal side = std::max(screenSize.width(), screenSize.height());
  const QRectF caption = QRectF(rect()).adjusted(side + 2 * gap, 0, -gap, 0);
  QFont font = this->font();
  font.setBold(isChosen);
  painter.setFont(font);
  painter.setPen(isEnabled() ? colours.text : colours.quiet);
  painter.drawText(caption, Qt::AlignCenter | Qt::TextShowMnemonic, text());
  const QPointF centre(gap + side / 2, height() / 2.0);
  drawScreen(painter, centre, quarterTurns_, colours.quiet,
             isEnabled() ? colours.accent : colours.quiet);
  if (!hasFocus() || !option.state.testFlag(QStyle::State_KeyboardFocusChange)) return;
  painter.setPen(QPen(colours.accent, 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), cardRadius + 2, cardRadius + 2);
}

}  // namespace touch
