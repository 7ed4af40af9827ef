#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "console/parameters/parameter_block.h"

namespace touch {

/// How many wires the touch sensor has.
enum class SensorType : std::uint8_t { fourWire = 4, fiveWire = 5 };

/// What a wire is attached to: an analogue channel and an I/O bit, each from 0 to 7 when it is in
/// order.
struct PinAssignment {
  int channel = 0;
  int bit = 0;
  friend bool operator==(const PinAssignment&, const PinAssignment&) = default;
};

/// The sensor's wires, in the order of wireNames(). In the controller the word at address 80 holds
/// the wire count, 81 and following a wire each: channel in the high byte, bit in the low byte.
struct PinDefinition {
  SensorType type = SensorType::fourWire;
  std::vector<PinAssignment> wires;
  friend bool operator==(const PinDefinition&, const PinDefinition&) = default;
};

/// The wires' names: X+, X−, Y+, Y−, or the corners UL, UR, LL, LR and the sheet S.
std::span<const std::string_view> wireNames(SensorType type);

/// Something that keeps a definition from being written.
struct PinProblem {
  std::size_t wire = 0;                   ///< where it shows
  std::optional<std::size_t> sharesWith;  ///< the other wire, when both use the same channel or bit
  std::string text;
};

/// Everything that is wrong with `definition`: as many wires as its type has, numbers from 0 to 7
/// (message 3 for 128 and above), no channel and no bit used twice.
std::vector<PinProblem> checkPins(const MessageTable& messages, const PinDefinition& definition);

/// Why there is no definition to show.
struct PinsUnread {
  std::string reason;
  /// The wire count could be read, and is neither 4 nor 5: nobody has defined this controller's
  /// pins.
  bool undefined = false;
};

/// The definition that the controller holds, in order or not. Message 26 when the wire count cannot
/// be read, or is neither 4 nor 5; otherwise the text says which wire cannot be read.
Result<PinDefinition, PinsUnread> readPins(const Access& access);

/// How an update of the pin definition ended.
enum class PinsEnd { done, invalid, declined, typeUnreadable, brokenOff };

struct PinsWrite {
  PinsEnd end = PinsEnd::declined;
  std::string reason;  ///< what was shown, or what lies behind message 7
  WriteReport report;  ///< oldWords() of it are the mapping before
  std::optional<WriteReport>
      putBack;  ///< after a write that broke off: the way back to the old mapping
};

/// Writes the definition: message 25 asks, 28 has the sensor disconnected, 27 tells that it is
/// done. Message 26 ends it when the sensor type cannot be read. When a word cannot be written,
/// message 7, and the old mapping is put back: half of one mapping and half of another make the
/// panel useless.
PinsWrite updatePins(const Access& access, Prompt& prompt, const Backup& backup,
                     const PinDefinition& definition);

/// Puts the mapping back that an update replaced; the same steps and messages.
PinsWrite putBackPins(const Access& access, Prompt& prompt, const Backup& backup,
                      std::span<const WordValue> old);

}  // namespace touch
