#pragma once

#include <QWidget>

class QLabel;
class QLayout;

namespace touch {

class frmWindows;
class MainModel;
struct PanelErrors;

/// The page "Calibration": with how many targets to calibrate, and in a simulated run how far the
/// panel errs.
class frmCalibrationPage final : public QWidget {
  Q_OBJECT

 public:
  frmCalibrationPage(MainModel& model, frmWindows& windows);

 private:
  QLayout* makeChoices(frmWindows& windows);
  void showPanelErrors(const PanelErrors& errors);

  QLabel* panelError_;
};

}  // namespace touch
