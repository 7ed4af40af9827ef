#include "commission/sheet/frmSheetView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QScroller>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "commission/sheet/frmSheetPdf.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"

namespace touch::commission {

namespace {

// Beyond it eyes wander too far; in logical pixels.
constexpr int widestPage = 1100;

}  // namespace

frmSheetView::frmSheetView() : back_(new QPushButton(tr("&Back"))) {
  setObjectName("frmSheetView");
  auto* const content = new QWidget;
  pages_ = new QVBoxLayout(content);
  back_->setObjectName("cmdCloseSheet");
  back_->setAutoDefault(true);
  makeFingerSized(*back_);
  back_->installEventFilter(this);
  connect(back_, &QPushButton::clicked, this, &frmSheetView::closed);
  auto* const row = new QWidget;
  auto* const buttons = new QHBoxLayout(row);
  // A second tap on it is to meet none of the buttons that come to lie there: between "Leave" and
  // "Repeat".
  constexpr int left = 17;
  constexpr int right = 10;
  buttons->addStretch(left);
  buttons->addWidget(back_);
  buttons->addStretch(right);
  auto* const page = new ScrolledPage;
  page->put(content, row);
  area_ = page->area();
  QScroller::grabGesture(area_->viewport(), QScroller::LeftMouseButtonGesture);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(page);
}

Status frmSheetView::open(const RunFolder& folder) {
  const auto run = folder.run();
  if (!run) return tl::unexpected(run.error());
  auto report = folder.report();
  if (!report) return tl::unexpected(report.error());
  report_ = std::move(*report);
  sheet_ = sheetOf(*run, report_ ? &*report_ : nullptr);
  draw();
  area_->verticalScrollBar()->setValue(0);
  back_->setFocus();
  return {};
}

void frmSheetView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (isVisible()) draw();
}

// The button has the focus, and would take some of these keys for a way to the next one.
bool frmSheetView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      QApplication::sendEvent(area_->verticalScrollBar(), event);
      return true;
    default:
      return QWidget::eventFilter(watched, event);
  }
}

void frmSheetView::draw() {
  if (!sheet_) return;
  while (const std::unique_ptr<QLayoutItem> item{pages_->takeAt(0)})
    std::unique_ptr<QWidget>(item->widget()).reset();
  const int room = width() - area_->verticalScrollBar()->sizeHint().width() -
                   pages_->contentsMargins().left() - pages_->contentsMargins().right();
  const int wide = std::clamp(room, 1, widestPage);
  const auto pictures = sheetPictures(*sheet_, report_ ? &*report_ : nullptr,
                                      static_cast<int>(std::lround(wide * devicePixelRatioF())));
  int number = 0;
  for (const QImage& picture : pictures) {
    QPixmap page = QPixmap::fromImage(picture);
    page.setDevicePixelRatio(devicePixelRatioF());
    auto* const label = new QLabel;
    label->setPixmap(page);
    label->setAccessibleName(tr("Page %1 of %2").arg(++number).arg(pictures.size()));
    pages_->addWidget(label, 0, Qt::AlignHCenter);
  }
}

}  // namespace touch::commission
