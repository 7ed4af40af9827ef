#pragma once

#include <cstring>
#include <limits>
#include <set>
#include <string_view>
#include <tuple>

#include "core/connection.h"
#include "core/driver.h"
#include "tests/faults/fault_plan.h"

namespace touch::test {

/// A driver that fails where the plan says so. It remembers what it has given away and what it got back.
class FaultyDriver final : public Driver {
 public:
  FaultyDriver(Driver& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}

  std::multiset<std::int32_t> openControllers;
  bool portIsTaken = false;  ///< it was told to let go of its port, and not yet to take it back

#define TOUCH_FAULTY(name, parameters, arguments)                                  \
  std::int32_t name parameters override {                                          \
    const auto fault = plan_.next();                                               \
    const std::int32_t result =                                                    \
        fault ? fail(#name, *fault, std::tuple arguments) : inner_.name arguments; \
    remember(#name, result, std::tuple arguments);                                 \
    return result;                                                                 \
  }
  NEXAPI_OPERATIONS(TOUCH_FAULTY)
#undef TOUCH_FAULTY

 private:
  static std::int32_t errorOf(Fault fault) {
    return fault == Fault::nonsense ? std::numeric_limits<std::int32_t>::max() : 0;
  }

  template <typename... Arguments>
  std::int32_t fail(std::string_view name, Fault fault, const std::tuple<Arguments...>& arguments) {
    // What lies behind is to be in order afterwards, whatever is said of it.
    if (name == "CloseController") inner_.CloseController(handleOf(arguments));
    return errorOf(fault);
  }
  std::int32_t fail(std::string_view, Fault fault,
                    const std::tuple<std::int32_t, char*, std::int32_t>& name) {
    const auto [number, buffer, size] = name;
    if (fault == Fault::nonsense) std::memset(buffer, 'X', static_cast<std::size_t>(size));
    return errorOf(fault);
  }
  std::int32_t fail(std::string_view, Fault fault,
                    const std::tuple<std::int32_t, std::uint8_t*, std::int32_t>& read) {
    const auto [handle, bytes, limit] = read;
    if (fault == Fault::nonsense) std::memset(bytes, 0xA5, static_cast<std::size_t>(limit));
    return errorOf(fault);
  }

  template <typename... Arguments>
  void remember(std::string_view name, std::int32_t result,
                const std::tuple<Arguments...>& arguments) {
    if (name == "OpenController" && Connection::isHandle(result)) openControllers.insert(result);
    if (name == "CloseController") openControllers.extract(handleOf(arguments));
    if (name == "CloseCOMPort") portIsTaken = true;
    if (name == "ReopenCOMPort") portIsTaken = false;
  }

  template <typename... Rest>
  static std::int32_t handleOf(const std::tuple<std::int32_t, Rest...>& arguments) {
    return std::get<0>(arguments);
  }
  template <typename WithoutHandle>
  static std::int32_t handleOf(const WithoutHandle&) {
    return 0;
  }

  Driver& inner_;
  FaultPlan& plan_;
};

}  // namespace touch::test
