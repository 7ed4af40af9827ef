#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/session.h"

namespace touch {

/// What a controller answered to a command, as it came: possibly nothing, possibly garbage.
struct Reply {
  std::vector<std::uint8_t> bytes;

  std::size_t size() const { return bytes.size(); }
  /// A start byte 0x01 in front and a carriage return behind.
  bool isFramed() const { return size() >= 2 && bytes.front() == 0x01 && bytes.back() == 0x0D; }
  /// The second byte is "0". The first is the reply's own start byte and says nothing.
  bool acknowledged() const { return bytes.size() >= 2 && bytes[1] == '0'; }
  /// The printable characters (0x20 and above) between the first and the last byte; empty for 3
  /// bytes or fewer.
  std::string text() const;
  /// The word that a "GP" is answered with: 7 bytes, 0x01, "0", four hexadecimal digits (high byte
  /// first), 0x0D.
  std::optional<ParameterWord> word() const;
};

}  // namespace touch
