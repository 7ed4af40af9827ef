#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace touch {

enum class ConsoleLineKind : std::uint8_t { sent, received, report, note };

/// A line of the debugger's console: up to 16 bytes that passed the port, a touch report, or a text
/// of the debugger's own.
struct ConsoleLine {
  ConsoleLineKind kind = ConsoleLineKind::note;
  std::chrono::microseconds time{};  ///< since the console was opened
  std::vector<std::uint8_t> bytes;   ///< empty for a note
  std::string text;                  ///< of a note or a report
  bool sevenBits = false;            ///< the line cut the eighth bit off each byte
  friend bool operator==(const ConsoleLine&, const ConsoleLine&) = default;
};

}  // namespace touch
