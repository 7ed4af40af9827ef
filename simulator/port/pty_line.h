#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "simulator/controller/simulated_clock.h"
#include "simulator/controller/simulated_controller.h"

namespace touch::simulator {

/// A pseudo-terminal with a controller at its end, served at the pace of its line by a thread of
/// its own. The device exists as long as the line. The thread sleeps while nothing is due.
class PtyLine {
 public:
  /// `controller` and `clock` are only used while `guard` is held; all three must outlive the line.
  /// The controller must already be connected to a port. Null where the platform offers no
  /// pseudo-terminal.
  static std::unique_ptr<PtyLine> open(SimulatedController& controller, const SimulatedClock& clock,
                                       std::mutex& guard);

  /// The speeds that a program can set at the device, in bits a second.
  static std::vector<int> speeds();

  PtyLine() = default;
  PtyLine(const PtyLine&) = delete;
  PtyLine& operator=(const PtyLine&) = delete;
  /// Waits for the thread, which may want `guard`: the caller must not hold it.
  virtual ~PtyLine() = default;

  /// The device that a program opens to talk to the controller.
  virtual const std::string& path() const = 0;
  /// Something outside the line happened: the finger, the clock.
  virtual void wake() = 0;
  /// After this, called with `guard` held, the controller is not used any more.
  virtual void stop() = 0;
};

}  // namespace touch::simulator
