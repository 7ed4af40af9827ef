#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QLayout;

namespace touch {

class FingerSpinBox;
class frmWindows;
class MainModel;
struct PanelErrors;

/// The page "Calibration": with how many targets to calibrate, whether and how strictly that is
/// checked, and in a simulated run how far the panel errs.
class frmCalibrationPage final : public QWidget {
  Q_OBJECT

 public:
  frmCalibrationPage(MainModel& model, frmWindows& windows);

 private:
  QLayout* makeChoices(frmWindows& windows);
  QLayout* makeCheck(frmWindows& windows);
  void calibrate(frmWindows& windows, int points) const;
  void showPanelErrors(const PanelErrors& errors);

  QLabel* panelError_;
  QCheckBox* checkAfterwards_;
  FingerSpinBox* checkLimit_;
};

}  // namespace touch
