#include "ui/controls/screen_keyboard.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPushButton>

#include "ui/controls/finger_style.h"

namespace touch {

namespace {

// Each row is eleven keys wide with what `ScreenKeyboard` adds.
constexpr const char* rows[] = {"1234567890", "QWERTYUIOP-", "ASDFGHJKL./", "ZXCVBNM"};
constexpr int gap = 4;
constexpr int narrowestKey = 30;  // a little more than 7.5 mm; eleven fit on a small screen
constexpr qreal letters = 1.4;    // of the usual size: a finger that aims covers what it aims at

void type(int key, const QString& text = {}) {
  QWidget* const typedInto = QApplication::focusWidget();
  if (typedInto == nullptr || !typedInto->testAttribute(Qt::WA_InputMethodEnabled)) return;
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, Qt::NoModifier, text);
    QApplication::sendEvent(typedInto, &event);
  }
}

}  // namespace

ScreenKeyboard::ScreenKeyboard(QWidget* parent) : QWidget(parent) {
  setObjectName("screenKeyboard");
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, gap, 0, 0);
  grid->setSpacing(gap);
  int row = 0;
  int column = 0;
  const auto add = [&](const QString& caption, const QString& name, int wide, auto&& typed) {
    auto* const key = new QPushButton(caption);
    key->setObjectName(name);
    key->setFocusPolicy(Qt::NoFocus);
    key->setAutoRepeat(true);
    key->setMinimumSize(narrowestKey, fingerSize());
    if (caption.size() == 1) key->setFont(resized(key->font(), letters));
    key->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(key, &QPushButton::clicked, this, typed);
    grid->addWidget(key, row, column, 1, wide);
    column += wide;
    return key;
  };
  for (const char* const keys : rows) {
    column = 0;
    for (const QChar sign : QString(keys))
      add(sign, QString("screenKey_") + sign, 1, [sign] { type(sign.unicode(), sign); });
    if (row == 0)
      add("⌫", "screenKeyBack", 1, [] {
        type(Qt::Key_Backspace);
      })->setAccessibleName(tr("Delete the last character"));
    ++row;
  }
  --row;
  add(tr("Space"), "screenKeySpace", 2, [] { type(Qt::Key_Space, " "); });
  add(tr("Next"), "screenKeyNext", 2, [] {
    type(Qt::Key_Tab);
  })->setAccessibleName(tr("To the next field"));
  for (int each = 0; each < grid->columnCount(); ++each)
    grid->setColumnStretch(each, 1);
}

QPushButton* ScreenKeyboard::makeSwitch(ScreenKeyboard& keyboard) {
  auto* const button = new QPushButton(tr("Ke&yboard"));
  button->setObjectName("cmdScreenKeyboard");
  button->setToolTip(tr("Shows keys to touch"));
  button->setCheckable(true);
  button->setFocusPolicy(Qt::TabFocus);  // a finger leaves the focus where it types
  makeFingerSized(*button);
  connect(button, &QPushButton::toggled, &keyboard, &QWidget::setVisible);
  keyboard.setFocusProxy(button);
  keyboard.hide();
  return button;
}

}  // namespace touch
