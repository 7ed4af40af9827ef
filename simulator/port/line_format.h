#pragma once

#include <cstdint>
#include <optional>

namespace touch::simulator {

/// How a byte is written on the line: data bits, no parity, stop bits. Either takes ten bits with
/// its start bit.
enum class LineFormat : std::uint8_t { eightN1, sevenN2 };

/// What a listener takes a byte for that was sent in `sent`; nothing when it finds no stop bit
/// where it expects one.
constexpr std::optional<std::uint8_t> heard(std::uint8_t byte, LineFormat sent,
                                            LineFormat listener) {
  constexpr std::uint8_t eighthBit = 0x80;
  const auto seven = static_cast<std::uint8_t>(byte & ~eighthBit);
  if (listener == LineFormat::eightN1) {
    // The first of two stop bits stands in the eighth data bit's place.
    return sent == LineFormat::eightN1 ? byte : static_cast<std::uint8_t>(seven | eighthBit);
  }
  if (sent == LineFormat::eightN1 && seven == byte) return std::nullopt;
  return seven;
}

}  // namespace touch::simulator
