#include "ui/message_box_prompt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <algorithm>

#include "ui/finger_style.h"
#include "ui/scrollable.h"
#include "ui/text.h"

namespace touch {

namespace {

/// A text for which the screen has no room scrolls in the place where it would stand.
void fitToScreen(QMessageBox& box) {
  constexpr int besideText = 40;
  constexpr int usualWidth = 500;  // beyond it a box wraps its text
  auto* const label = box.findChild<QLabel*>("qt_msgbox_label");
  auto* const grid = qobject_cast<QGridLayout*>(box.layout());
  if (label == nullptr || grid == nullptr) return;
  const QSize screen = box.screen()->availableSize();
  const QSize room(screen.width() - 2 * besideText,
                   screen.height() - 2 * besideText - fingerSize());
  const auto needed = [label](int width) {
    return label->fontMetrics()
        .boundingRect(0, 0, width, QWIDGETSIZE_MAX, Qt::TextWordWrap, label->text())
        .height();
  };
  if (needed(std::min(usualWidth, room.width())) <= room.height()) return;
  auto* const text = new QLabel(label->text());
  text->setWordWrap(true);
  QScrollArea* const area = scrollable(text);
  area->setFocusPolicy(Qt::StrongFocus);
  area->setAccessibleName(label->text());
  area->setFixedSize(room.width(), std::min(needed(room.width()) + besideText, room.height()));
  int row = 0;
  int column = 0;
  int rows = 1;
  int columns = 1;
  grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
  label->hide();
  grid->addWidget(area, row, column, rows, columns);
}

/// The button that was pressed, be it by its key; none when the box was closed without.
QMessageBox::StandardButton pressedIn(std::string_view text, std::string_view title,
                                      QMessageBox::StandardButtons buttons) {
  QMessageBox box(QMessageBox::NoIcon, shownText(title), {}, buttons, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.setText(shownText(text));
  for (QAbstractButton* const button : box.buttons())
    makeFingerSized(*button);
  fitToScreen(box);
  auto pressed = QMessageBox::NoButton;
  QObject::connect(&box, &QMessageBox::buttonClicked, &box,
                   [&box, &pressed](auto* button) { pressed = box.standardButton(button); });
  box.exec();
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
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.textValue().toStdString();
}

}  // namespace touch
