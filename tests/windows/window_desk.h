#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include "tests/support/desk.h"

namespace touch::test {

/// Qt's events first, then everything that is due in `time`; window by window as a user would meet them.
class WindowDesk : public Desk {
 protected:
  void live(std::chrono::milliseconds time) {
    QApplication::processEvents();
    clock.delay(time);
    QApplication::processEvents();
    // Outside of an event loop of its own, Qt leaves what is to be deleted later.
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  template <typename Widget>
  static Widget* find(const QWidget& window, const char* name) {
    auto* const found = window.findChild<Widget*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("no control called ") + name);
    return found;
  }

  /// Types `name` into the file dialog that comes next; cancels it when that is empty.
  static void answerFileDialog(const QString& name) {
    QTimer::singleShot(0, qApp, [name] {
      auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return answerFileDialog(name);
      find<QLineEdit>(*dialog, "fileNameEdit")->setText(name);
      QMetaObject::invokeMethod(dialog, name.isEmpty() ? "reject" : "accept", Qt::QueuedConnection);
    });
  }
};

}  // namespace touch::test
