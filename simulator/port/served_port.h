#pragma once

#include <memory>
#include <string>
#include <vector>

#include "simulator/port/controller_end.h"

namespace touch::simulator {

/// A port that other programs open like a serial one, with a controller at its end, served at the
/// pace of its line by a thread of its own: a pseudo-terminal, or on Windows a named pipe. It
/// exists as long as this object. The thread sleeps while nothing is due.
class ServedPort {
 public:
  /// Null where the system has none to offer.
  static std::unique_ptr<ServedPort> open(const ControllerEnd& controller);

  /// The speeds that a program can set at the device, in bits a second.
  static std::vector<int> speeds();

  ServedPort() = default;
  ServedPort(const ServedPort&) = delete;
  ServedPort& operator=(const ServedPort&) = delete;
  /// Waits for the thread, which may want the controller's guard: the caller must not hold it.
  virtual ~ServedPort() = default;

  /// The device that a program opens to talk to the controller.
  virtual const std::string& path() const = 0;
  /// Something outside the line happened: the finger, the clock.
  virtual void wake() = 0;
  /// After this, called with `guard` held, the controller is not used any more.
  virtual void stop() = 0;
};

}  // namespace touch::simulator
