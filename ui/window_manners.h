#pragma once

#include <QObject>
#include <QPointer>
#include <vector>

class QWidget;

namespace touch {

/// How every window of the program behaves, whoever opens it; lives as long as the application.
/// - The keyboard follows the windows, also where no window manager sees to it, as on many a kiosk:
/// whatever comes up
///   or is pressed has it, and what goes gives it back to the window below.
/// - The wheel turns what has the focus, and scrolls the page above everything else.
/// - Tab enters a group of options at the chosen one.
/// - A number field says what it expects when it is given something else.
/// - File dialogs remember nothing: Qt would keep their last folder in a file or in the registry.
class WindowManners final : public QObject {
  Q_OBJECT

 public:
  WindowManners();
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void teach(QWidget& widget);
  void remember(QWidget& window);
  bool hadKeyboard(const QWidget& hidden) const;
  void giveKeyboardBack();

  std::vector<QPointer<QWidget>> windows_;  ///< the one that was active last comes first
};

}  // namespace touch
