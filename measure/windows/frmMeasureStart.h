#pragma once

#include <QWidget>
#include <filesystem>
#include <set>

#include "measure/windows/measure_setup.h"
#include "support/prompt.h"

class QLabel;

namespace touch {
class FingerSpinBox;
}

namespace touch::measure {

class frmLimitsBox;

/// Asks what is to be measured on which panel: its size, the tests, the limits, who and when.
class frmMeasureStart final : public QWidget {
  Q_OBJECT

 public:
  /// `ports`: where touches may come from in place of the pointer.
  frmMeasureStart(Prompt& prompt, MeasureSetup& setup, std::filesystem::path folder,
                  const std::vector<PortChoice>& ports, QWidget* parent = nullptr);

  /// Offers `known` where the user has not entered a size.
  void offer(const PanelSize& known);
  /// What stands there now, with the source of the size.
  PanelSize size() const { return size_; }
  /// Everything else has been said: hides it.
  void askForSizeAlone();
  void takeFocus();

 signals:
  void startRequested();
  void openRequested();
  void leaveRequested();

 private:
  QWidget* makePanel(const std::vector<PortChoice>& ports);
  QWidget* makePorts(const std::vector<PortChoice>& ports);
  QWidget* makeTests();
  QWidget* makeButtons();
  void addTest(QWidget* box, const char* name, const QString& caption, const QString& meaning,
               bool Plan::*wanted);
  void showSize();

  MeasureSetup& setup_;
  std::filesystem::path folder_;
  PanelSize size_;

  FingerSpinBox* width_;
  FingerSpinBox* height_;
  std::set<const FingerSpinBox*> entered_;  ///< those that the user has changed
  QLabel* source_;
  frmLimitsBox* limits_;
};

}  // namespace touch::measure
