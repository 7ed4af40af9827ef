#pragma once

#include <QWidget>
#include <optional>

#include "commission/run/run_folder.h"
#include "commission/sheet/sheet.h"
#include "measure/report/report_pages.h"

class QLabel;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace touch::commission {

/// The sheet of a run to be looked at where no other program shows it: its pages, one below the
/// other, as wide as there is room.
class frmSheetView final : public QWidget {
  Q_OBJECT

 public:
  frmSheetView();

  /// Shows that of this run, as it would be printed now.
  [[nodiscard]] Status open(const RunFolder& folder);

 signals:
  /// The user goes back.
  void closed();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void draw();

  std::optional<Sheet> sheet_;
  std::optional<measure::Report> report_;
  QScrollArea* area_;
  QVBoxLayout* pages_;
  QPushButton* back_;
};

}  // namespace touch::commission
