#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

namespace touch {

/// The number that the whole of `text` is in hexadecimal, in capitals or not; nothing when it is
/// none or takes more than 32 bits.
inline std::optional<std::uint32_t> h2d(std::string_view text) {
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, 16);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace touch
