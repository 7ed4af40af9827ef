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

QMessageBox::StandardButton ask(std::string_view text, std::string_view title,
                                QMessageBox::StandardButtons buttons) {
  QMessageBox box(QMessageBox::NoIcon, shownText(title), {}, buttons, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.setText(shownText(text));
  for (QAbstractButton* const button : box.buttons())
    makeFingerSized(*button);
  return static_cast<QMessageBox::StandardButton>(answerTo(box));
}

}  // namespace

void MessageBoxPrompt::message(std::string_view text, std::string_view title) {
  ask(text, title, QMessageBox::Ok);
}

bool MessageBoxPrompt::confirm(std::string_view text, std::string_view title) {
  return ask(text, title, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
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
