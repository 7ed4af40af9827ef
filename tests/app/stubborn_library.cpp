#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <tuple>

#include "core/driver_operations.h"

// A touch driver that takes every setting and keeps none. "USB DEVICE 1" can be opened but does not
// answer; "USB DEVICE 2" cannot be opened. With HOSTILE_TEXT that is what the first
// is called after, and what it answers.

namespace {

const char* hostileText() {
  return std::getenv("HOSTILE_TEXT");
}

const std::array<std::string, 2>& names() {
  static const std::array<std::string, 2> all = {
      hostileText() != nullptr ? std::string("USB DEVICE ") + hostileText() : "USB DEVICE 1",
      "USB DEVICE 2"};
  return all;
}

template <typename... Arguments>
std::int32_t answer(std::string_view, const std::tuple<Arguments...>&) {
  return 0;
}

std::int32_t answer(std::string_view operation, const std::tuple<>&) {
  return operation == "GetExistControllers" ? static_cast<std::int32_t>(names().size()) : 0;
}

std::int32_t answer(std::string_view, const std::tuple<const char*>& open) {
  return std::get<0>(open) == names()[0] ? 2 : 0;
}

std::int32_t answer(std::string_view, const std::tuple<std::int32_t, char*, std::int32_t>& name) {
  const auto [number, buffer, size] = name;
  const std::string& text = names().at(static_cast<std::size_t>(number) - 1);
  return std::snprintf(buffer, static_cast<std::size_t>(size), "%s", text.c_str());
}

std::int32_t answer(std::string_view operation,
                    const std::tuple<std::int32_t, std::uint8_t*, std::int32_t>& read) {
  if (operation != "ReadBuffer" || hostileText() == nullptr) return 0;
  const std::string reply = '\x01' + std::string(hostileText()) + '\r';
  const auto [handle, buffer, size] = read;
  const auto count = std::min(reply.size(), static_cast<std::size_t>(size));
  std::copy_n(reply.begin(), count, buffer);
  return static_cast<std::int32_t>(count);
}

}  // namespace

#define STUBBORN_DEFINE(name, parameters, arguments)                               \
  extern "C" __attribute__((visibility("default"))) std::int32_t name parameters { \
    return answer(#name, std::make_tuple arguments);                               \
  }
NEXAPI_OPERATIONS(STUBBORN_DEFINE)
