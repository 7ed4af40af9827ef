#pragma once

#include <QObject>
#include <memory>
#include <vector>

#include "support/clock.h"

class QWidget;

namespace touch {

class TouchCanvas;

/// Tools that lie over a canvas and make room for the ink: a stroke that comes near them has them
/// gone, and they are back when no pen has been down for a second. A tap does not move them, so
/// that nothing flickers while single points are drawn.
class HidingTools final : public QObject {
  Q_OBJECT

 public:
  /// All outlive it. The tools are the canvas' siblings and stay where they are.
  HidingTools(Clock& clock, TouchCanvas& canvas, std::vector<QWidget*> tools, QObject* parent);

 private:
  void putAway();
  void bringBack();

  TouchCanvas& canvas_;
  std::vector<QWidget*> tools_;
  std::unique_ptr<Timer> back_;
  bool areAway_ = false;
};

}  // namespace touch
