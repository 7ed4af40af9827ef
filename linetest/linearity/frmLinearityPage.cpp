#include "linetest/linearity/frmLinearityPage.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

#include "linetest/linearity/linearity_plot.h"
#include "ui/controls/chart_painter.h"
#include "ui/controls/graphic.h"

namespace touch {

namespace {

constexpr int pngWidth = 2400;
constexpr int pdfDotsPerInch = 600;
constexpr QSize smallestReadable(750, 530);

/// As large as it fits into `room`, in the middle.
void paintPage(QPainter& painter, const QRectF& room, const LinearityReport& report) {
  const QSizeF page(static_cast<qreal>(linearityPage.width),
                    static_cast<qreal>(linearityPage.height));
  const qreal scale = std::min(room.width() / page.width(), room.height() / page.height());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(room.center());
  painter.scale(scale, scale);
  painter.translate(-page.width() / 2, -page.height() / 2);
  ChartPainter surface(painter);
  drawLinearityPage(surface, linearityPage, report.results, report.panel, report.limits);
}

}  // namespace

QByteArray linearityPng(const LinearityReport& report) {
  QImage image(pngWidth, static_cast<int>(pngWidth * linearityPage.height / linearityPage.width),
               QImage::Format_RGB32);
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    paintPage(painter, image.rect(), report);
  }
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return content;
}

QByteArray linearityPdf(const LinearityReport& report) {
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setTitle("Linearity");
    writer.setResolution(pdfDotsPerInch);
    writer.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF()));
    QPainter painter(&writer);
    paintPage(painter, QRectF(0, 0, writer.width(), writer.height()), report);
  }
  return content;
}

frmLinearityPage::frmLinearityPage(QWidget* parent) : QWidget(parent) {
  setObjectName("linearityPage");
  presentAsGraphic(*this, tr("Deviation along each line, and map of the panel"),
                   tr("All of its figures stand on the page \"Figures\"."));
  setMinimumSize(smallestReadable);
  setFocusPolicy(Qt::StrongFocus);
}

void frmLinearityPage::showReport(LinearityReport report) {
  report_ = std::move(report);
  update();
}

void frmLinearityPage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  paintPage(painter, rect(), report_);
  if (!hasFocus()) return;
  painter.resetTransform();
  QStyleOptionFocusRect frame;
  frame.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

}  // namespace touch
