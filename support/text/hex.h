#pragma once

#include <cstdint>
#include <string>

namespace touch {

/// `value` as two hexadecimal digits in capitals, as the controller reads them.
inline std::string hexByte(std::uint8_t value) {
  constexpr const char* digits = "0123456789ABCDEF";
  return {digits[value >> 4], digits[value & 0x0F]};
}

}  // namespace touch
