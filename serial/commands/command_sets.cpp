#include "serial/commands/command_sets.h"

#include <algorithm>

namespace touch {

namespace {

constexpr std::array<std::string_view, 27> m01Entries = {
    "CR=Calibrate Raw[a]",
    "CX=Calibrate Extended[b]",
    "FD=Format Decimal[c]",
    "FH=Format Hexadecimal[d]",
    "FO=Finger Only[e]",
    "FR=Format Raw[f]",
    "FT=Format Tablet[g]",
    "GP=Get Parameter Block[h]",
    "MI=Mode Inactive[i]",
    "MP=Mode Point[j]",
    "MS=Mode Stream[k]",
    "MT=Mode Status[l]",
    "OI=Ouput Identity[m]",
    "OS=Output Status[n]",
    "PF=Pen or Finger[o]",
    "PL=Parameter Lock[p]",
    "PO=Pen Only[q]",
    "R=Reset[r]",
    "RD=Restore Default(Controller)[s]",
    "RF=Restore Default(Factory)[t]",
    "SE=Sensitivity Set[u]",
    "SP=Set Parameter Block[v]",
    "UT=Unit Type[w]",
    "UV=Unit Type Verify[x]",
    "Uu=Query Format[y]",
    "Z=Null Command[z]",
    lineChangeEntry,
};

constexpr std::array<std::string_view, 15> quorvaneEntries = {
    "iC=Calibrate Raw[a]",
    "iT=Format Tablet[b]",
    "iG=Get Parameter Block[c]",
    "iI=Mode Inactive[d]",
    "iP=Mode Point[e]",
    "iS=Mode Stream[f]",
    "iO=Ouput Identity[g]",
    "iL=Parameter Lock[h]",
    "iR=Reset[i]",
    "iD=Restore Default(Controller)[j]",
    "iF=Restore Default(Factory)[k]",
    "iE=Sensitivity Set[l]",
    "iW=Set Parameter Block[m]",
    "iU=Unit Type[n]",
    "Uu=Query Format[o]",
};

constexpr std::array<std::string_view, 8> e02Entries = {
    "a==Acknowledge[a]", "b==Report[b]", "d==Diagnostics[c]", "i==ID[d]",
    "o==Owner[e]",       "R==Reset[g]",  "L==Low power[h]",   "M==Mode[i]",
};

constexpr std::size_t queryPosition = 6;
constexpr std::size_t firstSettingPosition = 7;
constexpr std::string_view filler = "2345678S";

struct SettingPackets {
  SettingList list;
  std::array<std::string_view, 2> packets;  ///< one for each item
};

constexpr std::array<SettingPackets, 2> settingPackets = {{
    {{"Power Saving Mode", {"0 - Keep Power On", "1 - Power Saving Mode"}},
     {"UL0345678S", "UL1345678S"}},
    {{"Operating Mode", {"1 - Stream Mode", "2 - Untouch Mide"}}, {"UM1345678S", "UM2345678S"}},
}};

std::optional<SettingPackets> settingsAt(std::size_t position) {
  if (position < firstSettingPosition) return std::nullopt;
  const std::size_t index = position - firstSettingPosition;
  if (index >= settingPackets.size()) return std::nullopt;
  return settingPackets[index];
}

template <std::size_t count>
bool isOneOf(std::string_view command, const std::array<std::string_view, count>& commands) {
  return std::ranges::find(commands, command) != commands.end();
}

}  // namespace

std::span<const std::string_view> cm1set(CommandSet set) {
  switch (set) {
    case CommandSet::m01:
      return m01Entries;
    case CommandSet::e02:
      return e02Entries;
    case CommandSet::quorvane:
      break;
  }
  return quorvaneEntries;
}

std::string_view commandWord(std::string_view entry) {
  return entry.substr(0, entry.find('='));
}

std::optional<std::string> framedCommand(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < 3 || bytes.front() != 0x01 || bytes.back() != 0x0D) return std::nullopt;
  return std::string(bytes.begin() + 1, bytes.end() - 1);
}

bool readsParameter(std::string_view command) {
  return isOneOf<2>(command, {"GP", "iG"});
}

bool writesParameter(std::string_view command) {
  return isOneOf<2>(command, {"SP", "iW"});
}

bool needsDigit(std::string_view command) {
  return isOneOf<2>(command, {"SE", "iE"});
}

bool resetsController(std::string_view command) {
  return isOneOf<6>(command, {"R", "RD", "RF", "iR", "iD", "iF"});
}

bool changesReplyFormat(std::string_view command) {
  return isOneOf<5>(command, {"R", "iR", "CR", "FR", "iC"});
}

CommandPanels panelsFor(CommandSet set, std::string_view entry) {
  if (set == CommandSet::e02) return {};
  const std::string_view command = commandWord(entry);
  const bool writes = writesParameter(command);
  return {.address = writes || readsParameter(command), .data = writes};
}

std::optional<SettingList> settingListAt(std::size_t position) {
  const auto settings = settingsAt(position);
  if (!settings) return std::nullopt;
  return settings->list;
}

std::string e02Packet(std::size_t position, std::optional<std::size_t> setting) {
  if (position < queryPosition) {
    return std::string("U").append(e02Entries[position].substr(0, 1)).append(filler);
  }
  if (position == queryPosition) return std::string(queryPacket);
  const auto settings = settingsAt(position);
  if (!settings || !setting || *setting >= settings->packets.size()) return {};
  return std::string(settings->packets[*setting]);
}

}  // namespace touch
