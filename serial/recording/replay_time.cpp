#include "serial/recording/replay_time.h"

#include <charconv>
#include <cstdint>

namespace touch {

namespace {

// More digits than any recording needs, and far from where the arithmetic would run over.
constexpr std::size_t mostDigits = 6;
constexpr std::int64_t microsecondsPerSecond = 1'000'000;
constexpr std::int64_t sixty = 60;

/// At most six digits, at least one.
std::optional<std::int64_t> digits(std::string_view text) {
  std::int64_t value = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isNumber = !text.empty() && text.size() <= mostDigits && text.front() != '-' &&
                        error == std::errc() && stop == text.data() + text.size();
  return isNumber ? std::optional(value) : std::nullopt;
}

/// Of a second, behind the point.
std::optional<std::int64_t> microseconds(std::string_view text) {
  auto value = digits(text);
  if (!value) return std::nullopt;
  for (std::size_t i = text.size(); i < mostDigits; ++i)
    *value *= 10;
  return value;
}

}  // namespace

std::optional<std::chrono::microseconds> parseReplayTime(std::string_view text) {
  const auto begin = text.find_first_not_of(' ');
  if (begin == text.npos) return std::nullopt;
  text = text.substr(begin, text.find_last_not_of(' ') + 1 - begin);

  std::int64_t fraction = 0;
  if (const auto point = text.find_first_of(".,"); point != text.npos) {
    const auto read = microseconds(text.substr(point + 1));
    if (!read) return std::nullopt;
    fraction = *read;
    text = text.substr(0, point);
  }
  constexpr int mostParts = 3;
  std::int64_t seconds = 0;
  for (int part = 0; part < mostParts; ++part) {
    const auto colon = text.find(':');
    const auto value = digits(text.substr(0, colon));
    if (!value || (part > 0 && *value >= sixty)) return std::nullopt;
    seconds = seconds * sixty + *value;
    if (colon == text.npos)
      return std::chrono::microseconds(seconds * microsecondsPerSecond + fraction);
    text.remove_prefix(colon + 1);
  }
  return std::nullopt;
}

}  // namespace touch
