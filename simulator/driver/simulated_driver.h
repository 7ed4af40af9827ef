#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>

#include "core/driver/driver.h"
#include "simulator/controller/request_interpreter.h"
#include "simulator/driver/simulated_devices.h"

namespace touch::simulator {

/// The touch driver on simulated controllers. Every operation may be called from any thread with
/// any argument: what makes no sense does nothing and returns 0.
class SimulatedDriver final : public Driver {
 public:
  SimulatedDriver() = default;

#define TOUCH_OVERRIDE(name, parameters, arguments) std::int32_t name parameters override;
  NEXAPI_OPERATIONS(TOUCH_OVERRIDE)
#undef TOUCH_OVERRIDE

  /// See requests.h.
  RequestAnswer answer(std::string_view request);
  bool isSimulated() const override {
    return true;
  }
  Result<std::string, std::string> simulate(const std::string& request) override;

 private:
  struct Range {
    std::int32_t lowest;
    std::int32_t highest;
  };
  using Setting = std::int32_t PointerSettings::*;

  template <typename Work>
  auto locked(Work work);
  template <typename Work>
  std::int32_t onUnit(std::int32_t handle, Work work, std::int32_t errorValue = 0);
  template <typename Work>
  std::int32_t onController(std::int32_t handle, Work work, std::int32_t errorValue = 0);
  std::int32_t getSetting(std::int32_t handle, Setting setting);
  std::int32_t putSetting(std::int32_t handle, Setting setting, std::int32_t value, Range range);
  std::int32_t putSwitch(std::int32_t handle, Setting setting, std::int32_t on);
  bool isOpen(const SimulatedUnit& unit) const;

  std::mutex mutex_;
  SimulatedDevices devices_;
  std::map<std::int32_t, SimulatedUnit*> open_;  // by handle
  std::int32_t lastHandle_ = 0x100;
  std::optional<TimePoint> monitorAsked_;
};

}  // namespace touch::simulator
