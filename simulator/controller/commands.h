#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/panel/reports.h"

namespace touch::simulator {

/// What a command makes a controller do.
enum class Action : std::uint8_t {
  nothing,  ///< acknowledged, without any effect
  calibrateRaw,
  calibrateExtended,
  setFormat,
  setMode,
  setPointer,
  setSensitivity,
  readParameter,
  writeParameter,
  lockParameters,
  restoreParameters,
  restoreAll,
  reset,
  speakEightBits,
  tellMode,
  tellIdentity,
  tellStatus,
  tellUnitType,
  tellQuery,
  tellOwner,
};

enum class Mode : std::uint8_t { stream, point, inactive };

/// What may touch the panel.
enum class Pointer : std::uint8_t { penOrFinger, finger, pen };

/// The families in which commands come: 0x01, text, 0x0D, or ten characters that begin with "U" and
/// end with "S".
enum class Family : std::uint8_t { framed, tenCharacters };

/// A command as it came over the line, without start byte and carriage return.
struct Packet {
  Family family = Family::framed;
  std::string text;
};

/// A command that was understood.
struct Command {
  Action action = Action::nothing;
  std::uint8_t operand = 0;  ///< the Mode, ReportFormat or Pointer to set, or the digit that came
  std::string argument;      ///< the characters after the command's own: hexadecimal digits
};

/// Nothing for a command that no set knows or whose argument is missing or malformed.
std::optional<Command> parseCommand(const Packet& packet);

/// Whether a ten-character packet can have `letter` after its "U".
bool isPacketLetter(char letter);

/// Puts packets together from single bytes; what is between packets is skipped.
class PacketReader {
 public:
  /// The packet that `byte` completes, if any.
  std::optional<Packet> take(std::uint8_t byte);

 private:
  enum class Inside : std::uint8_t { nothing, frame, tenCharacters };
  Inside inside_ = Inside::nothing;
  std::string text_;
};

}  // namespace touch::simulator
