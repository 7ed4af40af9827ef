#pragma once

#include <QFrame>
#include <QPointer>
#include <functional>

class QLineEdit;

namespace touch {

class frmWindows;
class MainConsole;
class MainModel;

/// Asks for the password that guards the serial debugger.
class frmPasswordFrame final : public QFrame {
  Q_OBJECT

 public:
  /// Gives the focus to a widget that had it before.
  using GiveFocusBack = std::function<void(QWidget* before)>;

  frmPasswordFrame(MainModel& model, MainConsole& console, frmWindows& windows, bool simulated,
                   GiveFocusBack giveFocusBack);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void showWanted(bool wanted);

  MainConsole& console_;
  GiveFocusBack giveFocusBack_;
  QLineEdit* box_;
  QPointer<QWidget> focusBefore_;
};

}  // namespace touch
