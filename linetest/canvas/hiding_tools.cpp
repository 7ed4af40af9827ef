#include "linetest/canvas/hiding_tools.h"

#include <QWidget>
#include <algorithm>
#include <chrono>
#include <utility>

#include "ui/screens/touch_canvas.h"

namespace touch {

namespace {

constexpr std::chrono::seconds untilBack{1};
constexpr int near = 24;  // logical pixels from a tool, where the finger begins to cover it

}  // namespace

HidingTools::HidingTools(Clock& clock, TouchCanvas& canvas, std::vector<QWidget*> tools,
                         QObject* parent)
    : QObject(parent),
      canvas_(canvas),
      tools_(std::move(tools)),
      back_(clock.makeTimer([this] { bringBack(); })) {
  connect(&canvas_, &TouchCanvas::penDown, this, [this] { back_->stop(); });
  connect(&canvas_, &TouchCanvas::penMoved, this, [this](TwipsPoint at) {
    const QPoint pen = QPointF(at.x / twipsPerPixel, at.y / twipsPerPixel).toPoint();
    const auto isNear = [&pen](const QWidget* tool) {
      return !tool->isHidden() &&
             tool->geometry().marginsAdded({near, near, near, near}).contains(pen);
    };
    if (!areAway_ && std::ranges::any_of(tools_, isNear)) putAway();
  });
  connect(&canvas_, &TouchCanvas::penUp, this, [this] {
    if (areAway_) back_->start(untilBack);
  });
}

// Under the canvas, and not hidden: keys still reach them, and where they are stays taken.
void HidingTools::putAway() {
  areAway_ = true;
  for (QWidget* const tool : tools_)
    tool->stackUnder(&canvas_);
}

void HidingTools::bringBack() {
  back_->stop();
  areAway_ = false;
  // Below whatever has been opened since.
  canvas_.lower();
}

}  // namespace touch
