#include "ui/message_box_prompt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>

#include "ui/finger_style.h"
#include "ui/full_screen_window.h"
#include "ui/text.h"

namespace touch {

namespace {

/// Without a window manager, as on many a kiosk, nobody else gives the keyboard back to the window below.
int answerTo(QDialog& dialog) {
  const QPointer<QWidget> below = dialog.parentWidget();
  const int answer = dialog.exec();
  if (below) below->activateWindow();
  return answer;
}

/// Esc closes it, and is no answer.
class QuestionBox final : public QMessageBox {
 public:
  using QMessageBox::QMessageBox;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Cancel)) {
      done(QDialog::Rejected);
    } else {
      QMessageBox::keyPressEvent(event);
    }
  }
};

/// The window that a box belongs to. A full-screen window is in front of all others even while the system still has to
/// make it the active one; a box of another one would bring that one to the front.
QWidget* windowInFront() {
  if (QWidget* const dialog = QApplication::activeModalWidget()) return dialog;
  for (QWidget* const window : QApplication::topLevelWidgets())
    if (qobject_cast<FullScreenWindow*>(window) != nullptr && window->isVisible()) return window;
  return QApplication::activeWindow();
}

/// The button that was pressed, be it by its key; none when the box was closed without.
QMessageBox::StandardButton pressedIn(QMessageBox& box, std::string_view text) {
  box.setTextFormat(Qt::PlainText);
  box.setText(shownText(text));
  for (QAbstractButton* const button : box.buttons())
    makeFingerSized(*button);
  auto pressed = QMessageBox::NoButton;
  QObject::connect(&box, &QMessageBox::buttonClicked, &box,
                   [&box, &pressed](auto* button) { pressed = box.standardButton(button); });
  answerTo(box);
  return pressed;
}

Answer answerIn(QuestionBox& box, std::string_view text) {
  switch (pressedIn(box, text)) {
    case QMessageBox::Yes:
      return Answer::yes;
    case QMessageBox::No:
      return Answer::no;
    default:
      return Answer::none;
  }
}

}  // namespace

void MessageBoxPrompt::message(std::string_view text, std::string_view title) {
  await(text, title);
}

bool MessageBoxPrompt::await(std::string_view text, std::string_view title) {
  QMessageBox box(QMessageBox::NoIcon, shownText(title), {}, QMessageBox::Ok, windowInFront());
  return pressedIn(box, text) == QMessageBox::Ok;
}

bool MessageBoxPrompt::proceed(std::string_view text, std::string_view title) {
  QMessageBox box(QMessageBox::NoIcon, shownText(title), {}, QMessageBox::Ok | QMessageBox::Cancel,
                  windowInFront());
  return pressedIn(box, text) == QMessageBox::Ok;
}

Answer MessageBoxPrompt::ask(std::string_view text, std::string_view title) {
  QuestionBox box(QMessageBox::NoIcon, shownText(title), {}, QMessageBox::Yes | QMessageBox::No,
                  windowInFront());
  return answerIn(box, text);
}

Answer MessageBoxPrompt::choose(std::string_view text, std::string_view yes, std::string_view no) {
  QuestionBox box(QMessageBox::NoIcon, shownText(defaultTitle), {},
                  QMessageBox::Yes | QMessageBox::No, windowInFront());
  box.button(QMessageBox::Yes)->setText(shownText(yes));
  box.button(QMessageBox::No)->setText(shownText(no));
  return answerIn(box, text);
}

std::optional<std::string> MessageBoxPrompt::input(std::string_view prompt,
                                                   std::string_view title) {
  QInputDialog dialog(windowInFront());
  dialog.setWindowTitle(shownText(title));
  dialog.setLabelText(shownText(prompt));
  dialog.setTextEchoMode(QLineEdit::Password);
  if (answerTo(dialog) != QDialog::Accepted) return std::nullopt;
  return dialog.textValue().toStdString();
}

}  // namespace touch
