#include "simulator/driver/simulated_driver.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

namespace touch::simulator {

namespace {

using namespace std::chrono_literals;

constexpr auto monitorSettingTime = 1s;
// What operations return whose 0 would be a sound result.
constexpr std::int32_t countError = -1;

std::int32_t lowByte(std::int32_t value) {
  return value & 0xFF;
}

// The low 8 bits of a buffer's size; a negative size is no buffer, so that nobody's memory is
// overrun.
std::size_t bufferSize(std::int32_t size) {
  return size < 0 ? 0 : static_cast<std::size_t>(lowByte(size));
}

std::int32_t counts(double fraction) {
  return static_cast<std::int32_t>(std::lround(fraction * highestCount));
}

}  // namespace

// Lines that came out of use are destroyed last, without the lock: their threads need it to end.
template <typename Work>
auto SimulatedDriver::locked(Work work) {
  std::vector<std::unique_ptr<ServedPort>> stopped;
  const std::lock_guard lock(mutex_);
  auto result = work();
  stopped = devices_.settleLines(mutex_);
  return result;
}

template <typename Work>
std::int32_t SimulatedDriver::onUnit(std::int32_t handle, Work work, std::int32_t errorValue) {
  return locked([&]() -> std::int32_t {
    const auto found = open_.find(handle);
    if (found == open_.end() || !found->second->isPluggedIn()) return 0;
    if (found->second->controller.faults().has(Fault::errorReturns)) return errorValue;
    return work(*found->second);
  });
}

// For what the driver does with the controller itself, which it cannot reach without its port.
template <typename Work>
std::int32_t SimulatedDriver::onController(std::int32_t handle, Work work,
                                           std::int32_t errorValue) {
  return onUnit(
      handle,
      [&](SimulatedUnit& unit) -> std::int32_t {
        return unit.portReleased ? 0 : work(unit.controller);
      },
      errorValue);
}

std::int32_t SimulatedDriver::getSetting(std::int32_t handle, Setting setting) {
  return onUnit(
      handle, [&](SimulatedUnit& unit) { return unit.settings.*setting; }, countError);
}

std::int32_t SimulatedDriver::putSetting(std::int32_t handle, Setting setting, std::int32_t value,
                                         Range range) {
  return onUnit(handle, [&](SimulatedUnit& unit) {
    if (value < range.lowest || value > range.highest) return 0;
    unit.settings.*setting = value;
    return 1;
  });
}

std::int32_t SimulatedDriver::putSwitch(std::int32_t handle, Setting setting, std::int32_t on) {
  return putSetting(handle, setting, lowByte(on) != 0 ? 1 : 0, {0, 1});
}

bool SimulatedDriver::isOpen(const SimulatedUnit& unit) const {
  return std::ranges::any_of(open_, [&](const auto& entry) { return entry.second == &unit; });
}

RequestAnswer SimulatedDriver::answer(std::string_view request) {
  return locked([&] { return carryOutRequest(devices_, request); });
}

Result<std::string, std::string> SimulatedDriver::simulate(const std::string& request) {
  RequestAnswer given = answer(request);
  if (!given.done) return tl::unexpected(std::move(given.text));
  return std::move(given.text);
}

std::int32_t SimulatedDriver::GetExistControllers() {
  return locked([&] {
    return static_cast<std::int32_t>(
        std::ranges::count_if(devices_.units(), &SimulatedUnit::isPluggedIn));
  });
}

std::int32_t SimulatedDriver::GetControllerName(std::int32_t number, char* name,
                                                std::int32_t size) {
  const std::size_t room = bufferSize(size);
  if (name == nullptr || room == 0) return 0;
  return locked([&]() -> std::int32_t {
    std::int32_t count = 0;
    for (const SimulatedUnit& unit : devices_.units()) {
      if (!unit.isPluggedIn() || ++count != lowByte(number)) continue;
      if (unit.controller.faults().has(Fault::errorReturns)) return 0;
      const auto shown = unit.controller.model().name.substr(0, room - 1);
      *std::ranges::copy(shown, name).out = '\0';
      return 1;
    }
    return 0;
  });
}

std::int32_t SimulatedDriver::OpenController(const char* name) {
  if (name == nullptr) return 0;
  return locked([&]() -> std::int32_t {
    SimulatedUnit* const unit = devices_.find(name);
    if (unit == nullptr || !unit->isPluggedIn()) return 0;
    const FaultSet& faults = unit->controller.faults();
    if (faults.has(Fault::errorReturns)) return countError;
    if (faults.has(Fault::openFails)) return 0;
    if (lastHandle_ == std::numeric_limits<std::int32_t>::max()) return 0;
    open_.emplace(++lastHandle_, unit);
    return lastHandle_;
  });
}

std::int32_t SimulatedDriver::CloseController(std::int32_t handle) {
  return locked([&]() -> std::int32_t {
    const auto found = open_.find(handle);
    if (found == open_.end()) return 0;
    SimulatedUnit& unit = *found->second;
    open_.erase(found);
    // Somebody else who has it open may be in the middle of a calibration.
    if (!isOpen(unit) && !unit.portReleased) unit.controller.abandonCalibration();
    return unit.controller.faults().has(Fault::errorReturns) ? 0 : 1;
  });
}

std::int32_t SimulatedDriver::DisableTouchRePort(std::int32_t handle) {
  return onController(handle, [](SimulatedController& controller) {
    controller.stopReports();
    return 1;
  });
}

std::int32_t SimulatedDriver::CloseCOMPort(std::int32_t handle) {
  return onUnit(handle, [](SimulatedUnit& unit) {
    if (unit.controller.model().link != Link::rs232) return 0;
    unit.portReleased = true;
    return 1;
  });
}

std::int32_t SimulatedDriver::ReopenCOMPort(std::int32_t handle) {
  return onUnit(handle, [](SimulatedUnit& unit) {
    if (unit.controller.model().link != Link::rs232) return 0;
    unit.portReleased = false;
    return 1;
  });
}

std::int32_t SimulatedDriver::FlushReadBuffer(std::int32_t handle) {
  return onController(handle, [&](SimulatedController& controller) {
    const TimePoint now = devices_.clock().now();
    controller.take(controller.arrived(now), now);
    return 1;
  });
}

std::int32_t SimulatedDriver::WriteBuffer(std::int32_t handle, const std::uint8_t* bytes,
                                          std::int32_t count) {
  if (bytes == nullptr) return 0;
  return onController(handle, [&](SimulatedController& controller) {
    controller.receive(std::span(bytes, bufferSize(count)), devices_.clock().now());
    return 1;
  });
}

std::int32_t SimulatedDriver::ReadBuffer(std::int32_t handle, std::uint8_t* bytes,
                                         std::int32_t count) {
  if (bytes == nullptr) return 0;
  return onController(
      handle,
      [&](SimulatedController& controller) {
        const auto taken = controller.take(bufferSize(count), devices_.clock().now());
        std::ranges::copy(taken, bytes);
        return static_cast<std::int32_t>(taken.size());
      },
      countError);
}

std::int32_t SimulatedDriver::ReadLength(std::int32_t handle) {
  return onController(
      handle,
      [&](SimulatedController& controller) {
        return static_cast<std::int32_t>(controller.arrived(devices_.clock().now()));
      },
      countError);
}

std::int32_t SimulatedDriver::GetReportMode(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::reportMode);
}

std::int32_t SimulatedDriver::SetReportMode(std::int32_t handle, std::int32_t mode) {
  return putSetting(handle, &PointerSettings::reportMode, lowByte(mode), {1, 3});
}

std::int32_t SimulatedDriver::GetReportStatus(std::int32_t handle) {
  return onUnit(
      handle, [](SimulatedUnit& unit) { return unit.controller.reportsTouches() ? 1 : 0; },
      countError);
}

std::int32_t SimulatedDriver::GetRotation(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::rotation);
}

std::int32_t SimulatedDriver::SetRotation(std::int32_t handle, std::int32_t rotation) {
  return putSetting(handle, &PointerSettings::rotation, lowByte(rotation), {0, 3});
}

std::int32_t SimulatedDriver::EnableUpSound(std::int32_t handle, std::int32_t on) {
  return putSwitch(handle, &PointerSettings::upSound, on);
}

std::int32_t SimulatedDriver::EnableDownSound(std::int32_t handle, std::int32_t on) {
  return putSwitch(handle, &PointerSettings::downSound, on);
}

std::int32_t SimulatedDriver::GetUpSoundStatus(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::upSound);
}

std::int32_t SimulatedDriver::GetDownSoundStatus(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::downSound);
}

std::int32_t SimulatedDriver::EnableDoubleClick(std::int32_t handle, std::int32_t on) {
  return putSwitch(handle, &PointerSettings::doubleClick, on);
}

std::int32_t SimulatedDriver::GetDoubleClickEnabled(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::doubleClick);
}

std::int32_t SimulatedDriver::SetDoubleClickSpeed(std::int32_t handle, std::int32_t speed) {
  return putSetting(handle, &PointerSettings::doubleClickSpeed, lowByte(speed), {1, 255});
}

std::int32_t SimulatedDriver::GetDoubleClickSpeed(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::doubleClickSpeed);
}

std::int32_t SimulatedDriver::SetDoubleClickArea(std::int32_t handle, std::int32_t area) {
  return putSetting(handle, &PointerSettings::doubleClickArea, lowByte(area), {0, 255});
}

std::int32_t SimulatedDriver::GetDoubleClickArea(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::doubleClickArea);
}

std::int32_t SimulatedDriver::EnableRightClick(std::int32_t handle, std::int32_t on) {
  return putSwitch(handle, &PointerSettings::rightClick, on);
}

std::int32_t SimulatedDriver::GetRightClickEnabled(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::rightClick);
}

std::int32_t SimulatedDriver::SetRightClickTime(std::int32_t handle, std::int32_t milliseconds) {
  return putSetting(handle, &PointerSettings::rightClickTime, milliseconds, {300, 1200});
}

std::int32_t SimulatedDriver::GetRightClickTime(std::int32_t handle) {
  return getSetting(handle, &PointerSettings::rightClickTime);
}

std::int32_t SimulatedDriver::SetCalPoint(std::int32_t handle, std::int32_t point,
                                          std::int32_t samples, std::int32_t count) {
  return onController(handle, [&](SimulatedController& controller) {
    // Two points are the controller's own business, led by its command.
    const bool led = lowByte(count) > 2;
    return led && controller.armPoint(lowByte(point), lowByte(count), lowByte(samples)) ? 1 : 0;
  });
}

std::int32_t SimulatedDriver::CalCurrentPointReady(std::int32_t handle, std::int32_t* raw) {
  if (raw == nullptr) return 0;
  return onController(handle, [&](SimulatedController& controller) {
    const auto reading = controller.takenPoint();
    if (!reading) return 0;
    const std::span<std::int32_t, 2> coordinates(raw, 2);
    coordinates[0] = counts(reading->x);
    coordinates[1] = counts(reading->y);
    return 1;
  });
}

std::int32_t SimulatedDriver::IsPenUp(std::int32_t handle) {
  return onUnit(handle, [](SimulatedUnit& unit) {
    return unit.portReleased || !unit.controller.isTouched() ? 1 : 0;
  });
}

std::int32_t SimulatedDriver::StoreCalibrationData(std::int32_t handle) {
  return onController(handle, [](SimulatedController& controller) {
    return controller.storeCalibration() ? 1 : 0;
  });
}

std::int32_t SimulatedDriver::AskToSetMultiMonitor(std::int32_t handle, std::int32_t) {
  return onUnit(handle, [&](SimulatedUnit&) {
    monitorAsked_ = devices_.clock().now();
    return 1;
  });
}

std::int32_t SimulatedDriver::QueryMultiMonitorSetOK() {
  return locked([&] {
    const bool set = monitorAsked_ && devices_.clock().now() - *monitorAsked_ >= monitorSettingTime;
    return set ? 1 : 0;
  });
}

}  // namespace touch::simulator
