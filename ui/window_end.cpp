#include "ui/window_end.h"

#include <QAbstractButton>
#include <QTimer>
#include <QWidget>
#include <utility>

namespace touch {

void endWindow(QWidget& window, std::function<void()> after) {
  window.setEnabled(false);
  // A shortcut holds its button down for a moment and clicks it then, enabled or not. What such a
  // click opens would stand on a window that goes.
  for (QAbstractButton* const button : window.findChildren<QAbstractButton*>())
    button->blockSignals(true);
  window.hide();
  QTimer::singleShot(0, &window, std::move(after));
}

}  // namespace touch
