#include "measure/windows/frmLinesPage.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

#include "measure/lines/lines_page.h"
#include "ui/controls/chart_painter.h"
#include "ui/controls/graphic.h"

namespace touch::measure {

namespace {

constexpr QSize smallestReadable(900, 636);

/// As large as it fits into `room`, in the middle.
void paintPage(QPainter& painter, const QRectF& room, const Report& report) {
  const QSizeF page(static_cast<qreal>(linesPage.width), static_cast<qreal>(linesPage.height));
  const qreal scale = std::min(room.width() / page.width(), room.height() / page.height());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(room.center());
  painter.scale(scale, scale);
  painter.translate(-page.width() / 2, -page.height() / 2);
  ChartPainter surface(painter);
  drawLinesPage(surface, report.measurement, report.analysis, report.verdict);
}

}  // namespace

frmLinesPage::frmLinesPage(QWidget* parent) : QWidget(parent) {
  setObjectName("linesPage");
  presentAsGraphic(*this, tr("Deviation along each line, and map of the panel"),
                   tr("All of its figures stand on the page \"Line by line\"."));
  setMinimumSize(smallestReadable);
  setFocusPolicy(Qt::StrongFocus);
}

void frmLinesPage::showReport(const Report& report) {
  report_ = &report;
  update();
}

void frmLinesPage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  if (report_ != nullptr) paintPage(painter, rect(), *report_);
  if (!hasFocus()) return;
  painter.resetTransform();
  QStyleOptionFocusRect frame;
  frame.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

}  // namespace touch::measure
