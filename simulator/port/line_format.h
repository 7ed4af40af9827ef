#pragma once

#include <bit>
#include <cstdint>
#include <optional>

namespace touch::simulator {

/// How a byte is written on the line: a start bit, data bits from the lowest on, a parity bit
/// unless there is none, stop bits.
struct LineFormat {
  enum class Parity : std::uint8_t { none, even, odd };
  int dataBits = 8;  ///< 5 to 8
  Parity parity = Parity::none;
  int stopBits = 1;  ///< 1 or 2
  friend bool operator==(const LineFormat&, const LineFormat&) = default;

  static const LineFormat eightN1;
  static const LineFormat sevenN2;
};
inline constexpr LineFormat LineFormat::eightN1{};
inline constexpr LineFormat LineFormat::sevenN2{7, Parity::none, 2};

/// How many bits a byte takes.
constexpr int bitsPerByte(const LineFormat& format) {
  return 1 + format.dataBits + (format.parity == LineFormat::Parity::none ? 0 : 1) +
         format.stopBits;
}

/// What a listener takes a byte for that was sent in `sent`; nothing when its parity is wrong or
/// when there is no stop bit where the listener expects the first one. The line rests behind it.
constexpr std::optional<std::uint8_t> heard(std::uint8_t byte, const LineFormat& sent,
                                            const LineFormat& listener) {
  const auto dataOf = [](unsigned bits, const LineFormat& format) {
    return bits & ((1U << static_cast<unsigned>(format.dataBits)) - 1U);
  };
  const auto parityOf = [](unsigned data, const LineFormat& format) {
    return (static_cast<unsigned>(std::popcount(data)) & 1U) ^
           (format.parity == LineFormat::Parity::odd ? 1U : 0U);
  };
  // The bits behind the start bit, in their order from the lowest on. Stop bits and rest are ones.
  unsigned line = ~0U << static_cast<unsigned>(sent.dataBits) | dataOf(byte, sent);
  if (sent.parity != LineFormat::Parity::none && parityOf(dataOf(byte, sent), sent) == 0)
    line &= ~(1U << static_cast<unsigned>(sent.dataBits));

  const unsigned data = dataOf(line, listener);
  line >>= static_cast<unsigned>(listener.dataBits);
  if (listener.parity != LineFormat::Parity::none) {
    if ((line & 1U) != parityOf(data, listener)) return std::nullopt;
    line >>= 1U;
  }
  if ((line & 1U) == 0) return std::nullopt;
  return static_cast<std::uint8_t>(data);
}

}  // namespace touch::simulator
