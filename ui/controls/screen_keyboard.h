#pragma once

#include <QWidget>

class QPushButton;

namespace touch {

/// Keys that a finger hits, for whoever has no keyboard at hand: capital letters, digits, and what
/// stands in serial and order numbers. They type into the control that has the focus and leave it
/// there.
class ScreenKeyboard final : public QWidget {
  Q_OBJECT

 public:
  explicit ScreenKeyboard(QWidget* parent = nullptr);

  /// A button that shows `keyboard` and hides it again.
  static QPushButton* makeSwitch(ScreenKeyboard& keyboard);
};

}  // namespace touch
