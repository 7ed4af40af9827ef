#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>
#include <optional>

class QScreen;

namespace touch {

/// Puts `window`, before it is shown, on `screen`: over all of it, or with `size` in logical pixels
/// in its upper left corner.
void placeOn(QWidget& window, const QScreen& screen, const std::optional<QSize>& size);

/// A window over the whole screen, or of a given size in tests and demonstrations. It comes up in
/// front of the main window and ends by `leave()`.
class FullScreenWindow : public QWidget {
  Q_OBJECT

 public:
  /// It covers `screen`; `size` in logical pixels replaces the full screen. `onLeft` is called when
  /// the window is gone; it then deletes itself.
  FullScreenWindow(const QScreen& screen, const std::optional<QSize>& size,
                   std::function<void()> onLeft);

  /// Shows the window; `started()` follows when it is the active one. A box that comes earlier
  /// would belong to the window below, and take that to the front when it goes.
  void open();
  /// The user wants the window to go; they may be asked.
  virtual void askToLeave() { leave(); }
  /// It covers this screen from now on.
  void moveTo(const QScreen& screen);
  /// The window goes, and asks nobody: so the program ends it.
  void leave();

 protected:
  virtual void started() = 0;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void startOnce();
  void cover();

  std::function<void()> onLeft_;
  bool fullScreen_;
  QMetaObject::Connection sizeFollowed_;
  enum class Stage : std::uint8_t { waiting, begun, left } stage_ = Stage::waiting;
};

}  // namespace touch
