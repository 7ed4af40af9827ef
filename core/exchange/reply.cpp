#include "core/exchange/reply.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace touch {

namespace {
constexpr std::size_t wordReplySize = 7;
}

std::string Reply::text() const {
  std::string text;
  if (bytes.size() <= 3) return text;
  std::copy_if(bytes.begin() + 1, bytes.end() - 1, std::back_inserter(text),
               [](std::uint8_t byte) { return byte >= 0x20; });
  return text;
}

std::optional<ParameterWord> Reply::word() const {
  if (size() != wordReplySize || !isFramed() || !acknowledged()) return std::nullopt;
  const std::string digits(bytes.begin() + 2, bytes.end() - 1);
  unsigned value = 0;
  const auto [end, failed] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (failed != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return ParameterWord{static_cast<std::uint8_t>(value >> 8),
                       static_cast<std::uint8_t>(value & 0xFF)};
}

}  // namespace touch
