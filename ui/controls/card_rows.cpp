#include "ui/controls/card_rows.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableWidget>
#include <algorithm>

#include "ui/controls/finger_style.h"
#include "ui/style/colours.h"

namespace touch {

namespace {

enum Role { signRole = Qt::UserRole + 1, lineRole, stateRole, wordRole };

constexpr int gap = 8;
constexpr int tileSide = 32;
constexpr qreal cardRadius = 8;
constexpr qreal smallFactor = 0.9;
// Narrower rows say their state in the line below the text.
constexpr int leastWidthWithState = 280;

struct StateLook {
  QColor ink;
  QColor ground;
  Sign sign{};
};

StateLook lookOf(CardState::Kind kind, const Colours& colours) {
  switch (kind) {
    case CardState::Kind::good:
      return {colours.good, colours.goodSoft, Sign::tick};
    case CardState::Kind::remark:
      return {colours.remark, colours.remarkSoft, Sign::cross};
    case CardState::Kind::unknown:
      break;
  }
  return {colours.quiet, colours.shade, Sign::waiting};
}

void drawFrame(QPainter& painter, const QRectF& card, const QStyleOptionViewItem& option,
               const Colours& colours) {
  const bool isChosen = option.state.testFlag(QStyle::State_Selected);
  const bool isHovered = option.state.testFlag(QStyle::State_MouseOver);
  painter.setBrush(isChosen ? colours.accentSoft : isHovered ? colours.shade : colours.card);
  const qreal width = isChosen ? 2 : 1;
  painter.setPen(QPen(isChosen ? colours.accent : colours.line, width));
  const qreal half = width / 2;
  painter.drawRoundedRect(card.adjusted(half, half, -half, -half), cardRadius, cardRadius);
}

/// Returns what is left of it.
QRect drawState(QPainter& painter, QRect room, const CardState& state, const Colours& colours) {
  constexpr int signSide = 12;
  const StateLook look = lookOf(state.kind, colours);
  const QFontMetrics font(painter.font());
  const int height = font.height() + 6;
  const int width = font.horizontalAdvance(state.word) + signSide + 3 * gap;
  const QRect pill(room.right() - width + 1, room.center().y() - height / 2, width, height);
  painter.setBrush(look.ground);
  painter.setPen(Qt::NoPen);
  painter.drawRoundedRect(pill, height / 2.0, height / 2.0);
  const QRect signPlace(pill.left() + gap, pill.center().y() - signSide / 2, signSide, signSide);
  drawSign(painter, signPlace, look.sign, look.ink);
  painter.setPen(look.ink);
  painter.drawText(pill.adjusted(2 * gap + signSide, 0, -gap, 0), Qt::AlignVCenter, state.word);
  return room.adjusted(0, 0, -width - gap, 0);
}

}  // namespace

void CardRows::giveTo(QTableWidget& table) {
  table.setItemDelegate(new CardRows(&table));
  table.setShowGrid(false);
  table.viewport()->setAttribute(Qt::WA_Hover);
  table.verticalHeader()->setDefaultSectionSize(rowHeight(table.fontMetrics()));
}

void CardRows::describe(QTableWidgetItem& item, const CardDetails& details) {
  item.setData(signRole, static_cast<int>(details.sign));
  item.setData(lineRole, details.line);
  item.setData(stateRole, static_cast<int>(details.state.kind));
  item.setData(wordRole, details.state.word);
  item.setData(Qt::AccessibleDescriptionRole, details.line + ", " + details.state.word);
}

int CardRows::rowHeight(const QFontMetrics& font) {
  const int around = isSmallScreen() ? gap : 3 * gap;
  return std::max(fingerSize(), 2 * font.height() + around);
}

// Each cell draws the whole card and shows its own part of it.
void CardRows::paint(QPainter* painter, const QStyleOptionViewItem& option,
                     const QModelIndex& index) const {
  const auto* const table = qobject_cast<const QTableWidget*>(option.widget);
  if (table == nullptr) return;
  const Colours& colours = coloursOf(option.palette);
  const QHeaderView& columns = *table->horizontalHeader();
  const QModelIndex text = index.siblingAtColumn(columns.count() - 1);
  const QRect row(columns.sectionViewportPosition(0), option.rect.top(), columns.length(),
                  option.rect.height());
  const QRect card = row.adjusted(4, 3, -4, -3);
  painter->save();
  painter->setClipRect(option.rect);
  // The table marks what is chosen by its whole row.
  painter->fillRect(option.rect, option.palette.base());
  painter->setRenderHint(QPainter::Antialiasing);
  drawFrame(*painter, card, option, colours);

  QRect room = card.adjusted(gap, 0, -gap, 0);
  painter->setFont(option.font);
  painter->setPen(colours.quiet);
  painter->drawText(room, Qt::AlignVCenter, index.siblingAtColumn(0).data().toString());
  room.setLeft(columns.sectionViewportPosition(text.column()) - tileSide / 2);

  const QRect tile(room.left(), room.center().y() - tileSide / 2, tileSide, tileSide);
  painter->setPen(Qt::NoPen);
  painter->setBrush(colours.shade);
  painter->drawRoundedRect(tile, cardRadius, cardRadius);
  drawSign(*painter, QRectF(tile).adjusted(6, 6, -6, -6),
           static_cast<Sign>(text.data(signRole).toInt()), colours.quiet);
  room.setLeft(tile.right() + gap + 1);

  const CardState state{static_cast<CardState::Kind>(text.data(stateRole).toInt()),
                        text.data(wordRole).toString()};
  QString line = text.data(lineRole).toString();
  painter->setFont(resized(option.font, smallFactor));
  if (row.width() >= leastWidthWithState) {
    room = drawState(*painter, room, state, colours);
  } else {
    line += ", " + state.word;
  }
  QFont bold = option.font;
  bold.setBold(true);
  const auto write = [&](const QFont& font, const QColor& colour, int flags, const QString& words) {
    painter->setFont(font);
    painter->setPen(colour);
    const QRect half = flags == Qt::AlignBottom ? room.adjusted(0, 0, 0, -room.height() / 2 - 1)
                                                : room.adjusted(0, room.height() / 2 + 1, 0, 0);
    painter->drawText(half, flags,
                      QFontMetrics(font).elidedText(words, Qt::ElideRight, room.width()));
  };
  write(bold, colours.text, Qt::AlignBottom, text.data().toString());
  write(resized(option.font, smallFactor), colours.quiet, Qt::AlignTop, line);
  painter->restore();
}

}  // namespace touch
