#pragma once

#include <functional>

#include "core/serial_port.h"

namespace touch {

/// A port that a screen reads while a controller streams, and what it has to heed.
struct ReceivingPort {
  SerialPort& port;
  /// Somebody else waits for an answer on it: what comes is not the screen's. May be empty.
  std::function<bool()> isBusy;
  /// Run at the end of the tick in which the device turned out to have gone. May be empty.
  std::function<void()> onLost;

  bool isFree() const { return !isBusy || !isBusy(); }
  /// Runs onLost when the port has closed by itself. Returns whether it had.
  bool tellLoss() const {
    if (port.isOpen() || !port.lost()) return false;
    if (onLost) onLost();
    return true;
  }
};

}  // namespace touch
