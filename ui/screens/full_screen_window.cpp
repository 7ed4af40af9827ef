#include "ui/screens/full_screen_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <chrono>
#include <utility>

#include "ui/window_end.h"

namespace touch {

namespace {

// A window manager may keep the keyboard where it is; the work begins all the same.
constexpr std::chrono::milliseconds longestInactive{500};

}  // namespace

void placeOn(QWidget& window, const QScreen& screen, const std::optional<QSize>& size) {
  // Where programs cannot place their windows, as under Wayland, a full screen follows the screen
  // and not the geometry.
  for (QScreen* const connected : QGuiApplication::screens()) {
    if (connected == &screen) window.setScreen(connected);
  }
  window.setGeometry(QRect(screen.geometry().topLeft(), size.value_or(screen.size())));
}

FullScreenWindow::FullScreenWindow(const QScreen& screen, const std::optional<QSize>& size,
                                   std::function<void()> onLeft)
    : onLeft_(std::move(onLeft)), fullScreen_(!size) {
  placeOn(*this, screen, size);
}

void FullScreenWindow::cover() {
  if (fullScreen_) {
    // Without a window manager nobody else tells it that the screen has another size now.
    disconnect(sizeFollowed_);
    sizeFollowed_ = connect(screen(), &QScreen::geometryChanged, this,
                            [this](const QRect& all) { setGeometry(all); });
    showFullScreen();
  } else {
    show();
  }
  raise();
  activateWindow();
}

void FullScreenWindow::moveTo(const QScreen& screen) {
  if (&screen == this->screen()) return;
  // A window manager keeps one that is shown over all of a screen where it is.
  hide();
  placeOn(*this, screen, fullScreen_ ? std::nullopt : std::optional(size()));
  cover();
}

void FullScreenWindow::open() {
  cover();
  QTimer::singleShot(longestInactive, this, &FullScreenWindow::startOnce);
}

void FullScreenWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && stage_ == Stage::waiting)
    QTimer::singleShot(0, this, &FullScreenWindow::startOnce);
}

void FullScreenWindow::startOnce() {
  if (stage_ != Stage::waiting) return;
  stage_ = Stage::begun;
  started();
}

void FullScreenWindow::leave() {
  if (std::exchange(stage_, Stage::left) == Stage::left) return;
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
