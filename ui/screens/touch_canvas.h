#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "core/driver/simulation.h"
#include "ui/screens/canvas_widget.h"

namespace touch {

/// A canvas that tells where it is touched. In a simulated run the pointer is the finger on the
/// simulated panel: what counts is where its controller reports the finger, and on a dead strip the
/// pen lifts. Somebody else may say where it is touched, from the controller's own reports.
class TouchCanvas final : public CanvasWidget {
  Q_OBJECT

 public:
  explicit TouchCanvas(QWidget* parent = nullptr);

  /// From now on touches pass through this controller's simulated panel.
  void touchThrough(const Simulation& simulation, std::string controller);

  /// From now on the pointer only moves the finger of a simulated panel, if there is one: what
  /// counts is what `touchAt` says. False takes it back.
  void expectReports(bool expected);
  /// A report: `place` in logical pixels of the canvas, not rounded to whole ones.
  void touchAt(const QPointF& place, std::chrono::milliseconds time);
  void liftAt(std::chrono::milliseconds time);

  /// When what is being told of happened, by the clock of the system's events.
  std::chrono::milliseconds eventTime() const { return eventTime_; }

 signals:
  void penDown(Qt::MouseButton button, touch::TwipsPoint at);
  void penMoved(touch::TwipsPoint at);
  void penUp(touch::TwipsPoint at);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  std::optional<TwipsPoint> reported(const QPointF& pointer) const;
  static TwipsPoint inTwips(const QPointF& pixels);
  void follow(const QMouseEvent& event);
  void put(const std::optional<TwipsPoint>& at);
  void lift();

  Simulation simulation_;
  std::string controller_;
  bool expectsReports_ = false;
  std::chrono::milliseconds eventTime_{};
  Qt::MouseButton button_ = Qt::NoButton;  ///< the one that is held
  std::optional<TwipsPoint> pen_;          ///< where the pen is, while it is down
};

}  // namespace touch
