#include "ui/full_screen_window.h"

#include <QCloseEvent>
#include <QScreen>
#include <utility>

#include "ui/window_end.h"

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
  endWindow(*this, [this] {
    deleteLater();
    onLeft_();
  });
}

void FullScreenWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  askToLeave();
}

}  // namespace touch
