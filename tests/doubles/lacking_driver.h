#pragma once

#include <set>
#include <string_view>
#include <vector>

#include "core/driver/driver.h"

namespace touch::test {

/// A driver of which some operations are missing.
class LackingDriver final : public Driver {
 public:
  LackingDriver(Driver& whole, std::set<std::string_view> lacks)
      : whole_(whole), lacks_(std::move(lacks)) {}

#define TOUCH_LACKING(name, parameters, arguments)             \
  std::int32_t name parameters override {                      \
    if (lacks_.contains(#name)) throw MissingOperation(#name); \
    return whole_.name arguments;                              \
  }
  NEXAPI_OPERATIONS(TOUCH_LACKING)
#undef TOUCH_LACKING
  std::vector<std::string_view> missing() const override {
    return {lacks_.begin(), lacks_.end()};
  }

 private:
  Driver& whole_;
  std::set<std::string_view> lacks_;
};

}  // namespace touch::test
