#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "simulator/controller/described_controller.h"
#include "simulator/controller/pointer_settings.h"
#include "simulator/controller/simulated_clock.h"
#include "simulator/controller/simulated_controller.h"
#include "simulator/port/served_port.h"

namespace touch::simulator {

/// A controller with what the driver keeps for it.
struct SimulatedUnit {
  explicit SimulatedUnit(const ControllerModel& model)
      : controller(model), settings(model.settings) {}

  SimulatedController controller;
  PointerSettings settings;
  bool replaced = false;             ///< by the one that was described
  bool portReleased = false;         ///< the driver has let go of its serial port
  std::unique_ptr<ServedPort> line;  ///< the released port; null while the controller is unplugged

  bool isPluggedIn() const { return !replaced && !controller.faults().has(Fault::unplugged); }
};

/// All simulated controllers, the one finger that touches every panel, and their time. Not safe to
/// use from several threads; the lines that it opens take its user's mutex.
class SimulatedDevices {
 public:
  SimulatedDevices();

  std::deque<SimulatedUnit>& units() { return units_; }
  /// Null for an unknown name; an unplugged controller is found too.
  SimulatedUnit* find(std::string_view name);
  SimulatedClock& clock() { return clock_; }

  void touch(Point place);
  void lift();
  /// All controllers go, as if unplugged, and this one takes their place. Only once.
  void become(std::unique_ptr<const DescribedController> described);
  bool isDescribed() const { return described_ != nullptr; }
  /// What is being described; it becomes nothing before it is complete.
  Description& description() { return description_; }
  /// Everything as when new; the clock goes on as it was.
  void reset();
  /// Lets the lines see what has happened to the finger and the clock.
  void wakeLines();

  /// Opens and stops lines so that there is one for every released port of a controller that is
  /// plugged in. Returns the stopped ones, to be destroyed after `guard` has been given back.
  std::vector<std::unique_ptr<ServedPort>> settleLines(std::mutex& guard);

 private:
  Description description_;
  std::unique_ptr<const DescribedController> described_;
  std::deque<SimulatedUnit> units_;  // a deque, because lines refer to the controllers in it
  SimulatedClock clock_;
};

}  // namespace touch::simulator
