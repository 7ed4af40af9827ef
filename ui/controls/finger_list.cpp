#include "ui/controls/finger_list.h"

#include <QKeyEvent>
#include <algorithm>

#include "ui/controls/finger_style.h"

namespace touch {

FingerList::FingerList(QWidget* parent) : QListWidget(parent) {
  setFlow(QListView::TopToBottom);
  setResizeMode(QListView::Adjust);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(this, &QListWidget::itemClicked, this,
          [this](QListWidgetItem* item) { emit chosen(row(item)); });
}

void FingerList::setLines(const QStringList& lines) {
  clear();
  addItems(lines);
}

void FingerList::fitInto(const QSize& room) {
  constexpr int beside = 20;
  const int frame = 2 * frameWidth();
  int width = beside;
  for (int line = 0; line < count(); ++line)
    width = std::max(width, fontMetrics().horizontalAdvance(item(line)->text()) + beside);
  const int rowsThatFit = std::max((room.height() - frame) / fingerSize(), 1);
  const int columnsNeeded = (count() + rowsThatFit - 1) / rowsThatFit;
  const bool fits = columnsNeeded * width + frame <= room.width();
  const int columns = fits ? std::max(columnsNeeded, 1) : 1;
  const int rows = fits ? (count() + columns - 1) / columns : rowsThatFit;
  setGridSize({width, fingerSize()});
  for (int line = 0; line < count(); ++line)
    item(line)->setSizeHint({width, fingerSize()});
  setWrapping(columns > 1);
  setVerticalScrollBarPolicy(fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
  const int bar = fits ? 0 : style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  // A row that reaches the very edge would already begin the next column.
  constexpr int spare = 2;
  resize(std::min(columns * width + frame + bar + spare, room.width()),
         std::min(rows * fingerSize() + frame + spare, room.height()));
}

void FingerList::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentRow() >= 0) {
    emit chosen(currentRow());
  } else {
    QListWidget::keyPressEvent(event);
  }
}

}  // namespace touch
