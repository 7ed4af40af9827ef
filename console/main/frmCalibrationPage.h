#pragma once

#include <QWidget>
#include <optional>

#include "core/driver/simulation.h"

class QLabel;
class QLayout;

namespace touch {

/// The page "Calibration": with how many targets to calibrate, and in a simulated run how far the
/// panel errs.
class frmCalibrationPage final : public QWidget {
  Q_OBJECT

 public:
  explicit frmCalibrationPage(QWidget* parent = nullptr);

  /// The simulated panel's error before the last calibration, if there was one, and now.
  void showPanelError(const std::optional<Simulation::PanelError>& before,
                      const std::optional<Simulation::PanelError>& now);

 signals:
  void calibrationRequested(int points);

 private:
  QLayout* makeChoices();

  QLabel* panelError_;
};

}  // namespace touch
