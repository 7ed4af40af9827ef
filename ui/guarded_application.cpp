#include "ui/guarded_application.h"

#include <QMessageBox>
#include <QTimer>
#include <new>

namespace touch {

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::bad_alloc&) {
    // The box comes when all has been undone that the action had begun.
    if (!telling_) QTimer::singleShot(0, this, [this] { tell(); });
    telling_ = true;
  }
  return false;
}

void GuardedApplication::tell() {
  QMessageBox box(QMessageBox::Critical, "TouchUtility",
                  QMessageBox::tr("There is not enough memory for that; it was given up."));
  box.setInformativeText(
      QMessageBox::tr("Close other programs or windows and try again, or open a smaller file."));
  box.exec();
  telling_ = false;
}

}  // namespace touch
