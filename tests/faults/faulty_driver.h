#pragma once

#include <cstring>
#include <limits>
#include <set>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "core/driver/connection.h"
#include "core/driver/driver.h"
#include "tests/faults/fault_plan.h"

namespace touch::test {

/// A driver that fails where the plan says so. It remembers what it has given away and what it got
/// back.
class FaultyDriver final : public Driver {
 public:
  FaultyDriver(Driver& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}

  std::multiset<std::int32_t> openControllers;
  bool portIsTaken = false;  ///< it was told to let go of its port, and not yet to take it back

#define TOUCH_FAULTY(name, parameters, arguments)                                       \
  std::int32_t name parameters override {                                               \
    return perform(#name, std::tuple arguments, [&] { return inner_.name arguments; }); \
  }
  NEXAPI_OPERATIONS(TOUCH_FAULTY)
#undef TOUCH_FAULTY

 private:
  template <typename... Arguments, typename Call>
  std::int32_t perform(std::string_view name, const std::tuple<Arguments...>& arguments,
                       const Call& call) {
    const auto fault = plan_.next();
    // What lies behind is to be in order afterwards, whatever is said of it.
    std::int32_t result = !fault || name == "CloseController" ? call() : 0;
    const bool nonsense = fault == Fault::nonsense;
    if (nonsense) garble(arguments);
    if (fault) result = nonsense ? std::numeric_limits<std::int32_t>::max() : 0;
    if (name == "OpenController" && Connection::isHandle(result)) openControllers.insert(result);
    if constexpr (std::is_same_v<std::tuple<Arguments...>, std::tuple<std::int32_t>>) {
      if (name == "CloseController") openControllers.extract(std::get<0>(arguments));
    }
    if (name == "CloseCOMPort") portIsTaken = true;
    if (name == "ReopenCOMPort") portIsTaken = false;
    return result;
  }

  /// Fills the buffer that is to be written to, if there is one.
  static void garble(const auto&) {}
  template <typename Byte>
  requires(sizeof(Byte) == 1 && !std::is_const_v<Byte>) static void garble(
      const std::tuple<std::int32_t, Byte*, std::int32_t>& buffer) {
    constexpr int content = std::is_same_v<Byte, char> ? 'X' : 0xA5;
    std::memset(std::get<1>(buffer), content, static_cast<std::size_t>(std::get<2>(buffer)));
  }

  Driver& inner_;
  FaultPlan& plan_;
};

}  // namespace touch::test
