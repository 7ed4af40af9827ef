#include "simulator/controller/commands.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace touch::simulator {

namespace {

constexpr std::uint8_t startOfHeading = 0x01;
constexpr std::uint8_t carriageReturn = 0x0D;
constexpr std::uint8_t firstPrintable = 0x20;
// Longer texts are a carriage return that got lost.
constexpr std::size_t longestText = 32;
constexpr std::size_t packetLength = 10;

struct FramedCommand {
  std::string_view text;
  Action action = Action::nothing;
  std::uint8_t operand = 0;
  std::size_t digits = 0;  ///< hexadecimal digits that follow
};

template <typename E>
constexpr std::uint8_t operand(E value) {
  return static_cast<std::uint8_t>(value);
}

constexpr std::array framedCommands{
    FramedCommand{"CR", Action::calibrateRaw},
    FramedCommand{"CX", Action::calibrateExtended},
    FramedCommand{"FD", Action::setFormat, operand(ReportFormat::decimal)},
    FramedCommand{"FH", Action::setFormat, operand(ReportFormat::hexadecimal)},
    FramedCommand{"FO", Action::setPointer, operand(Pointer::finger)},
    FramedCommand{"FR", Action::setFormat, operand(ReportFormat::raw)},
    FramedCommand{"FT", Action::setFormat, operand(ReportFormat::tablet)},
    FramedCommand{"GP", Action::readParameter, 0, 2},
    FramedCommand{"MI", Action::setMode, operand(Mode::inactive)},
    FramedCommand{"MP", Action::setMode, operand(Mode::point)},
    FramedCommand{"MS", Action::setMode, operand(Mode::stream)},
    FramedCommand{"MT", Action::tellMode},
    FramedCommand{"OI", Action::tellIdentity},
    FramedCommand{"OS", Action::tellStatus},
    FramedCommand{"PF", Action::setPointer, operand(Pointer::penOrFinger)},
    FramedCommand{"PL", Action::lockParameters},
    FramedCommand{"PN81", Action::speakEightBits},
    FramedCommand{"PO", Action::setPointer, operand(Pointer::pen)},
    FramedCommand{"R", Action::reset},
    FramedCommand{"RD", Action::restoreParameters},
    FramedCommand{"RF", Action::restoreAll},
    FramedCommand{"SE", Action::setSensitivity, 0, 1},
    FramedCommand{"SP", Action::writeParameter, 0, 6},
    FramedCommand{"UT", Action::tellUnitType},
    FramedCommand{"UV", Action::nothing},
    FramedCommand{"Uu", Action::tellQuery},
    FramedCommand{"Uu23456", Action::tellQuery},
    FramedCommand{"Z", Action::nothing},
    FramedCommand{"iC", Action::calibrateRaw},
    FramedCommand{"iD", Action::restoreParameters},
    FramedCommand{"iE", Action::setSensitivity, 0, 1},
    FramedCommand{"iF", Action::restoreAll},
    FramedCommand{"iG", Action::readParameter, 0, 2},
    FramedCommand{"iI", Action::setMode, operand(Mode::inactive)},
    FramedCommand{"iL", Action::lockParameters},
    FramedCommand{"iO", Action::tellIdentity},
    FramedCommand{"iP", Action::setMode, operand(Mode::point)},
    FramedCommand{"iR", Action::reset},
    FramedCommand{"iS", Action::setMode, operand(Mode::stream)},
    FramedCommand{"iT", Action::setFormat, operand(ReportFormat::tablet)},
    FramedCommand{"iU", Action::tellUnitType},
    FramedCommand{"iW", Action::writeParameter, 0, 6},
};

struct PacketCommand {
  char letter = '\0';
  char setting = '\0';  ///< the character after the letter, or anyCharacter
  Action action = Action::nothing;
  std::uint8_t operand = 0;
};

constexpr char anyCharacter = '\0';

// The packets of operating modes count stream mode as 1 and inactive as 2.
constexpr std::array packetCommands{
    PacketCommand{'a', anyCharacter, Action::nothing},
    PacketCommand{'b', anyCharacter, Action::setFormat, operand(ReportFormat::packet)},
    PacketCommand{'d', anyCharacter, Action::nothing},
    PacketCommand{'i', anyCharacter, Action::tellIdentity},
    PacketCommand{'o', anyCharacter, Action::tellOwner},
    PacketCommand{'R', anyCharacter, Action::reset},
    PacketCommand{'L', '0', Action::nothing},
    PacketCommand{'L', '1', Action::nothing},
    PacketCommand{'M', '1', Action::setMode, operand(Mode::stream)},
    PacketCommand{'M', '2', Action::setMode, operand(Mode::inactive)},
};

constexpr std::uint8_t highestSensitivity = 4;

bool isHexadecimal(char character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F') ||
         (character >= 'a' && character <= 'f');
}

std::optional<Command> parseFramed(std::string_view text) {
  const auto* const found = std::ranges::find_if(framedCommands, [&](const FramedCommand& known) {
    return text.size() == known.text.size() + known.digits && text.starts_with(known.text);
  });
  if (found == framedCommands.end()) return std::nullopt;
  const auto digits = text.substr(found->text.size());
  if (!std::ranges::all_of(digits, isHexadecimal)) return std::nullopt;
  Command command{found->action, found->operand, std::string(digits)};
  if (command.action == Action::setSensitivity) {
    if (digits.front() < '0' || digits.front() > '0' + highestSensitivity) return std::nullopt;
    command.operand = static_cast<std::uint8_t>(digits.front() - '0');
  }
  return command;
}

std::optional<Command> parsePacket(std::string_view text) {
  const auto* const found = std::ranges::find_if(packetCommands, [&](const PacketCommand& known) {
    return text[1] == known.letter && (known.setting == anyCharacter || known.setting == text[2]);
  });
  if (found == packetCommands.end()) return std::nullopt;
  return Command{found->action, found->operand, {}};
}

}  // namespace

std::optional<Command> parseCommand(const Packet& packet) {
  if (packet.family == Family::framed) return parseFramed(packet.text);
  if (packet.text.size() != packetLength) return std::nullopt;
  return parsePacket(packet.text);
}

bool isPacketLetter(char letter) {
  return std::ranges::find(packetCommands, letter, &PacketCommand::letter) != packetCommands.end();
}

std::optional<Packet> PacketReader::take(std::uint8_t byte) {
  const char character = static_cast<char>(byte);
  if (byte == startOfHeading) {
    inside_ = Inside::frame;
    text_.clear();
    return std::nullopt;
  }
  if (inside_ == Inside::frame) {
    if (byte == carriageReturn) {
      inside_ = Inside::nothing;
      return Packet{Family::framed, std::exchange(text_, {})};
    }
    text_ += character;
    if (text_.size() > longestText) inside_ = Inside::nothing;
    return std::nullopt;
  }
  const bool goesOn = inside_ == Inside::tenCharacters && byte >= firstPrintable &&
                      (text_.size() > 1 || isPacketLetter(character));
  if (!goesOn) {
    inside_ = character == 'U' ? Inside::tenCharacters : Inside::nothing;
    text_.assign(1, 'U');
    return std::nullopt;
  }
  text_ += character;
  if (text_.size() < packetLength) return std::nullopt;
  inside_ = Inside::nothing;
  if (character != 'S') return std::nullopt;
  return Packet{Family::tenCharacters, std::exchange(text_, {})};
}

}  // namespace touch::simulator
