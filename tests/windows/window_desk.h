#pragma once

#include <QApplication>
#include <QTest>
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
};

}  // namespace touch::test
