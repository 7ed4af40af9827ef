#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"

namespace touch {

/// The debugger's command list for `set`, in its order. An entry is the command, "=", what it does,
/// and a letter in brackets; "N72toN81" alone is no command but changes the line's settings.
std::span<const std::string_view> cm1set(CommandSet set);

/// The entry that converts a controller to 8 data bits, and what the user is asked before.
inline constexpr std::string_view lineChangeEntry = "N72toN81";
inline constexpr std::string_view lineChangeText =
    "Comport setting from 9600,N,7,2 Change to 9600,N,8,1 ";

/// What an entry of the M01 or the quorvane set sends between 0x01 and 0x0D.
std::string_view commandWord(std::string_view entry);

/// What stands in `bytes` between 0x01 and 0x0D; nothing when they are no frame.
std::optional<std::string> framedCommand(std::span<const std::uint8_t> bytes);

/// The commands that read or write a parameter word, in either set.
bool readsParameter(std::string_view command);
bool writesParameter(std::string_view command);
/// The command means nothing without a digit behind it, 0 to `greatestDigit`.
bool needsDigit(std::string_view command);
inline constexpr int greatestDigit = 4;
/// After these what was set in the controller may be lost, in any set.
bool resetsController(std::string_view command);
/// After these the controller may report touches in another format than before.
bool changesReplyFormat(std::string_view command);

/// Which panels the debugger shows for a chosen entry.
struct CommandPanels {
  bool address = false;  ///< the address selector
  bool data = false;     ///< the two data boxes
  friend bool operator==(const CommandPanels&, const CommandPanels&) = default;
};
CommandPanels panelsFor(CommandSet set, std::string_view entry);

/// A choice that belongs to an entry of the E02 set.
struct SettingList {
  std::string_view caption;
  std::array<std::string_view, 2> items;
};
/// The setting list of the E02 entry at `position`, counted from 0; nothing when it has none.
std::optional<SettingList> settingListAt(std::size_t position);

/// The query "Uu" as every set sends it: a frame, padded to the ten bytes of an E02 packet.
inline constexpr std::string_view queryPacket =
    "\x01"
    "Uu23456\rS";

/// The packet of the E02 entry at `position`: the position decides, not the entry's letter.
/// `setting` is the chosen item of its setting list, counted from 0. Empty when an item is missing
/// or there is no such position; nothing is to be sent then.
std::string e02Packet(std::size_t position, std::optional<std::size_t> setting);

}  // namespace touch
