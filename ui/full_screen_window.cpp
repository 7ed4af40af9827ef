#include "ui/full_screen_window.h"

#include <QCloseEvent>
#include <QScreen>
#include <QTimer>
#include <utility>

namespace touch {

FullScreenWindow::FullScreenWindow(const QScreen& screen, const std::optional<QSize>& size,
                                   std::function<void()> onLeft)
    : onLeft_(std::move(onLeft)), fullScreen_(!size) {
  setGeometry(QRect(screen.geometry().topLeft(), size.value_or(screen.size())));
}

void FullScreenWindow::open() {
  if (fullScreen_) {
    showFullScreen();
  } else {
    show();
  }
  raise();
  activateWindow();
  started();
}

void FullScreenWindow::leave() {
  if (left_) return;
  left_ = true;
  hide();
  // When whatever made it leave has returned to the event loop.
  QTimer::singleShot(0, this, [this] {
    deleteLater();
    onLeft_();
  });
}

void FullScreenWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  askToLeave();
}

}  // namespace touch
