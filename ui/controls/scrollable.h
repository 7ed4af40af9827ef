#pragma once

#include <QEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/controls/finger_style.h"

namespace touch {

/// `page` in an area of its own: small screens scroll it instead of clipping it. The area takes the
/// page over.
inline QScrollArea* scrollable(QWidget* page, QScrollArea* area = new QScrollArea) {
  area->setWidget(page);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);  // it follows the control that has the focus
  area->setMinimumHeight(fingerSize());
  return area;
}

/// Scrolls the area that `part` is in so that all of it is seen, or as much as fits, from its top
/// on.
inline void bringIntoView(QWidget& part) {
  QScrollArea* area = nullptr;
  for (QWidget* above = part.parentWidget(); above != nullptr && area == nullptr;
       above = above->parentWidget())
    area = qobject_cast<QScrollArea*>(above);
  if (area == nullptr) return;
  // The layout makes room for the part when the events in hand are through.
  QTimer::singleShot(0, area, [area, &part] {
    const int top = part.mapTo(area->widget(), QPoint()).y();
    area->ensureVisible(0, top + std::min(part.height(), area->viewport()->height()) - 1, 0, 0);
  });
}

/// A page of a window that scrolls downwards alone, and below it what must be at hand without
/// scrolling, if there is such.
class ScrolledPage final : public QWidget {
 public:
  ScrolledPage() : area_(scrollable(nullptr, new DownwardArea)), rows_(new QVBoxLayout(this)) {
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(0);
    rows_->addWidget(area_, 1);
    setAutoFillBackground(true);  // as the page is filled by its area
  }
  /// Takes both over.
  void put(QWidget* page, QWidget* below = nullptr) {
    area_->setWidget(page);
    if (below == nullptr) return;
    const QMargins sides = page->layout()->contentsMargins();
    below->layout()->setContentsMargins(sides.left(), sides.top() / 2, sides.right(),
                                        sides.bottom() / 2);
    rows_->addWidget(below);
  }
  QScrollArea* area() const { return area_; }

 private:
  /// Never narrower than its page.
  class DownwardArea final : public QScrollArea {
   public:
    QSize minimumSizeHint() const override {
      const int page = widget() == nullptr ? 0 : widget()->minimumSizeHint().width();
      return {page + verticalScrollBar()->sizeHint().width(), fingerSize()};
    }

   protected:
    /// The page's texts change, and with them how narrow the window can be.
    bool eventFilter(QObject* watched, QEvent* event) override {
      if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
      return QScrollArea::eventFilter(watched, event);
    }
  };

  QScrollArea* area_;
  QVBoxLayout* rows_;
};

}  // namespace touch
