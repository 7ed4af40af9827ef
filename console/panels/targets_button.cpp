#include "console/panels/targets_button.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "drawing/target_places.h"
#include "ui/style/colours.h"

namespace touch {

namespace {

constexpr QSizeF picture(112, 72);
constexpr int gap = 10;

void drawTargets(QPainter& painter, const QPointF& corner, int targets, const Colours& colours,
                 bool isEnabled) {
  constexpr qreal radius = 4;
  constexpr qreal corners = 4;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(corner);
  painter.setPen(QPen(colours.edge, 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF({0, 0}, picture), corners, corners);
  painter.setPen(Qt::NoPen);
  painter.setBrush(isEnabled ? colours.accent : colours.quiet);
  // Within the frame also where they lie at its edge.
  const qreal room = radius + 3;
  const TwipsSize inside{static_cast<float>(picture.width() - 2 * room),
                         static_cast<float>(picture.height() - 2 * room)};
  for (const TwipsPoint& at : calibrationTargets(targets, inside))
    painter.drawEllipse(QPointF(static_cast<qreal>(at.x) + room, static_cast<qreal>(at.y) + room),
                        radius, radius);
}

}  // namespace

TargetsButton::TargetsButton(const QString& caption, int targets, QWidget* parent)
    : QPushButton(caption, parent), targets_(targets) {}

QSize TargetsButton::sizeHint() const {
  const int width = std::max(qRound(picture.width()), fontMetrics().horizontalAdvance(text()));
  return {width + 2 * gap, qRound(picture.height()) + fontMetrics().height() + 3 * gap};
}

void TargetsButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  // The caption is below the picture; what else a button has the style draws.
  option.text.clear();
  painter.drawControl(QStyle::CE_PushButton, option);
  QRect caption = rect().adjusted(gap, 0, -gap, -gap);
  caption.setTop(caption.bottom() - fontMetrics().height());
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  painter.drawItemText(caption, Qt::AlignCenter | Qt::TextShowMnemonic, palette(), isEnabled(),
                       text(), QPalette::ButtonText);
  drawTargets(painter, {(width() - picture.width()) / 2, gap}, targets_, coloursOf(palette()),
              isEnabled());
}

}  // namespace touch
