#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/driver/driver.h"

namespace touch::test {

/// A driver whose operations are all alike, but for those that a derived class knows by name.
class UniformDriver : public Driver {
 public:
#define TOUCH_UNIFORM(name, parameters, arguments) \
  std::int32_t name parameters override {          \
    return perform(#name, numbersIn arguments);    \
  }
  NEXAPI_OPERATIONS(TOUCH_UNIFORM)
#undef TOUCH_UNIFORM

 protected:
  using Numbers = std::vector<std::int32_t>;
  /// `numbers`: the handle first, where there is one.
  virtual std::int32_t perform(const std::string& operation, const Numbers& numbers) = 0;

 private:
  /// Whoever uses a pointer knows the operation.
  static std::int32_t numberOf(std::int32_t number) {
    return number;
  }
  static std::int32_t numberOf(const void*) {
    return 0;
  }
  static Numbers numbersIn(auto... arguments) {
    return {numberOf(arguments)...};
  }
};

/// Passes each operation on to another driver, through one function.
class DriverBetween : public Driver {
 public:
  explicit DriverBetween(Driver& inner) : inner_(inner) {}

#define TOUCH_PASSED(name, parameters, arguments)                \
  std::int32_t name parameters override {                        \
    return pass(#name, [&]() { return inner_.name arguments; }); \
  }
  NEXAPI_OPERATIONS(TOUCH_PASSED)
#undef TOUCH_PASSED

 protected:
  using Call = std::function<std::int32_t()>;
  virtual std::int32_t pass(std::string_view operation, const Call& call) = 0;

 private:
  Driver& inner_;
};

/// A driver of which some operations are missing.
class LackingDriver final : public DriverBetween {
 public:
  LackingDriver(Driver& whole, std::set<std::string_view> lacks)
      : DriverBetween(whole), lacks_(std::move(lacks)) {}
  std::vector<std::string_view> missing() const override { return {lacks_.begin(), lacks_.end()}; }

 private:
  std::int32_t pass(std::string_view operation, const Call& call) override {
    if (lacks_.contains(operation)) throw MissingOperation(operation);
    return call();
  }

  std::set<std::string_view> lacks_;
};

}  // namespace touch::test
