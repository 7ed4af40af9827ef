#pragma once

#include <QStyledItemDelegate>

#include "ui/style/signs.h"

class QTableWidget;
class QTableWidgetItem;

namespace touch {

/// How something is, as a small coloured field with a sign and a word.
struct CardState {
  enum class Kind : std::uint8_t { unknown, good, remark };
  Kind kind = Kind::unknown;
  QString word;
};

/// What a row shows beside the texts of its cells.
struct CardDetails {
  Sign sign = Sign::controller;
  QString line;  ///< below the row's last text
  CardState state;
};

/// Draws each row of a table as a card: the first column's text, a sign, the last column's text
/// with a line below it, and a state. The table stays a table to keyboard and screen readers.
class CardRows final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// Gives `table` such rows. The table owns what is made.
  static void giveTo(QTableWidget& table);
  /// Of the row whose last cell `item` is. They are its accessible description too.
  static void describe(QTableWidgetItem& item, const CardDetails& details);

  static int rowHeight(const QFontMetrics& font);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  using QStyledItemDelegate::QStyledItemDelegate;
};

}  // namespace touch
