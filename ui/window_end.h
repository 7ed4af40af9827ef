#pragma once

#include <functional>

class QWidget;

namespace touch {

/// Ends `window`: it is hidden, nothing that its buttons are about to do is done, and `after`,
/// which may destroy it, runs when the event in hand is through, which may be one of its own.
void endWindow(QWidget& window, std::function<void()> after);

}  // namespace touch
