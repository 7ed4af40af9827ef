#include "ui/message_box_prompt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "ui/controls/finger_style.h"
#include "ui/controls/screen_keyboard.h"
#include "ui/controls/scrollable.h"
#include "ui/screens/full_screen_window.h"
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

/// The button that was pressed, be it by its key; none when the box was closed without.
QMessageBox::StandardButton pressedIn(QMessageBox& box, std::string_view text) {
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

/// `caption` with its first letter that is not in `taken` as its key.
QString withKey(QString caption, QString& taken) {
  const auto isFree = [&taken](QChar letter) {
    return letter.isLetter() && !taken.contains(letter, Qt::CaseInsensitive);
  };
  const auto key = std::ranges::find_if(std::as_const(caption), isFree);
  if (key == caption.cend()) return caption;
  taken += *key;
  return caption.insert(key - caption.cbegin(), '&');
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

QWidget* windowInFront() {
  if (QWidget* const dialog = QApplication::activeModalWidget()) return dialog;
  for (QWidget* const window : QApplication::topLevelWidgets())
    if (qobject_cast<FullScreenWindow*>(window) != nullptr && window->isVisible()) return window;
  return QApplication::activeWindow();
}

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
  QString keys;
  box.button(QMessageBox::Yes)->setText(withKey(shownText(yes), keys));
  box.button(QMessageBox::No)->setText(withKey(shownText(no), keys));
  return answerIn(box, text);
}

std::optional<std::string> MessageBoxPrompt::input(std::string_view prompt,
                                                   std::string_view title) {
  QInputDialog dialog(windowInFront());
  dialog.setWindowTitle(shownText(title));
  dialog.setLabelText(shownText(prompt));
  dialog.setTextEchoMode(QLineEdit::Password);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.textValue().toStdString();
}

std::optional<std::string> MessageBoxPrompt::reason(std::string_view prompt, std::string_view title,
                                                    const std::vector<std::string>& usual) {
  QDialog dialog(windowInFront());
  dialog.setWindowTitle(shownText(title));
  auto* const label = new QLabel(shownText(prompt));
  label->setWordWrap(true);
  auto* const choice = new QComboBox;
  choice->setObjectName("reason");
  choice->setAccessibleName(label->text());
  choice->setEditable(true);
  choice->setCompleter(nullptr);  // "no" is to stay "no", and not become "no time" unasked
  for (const std::string& one : usual)
    choice->addItem(shownText(one));
  choice->clearEditText();
  makeFingerSized(*choice);
  auto* const keyboard = new ScreenKeyboard;
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  for (QAbstractButton* const button : buttons->buttons())
    makeFingerSized(*button);
  buttons->addButton(ScreenKeyboard::makeSwitch(*keyboard), QDialogButtonBox::ActionRole);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* const rows = new QVBoxLayout(&dialog);
  for (QWidget* const part : std::initializer_list<QWidget*>{label, choice, buttons, keyboard})
    rows->addWidget(part);
  choice->setFocus();
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return choice->currentText().toStdString();
}

}  // namespace touch
