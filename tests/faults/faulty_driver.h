#pragma once

#include <cstring>
#include <limits>
#include <optional>

#include "core/driver/connection.h"
#include "tests/doubles/drivers.h"
#include "tests/faults/fault_plan.h"

namespace touch::test {

/// A driver that fails where the plan says so. It remembers what it has given away and what it got
/// back.
class FaultyDriver final : public DriverBetween {
 public:
  FaultyDriver(Driver& inner, FaultPlan& plan) : DriverBetween(inner), plan_(plan) {}

  std::multiset<std::int32_t> openControllers;
  bool portIsTaken = false;  ///< it was told to let go of its port, and not yet to take it back

  std::int32_t OpenController(const char* name) override {
    const std::int32_t handle = DriverBetween::OpenController(name);
    if (Connection::isHandle(handle)) openControllers.insert(handle);
    return handle;
  }
  std::int32_t CloseController(std::int32_t handle) override {
    openControllers.extract(handle);
    return DriverBetween::CloseController(handle);
  }
  std::int32_t GetControllerName(std::int32_t number, char* name, std::int32_t size) override {
    return garbling(name, 'X', size, DriverBetween::GetControllerName(number, name, size));
  }
  std::int32_t ReadBuffer(std::int32_t handle, std::uint8_t* bytes, std::int32_t count) override {
    return garbling(bytes, 0xA5, count, DriverBetween::ReadBuffer(handle, bytes, count));
  }

 private:
  std::int32_t pass(std::string_view operation, const Call& call) override {
    fault_ = plan_.next();
    // What lies behind is to be in order afterwards, whatever is said of it.
    const std::int32_t result = !fault_ || operation == "CloseController" ? call() : 0;
    if (operation == "CloseCOMPort") portIsTaken = true;
    if (operation == "ReopenCOMPort") portIsTaken = false;
    if (!fault_) return result;
    return fault_ == Fault::nonsense ? std::numeric_limits<std::int32_t>::max() : 0;
  }
  std::int32_t garbling(void* buffer, int content, std::int32_t size, std::int32_t result) const {
    if (fault_ == Fault::nonsense) std::memset(buffer, content, static_cast<std::size_t>(size));
    return result;
  }

  FaultPlan& plan_;
  std::optional<Fault> fault_;  ///< of the last operation
};

}  // namespace touch::test
