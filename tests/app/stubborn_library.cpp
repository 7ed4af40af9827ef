#include <array>
#include <cstdio>
#include <string_view>
#include <tuple>

#include "core/driver_operations.h"

// A touch driver that takes every setting and keeps none. "USB DEVICE 1" can be opened but does not
// answer; "USB DEVICE 2" cannot be opened.

namespace {

constexpr std::array<const char*, 2> names = {"USB DEVICE 1", "USB DEVICE 2"};

template <typename... Arguments>
std::int32_t answer(std::string_view, const std::tuple<Arguments...>&) {
  return 0;
}

std::int32_t answer(std::string_view operation, const std::tuple<>&) {
  return operation == "GetExistControllers" ? static_cast<std::int32_t>(names.size()) : 0;
}

std::int32_t answer(std::string_view, const std::tuple<const char*>& open) {
  return std::get<0>(open) == std::string_view(names[0]) ? 2 : 0;
}

std::int32_t answer(std::string_view, const std::tuple<std::int32_t, char*, std::int32_t>& name) {
  const auto [number, buffer, size] = name;
  const char* const text = names.at(static_cast<std::size_t>(number) - 1);
  return std::snprintf(buffer, static_cast<std::size_t>(size), "%s", text);
}

}  // namespace

#define STUBBORN_DEFINE(name, parameters, arguments)                               \
  extern "C" __attribute__((visibility("default"))) std::int32_t name parameters { \
    return answer(#name, std::make_tuple arguments);                               \
  }
NEXAPI_OPERATIONS(STUBBORN_DEFINE)
