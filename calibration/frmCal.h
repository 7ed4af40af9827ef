#pragma once

#include <QPushButton>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "calibration/calibration.h"
#include "core/simulation.h"
#include "ui/canvas_widget.h"

class QLabel;

namespace touch {

/// The full-screen calibration window: grid and targets, a time bar, "Start", "Cancel" and "EXIT".
/// In a simulated run the mouse is the finger on the simulated panel.
class frmCal final : public QWidget, public CalibrationScreen {
  Q_OBJECT

 public:
  /// `screen` is the one that the panel covers; `size` in logical pixels replaces all of it. `onLeave` brings the main window back, `onEnded` is told how the
  /// calibration ended; the window then deletes itself.
  frmCal(const Access& access, Prompt& prompt, const std::optional<Simulation>& simulation,
         const QScreen& screen, const std::optional<QSize>& size, std::function<void()> onLeave,
         std::function<void(CalibrationOutcome)> onEnded);

  /// Shows the window in front of all others; the calibration begins by itself.
  void open();
  void cancel() { calibration_->cancel(); }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

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
  std::optional<Simulation> simulation_;
  bool fullScreen_;
  std::function<void()> onLeave_;
  std::function<void(CalibrationOutcome)> onEnded_;

  CanvasWidget* canvas_;
  QLabel* instruction_;
  QLabel* timeBar_;            // Label3
  QPushButton* startButton_;   // Command1
  QPushButton* cancelButton_;  // Command2
  QPushButton* exitLabel_;     // Label1
  std::unique_ptr<Calibration> calibration_;
};

}  // namespace touch
