#include "serial/debugger/panels/frmTouchPad.h"

#include <QMouseEvent>
#include <algorithm>

#include "ui/controls/finger_style.h"

namespace touch {

frmTouchPad::frmTouchPad(const Simulation& simulation, QWidget* parent)
    : QLabel(tr("Simulated panel:\ndraw here with the mouse"), parent), simulation_(simulation) {
  setObjectName("touchPad");
  setAlignment(Qt::AlignCenter);
  setWordWrap(true);
  setMinimumSize(2 * fingerSize(), 2 * fingerSize());
  setStyleSheet("background: #ffe08a; color: #402c00");
}

void frmTouchPad::mousePressEvent(QMouseEvent* event) {
  touchAt(event->position());
}

void frmTouchPad::mouseMoveEvent(QMouseEvent* event) {
  touchAt(event->position());
}

void frmTouchPad::mouseReleaseEvent(QMouseEvent*) {
  simulation_.lift();
}

void frmTouchPad::touchAt(const QPointF& place) {
  simulation_.touch(std::clamp(place.x() / width(), 0.0, 1.0),
                    std::clamp(place.y() / height(), 0.0, 1.0));
}

}  // namespace touch
