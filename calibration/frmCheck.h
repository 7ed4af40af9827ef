#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calibration/check.h"
#include "core/driver/simulation.h"
#include "ui/screens/full_screen_window.h"

class QLabel;
class QPushButton;

namespace touch {

class TouchCanvas;

/// The full-screen check of a calibration: five crosses, how far each touch landed from its cross,
/// a time bar, "Keep" and "Put back". Esc puts back. In a simulated run the mouse is the finger on
/// the simulated panel.
class frmCheck final : public FullScreenWindow, public CheckScreen {
  Q_OBJECT

 public:
  /// What is checked, and with what.
  struct Parts {
    Clock& clock;
    const Simulation& simulation;
    std::string controller;
    DiagonalPercent limit;
    std::unique_ptr<WayBack> wayBack;
  };

  /// `screen` is the one that the panel covers. `onEnded` is told what came of it when the window
  /// is gone.
  frmCheck(Parts parts, const QScreen& screen, const std::optional<QSize>& size,
           std::function<void(const CheckResult&)> onEnded);
  ~frmCheck() override;

  /// Whatever is not kept is put back, also when the program is to end.
  void askToLeave() override;

 protected:
  void started() override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  Surface& surface() override;
  void tell(const std::string& text) override;
  void showResidual(const Residual& residual) override;
  void showTimeBar(float width) override;
  void allow(bool keep, bool putBack) override;
  void ended(const CheckResult& result) override;

  void placeControls();

  std::function<void(const CheckResult&)> onEnded_;
  std::unique_ptr<WayBack> wayBack_;
  CheckResult result_;
  TouchCanvas* canvas_;
  QLabel* instruction_;
  QLabel* timeBar_;
  QPushButton* keepButton_;
  QPushButton* putBackButton_;
  std::unique_ptr<Check> check_;
};

}  // namespace touch
