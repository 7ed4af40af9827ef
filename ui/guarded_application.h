#pragma once

#include <QApplication>

namespace touch {

/// An application in which an action that runs out of memory is given up with a message, and the
/// program goes on.
class GuardedApplication final : public QApplication {
 public:
  GuardedApplication(int& argc, char** argv) : QApplication(argc, argv) {}

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  void tell();

  bool telling_ = false;
};

}  // namespace touch
