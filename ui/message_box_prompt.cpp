#include "ui/message_box_prompt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>

#include "ui/finger_style.h"
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

/// The button that was pressed, be it by its key; none when the box was closed without.
QMessageBox::StandardButton pressedIn(std::string_view text, std::string_view title,
                                      QMessageBox::StandardButtons buttons) {
  QMessageBox box(QMessageBox::NoIcon, shownText(title), {}, buttons, QApplication::activeWindow());
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

}  // namespace

void MessageBoxPrompt::message(std::string_view text, std::string_view title) {
  pressedIn(text, title, QMessageBox::Ok);
}

bool MessageBoxPrompt::await(std::string_view text, std::string_view title) {
  return pressedIn(text, title, QMessageBox::Ok) == QMessageBox::Ok;
}

bool MessageBoxPrompt::proceed(std::string_view text, std::string_view title) {
  return pressedIn(text, title, QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Ok;
}

Answer MessageBoxPrompt::ask(std::string_view text, std::string_view title) {
  switch (pressedIn(text, title, QMessageBox::Yes | QMessageBox::No)) {
    case QMessageBox::Yes:
      return Answer::yes;
    case QMessageBox::No:
      return Answer::no;
    default:
      return Answer::none;
  }
}

std::optional<std::string> MessageBoxPrompt::input(std::string_view prompt,
                                                   std::string_view title) {
  QInputDialog dialog(QApplication::activeWindow());
  dialog.setWindowTitle(shownText(title));
  dialog.setLabelText(shownText(prompt));
  dialog.setTextEchoMode(QLineEdit::Password);
  if (answerTo(dialog) != QDialog::Accepted) return std::nullopt;
  return dialog.textValue().toStdString();
}

}  // namespace touch
