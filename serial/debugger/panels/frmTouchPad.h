#pragma once

#include <QLabel>

#include "core/driver/simulation.h"

namespace touch {

/// In a simulated run the mouse on it is the finger, for those who want reports without opening the
/// drawing.
class frmTouchPad final : public QLabel {
  Q_OBJECT

 public:
  explicit frmTouchPad(const Simulation& simulation, QWidget* parent = nullptr);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void touchAt(const QPointF& place);

  Simulation simulation_;
};

}  // namespace touch
