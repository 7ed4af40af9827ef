#include "simulator/driver/simulated_devices.h"

#include <algorithm>
#include <utility>

#include "simulator/controller/controllers.h"

namespace touch::simulator {

SimulatedDevices::SimulatedDevices() {
  for (const ControllerModel& model : controllerModels)
    units_.emplace_back(model);
}

SimulatedUnit* SimulatedDevices::find(std::string_view name) {
  const auto found = std::ranges::find_if(units_, [&](const SimulatedUnit& unit) {
    return !unit.replaced && unit.controller.model().name == name;
  });
  return found == units_.end() ? nullptr : &*found;
}

void SimulatedDevices::touch(Point place) {
  for (SimulatedUnit& unit : units_)
    unit.controller.touch(place, clock_.now());
}

void SimulatedDevices::lift() {
  for (SimulatedUnit& unit : units_)
    unit.controller.lift(clock_.now());
}

void SimulatedDevices::become(std::unique_ptr<const DescribedController> described) {
  if (isDescribed()) return;
  // Handles of the others go on to refer to them.
  for (SimulatedUnit& unit : units_)
    unit.replaced = true;
  described_ = std::move(described);
  units_.emplace_back(described_->model());
}

void SimulatedDevices::reset() {
  for (SimulatedUnit& unit : units_) {
    // The unit itself stays, because its line's thread still refers to it until the line is
    // settled.
    unit.controller = SimulatedController(unit.controller.model());
    unit.settings = unit.controller.model().settings;
    unit.portReleased = false;
  }
}

void SimulatedDevices::wakeLines() {
  for (SimulatedUnit& unit : units_) {
    if (unit.line) unit.line->wake();
  }
}

std::vector<std::unique_ptr<ServedPort>> SimulatedDevices::settleLines(std::mutex& guard) {
  std::vector<std::unique_ptr<ServedPort>> stopped;
  for (SimulatedUnit& unit : units_) {
    const bool wanted = unit.portReleased && unit.isPluggedIn();
    if (wanted == (unit.line != nullptr)) continue;
    if (wanted) {
      unit.controller.connect(LineUser::port, clock_.now());
      unit.line = ServedPort::open({unit.controller, clock_, guard});
    } else {
      unit.line->stop();
      unit.controller.connect(LineUser::driver, clock_.now());
      stopped.push_back(std::move(unit.line));
    }
  }
  return stopped;
}

}  // namespace touch::simulator
