#pragma once

#include <QWidget>

#include "measure/report/report_pages.h"

namespace touch::measure {

/// The page of the lines on the screen, as large as there is room, but never so small that its
/// figures could not be read.
class frmLinesPage final : public QWidget {
  Q_OBJECT

 public:
  explicit frmLinesPage(QWidget* parent = nullptr);
  /// `report` outlives it.
  void showReport(const Report& report);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Report* report_ = nullptr;
};

}  // namespace touch::measure
