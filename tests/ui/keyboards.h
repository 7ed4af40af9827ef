#pragma once

#include <QTest>
#include <QtWidgets>

namespace touch::test {

/// A key as a keyboard somewhere sends it, and the canvas's key that it is; 0: none.
struct KeyboardCase {
  const char* what;
  int key;
  quint32 place;  ///< as X11 numbers them
  quint32 native;
  Qt::KeyboardModifiers with;
  char means;

  void sendTo(QWidget& focused) const {
    QKeyEvent event(QEvent::KeyPress, key, with, place, native, 0);
    QApplication::sendEvent(&focused, &event);
  }
};

inline const KeyboardCase keyboards[] = {
    {"American", Qt::Key_G, 42, 'g', {}, 'G'},
    {"a capital", Qt::Key_G, 42, 'G', Qt::ShiftModifier, 'G'},
    {"Cyrillic, X11", 0x41F, 42, 0x6D0, {}, 'G'},
    {"Cyrillic, Windows", 0x41F, 0x22, 'G', {}, 'G'},
    {"Dvorak: another letter in that place", Qt::Key_I, 42, 'i', {}, 0},
    {"a bracket in that place", Qt::Key_BracketLeft, 42, '[', {}, 0},
    {"with Ctrl", Qt::Key_G, 42, 'g', Qt::ControlModifier, 0},
    {"a French 2 without Shift", Qt::Key_Eacute, 11, 0xE9, {}, '2'},
    {"on the keypad", Qt::Key_2, 88, '2', Qt::KeypadModifier, '2'},
};

}  // namespace touch::test
