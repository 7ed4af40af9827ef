#pragma once

#include <QByteArray>
#include <QWidget>
#include <vector>

#include "linetest/linearity/linearity.h"

namespace touch {

/// What the result page shows.
struct LinearityReport {
  std::vector<LineResult> results;
  MeasuredPanel panel;
  LinearityLimits limits;
};

/// The page as the content of a PNG or a PDF file.
QByteArray linearityPng(const LinearityReport& report);
QByteArray linearityPdf(const LinearityReport& report);

/// The page on the screen, as large as there is room, but never so small that its figures could not
/// be read.
class frmLinearityPage final : public QWidget {
  Q_OBJECT

 public:
  explicit frmLinearityPage(QWidget* parent = nullptr);
  void showReport(LinearityReport report);
  const LinearityReport& report() const { return report_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  LinearityReport report_;
};

}  // namespace touch
