#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <initializer_list>

#include "linetest/linearity/frmLinearityPage.h"
#include "linetest/linearity/linearity_procedure.h"
#include "linetest/linearity/linearity_setup.h"
#include "support/prompt.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTabWidget;
class QTableWidget;

namespace touch {

class FingerSpinBox;
class StatusLine;

/// The linearity tester's result page: the figures of each line, plots and map, the limits, export.
class frmLinearityResult final : public QWidget {
  Q_OBJECT

 public:
  frmLinearityResult(Prompt& prompt, LinearitySetup& setup, std::filesystem::path folder,
                     QWidget* parent = nullptr);

  void showResults(std::vector<LineResult> results, const MeasuredPanel& panel);
  /// Puts the keyboard on the choice between plots and figures.
  void takeFocus();

 signals:
  void drawAgainRequested(const touch::TestLine& line);
  void measureAnewRequested();
  void backRequested();
  void leaveRequested();

 private:
  QWidget* makeFigures();
  QWidget* makeLimits();
  struct RowButton {
    QPushButton* button;
    const char* name;
    std::function<void()> action;
  };
  QWidget* makeRow(std::initializer_list<RowButton> buttons);
  QWidget* makeWays();
  QWidget* makeExports();
  void limitsChanged();
  void fill();
  void save(const QString& kind, const QString& suffix, const std::string& content);

  Prompt& prompt_;
  LinearitySetup& setup_;
  std::filesystem::path folder_;

  QTableWidget* figures_;
  frmLinearityPage* page_;
  FingerSpinBox* centreLimit_;
  FingerSpinBox* edgeLimit_;
  QComboBox* unit_;
  QLabel* verdict_;
  StatusLine* saved_;  ///< what was saved, and where
  QTabWidget* tabs_;
  QPushButton* again_;
  QPushButton* anew_;
};

}  // namespace touch
