#pragma once

#include <functional>

#include "core/serial_port.h"
#include "support/gate.h"

namespace touch {

/// A port that a screen reads while a controller streams, and what it has to heed.
struct ReceivingPort {
  SerialPort& port;
  /// Held while somebody waits for an answer on it, or has a box up: what comes is not the
  /// screen's. The screen reads within it. Outlives the screen.
  Gate& gate;
  /// Run at the end of the tick in which the device turned out to have gone. May be empty.
  std::function<void()> onLost;

  /// Runs onLost when the port has closed by itself. Returns whether it had.
  bool tellLoss() const {
    if (port.isOpen() || !port.lost()) return false;
    if (onLost) onLost();
    return true;
  }
};

}  // namespace touch
