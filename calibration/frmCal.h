#pragma once

#include <QPushButton>
#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "calibration/calibration.h"
#include "core/driver/simulation.h"
#include "ui/screens/canvas_widget.h"
#include "ui/screens/full_screen_window.h"

class QLabel;

namespace touch {

/// The full-screen calibration window: grid and targets, a time bar, "Start", "Cancel" and "EXIT".
/// In a simulated run the mouse is the finger on the simulated panel.
class frmCal final : public FullScreenWindow, public CalibrationScreen {
  Q_OBJECT

 public:
  /// `screen` is the one that the panel covers. `onLeave` brings the main window back, `onEnded` is
  /// told how the calibration ended, which may be later: the procedure still has to let go of the
  /// controller.
  frmCal(const Access& access, Prompt& prompt, const Simulation& simulation, const QScreen& screen,
         const std::optional<QSize>& size, std::function<void()> onLeave,
         std::function<void(CalibrationOutcome)> onEnded);

  void askToLeave() override { calibration_->cancel(); }

 protected:
  /// The calibration begins by itself.
  void started() override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  Surface& surface() override { return *canvas_; }
  void showButtons(bool start, bool cancel) override;
  void showTimeBar(float width) override;
  void allowExit(bool allowed) override;
  void leave() override;
  void ended(CalibrationOutcome outcome) override;

  void placeControls();
  void touchAt(const QPointF& place);

  Access access_;
  Prompt& prompt_;
  Simulation simulation_;
  std::function<void()> onLeave_;
  std::function<void(CalibrationOutcome)> onEnded_;
  CalibrationOutcome outcome_ = CalibrationOutcome::cancelled;

  CanvasWidget* canvas_;
  std::array<QLabel*, 2> instructions_;
  QLabel* timeBar_;            // Label3
  QPushButton* startButton_;   // Command1
  QPushButton* cancelButton_;  // Command2
  QPushButton* exitLabel_;     // Label1
  std::unique_ptr<Calibration> calibration_;
};

}  // namespace touch
