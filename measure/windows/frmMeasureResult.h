#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>

#include "measure/measurement.h"
#include "measure/windows/measure_setup.h"
#include "support/prompt.h"

class QLabel;
class QPushButton;
class QTableWidget;

namespace touch {
class FingerSpinBox;
class StatusLine;
}  // namespace touch

namespace touch::measure {

class frmLinesPage;
class frmVerdict;
class frmLimitsBox;
struct Report;

/// The results of a measurement: the verdict with all that it rests on, the lines, size and limits
/// to be corrected, and export.
class frmMeasureResult final : public QWidget {
  Q_OBJECT

 public:
  frmMeasureResult(Prompt& prompt, MeasureSetup& setup, std::filesystem::path folder,
                   QWidget* parent = nullptr);

  /// One that was opened from a file, `isStored`, cannot be drawn again.
  void showResults(Measurement measurement, bool isStored);
  /// Puts the keyboard on the choice of pages.
  void takeFocus();
  /// Leaving is the way on, and looks so.
  void leadOn();
  bool isSaved() const { return isSaved_; }

 signals:
  void drawAgainRequested(const touch::measure::Guide& guide);
  void measureAnewRequested();
  void backRequested();
  void leaveRequested();
  void sizeCorrected(const touch::measure::PanelSize& size);
  void limitsChanged();

 private:
  QWidget* makeFigures();
  QWidget* makeConditions();
  struct RowButton {
    QPushButton* button;
    const char* name;
    std::function<void()> action;
  };
  QWidget* makeRow(std::initializer_list<RowButton> buttons);
  QWidget* makeWays();
  QWidget* makeExports();
  void judgeAgain();
  void fill();
  void fillFigures();
  const Report& report() const;
  bool save(const QString& kind, const QString& suffix, const std::string& content);

  Prompt& prompt_;
  MeasureSetup& setup_;
  std::filesystem::path folder_;
  Measurement measurement_;
  bool isSaved_ = false;
  bool isStored_ = false;

  QTableWidget* figures_;
  frmLinesPage* page_;
  FingerSpinBox* width_;
  FingerSpinBox* height_;
  QLabel* source_;
  frmLimitsBox* limits_;
  QLabel* conditions_;
  frmVerdict* verdict_;
  QWidget* exports_;
  StatusLine* saved_;  ///< what was saved, and where
  QPushButton* again_;
  QPushButton* anew_;
};

}  // namespace touch::measure
