#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace touch {

/// The decimal number that is the whole of `text`, or nothing when it is none or not within `least`
/// to `most`.
inline std::optional<int> parseDecimal(std::string_view text, int least, int most) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < least || number > most) return std::nullopt;
  return number;
}

}  // namespace touch
