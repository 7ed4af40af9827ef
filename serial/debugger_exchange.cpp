#include "serial/debugger_exchange.h"

#include <algorithm>
#include <utility>

#include "core/clock.h"
#include "core/frame.h"
#include "core/hex.h"
#include "core/language.h"
#include "core/prompt.h"
#include "core/text_encoding.h"
#include "serial/command_sets.h"
#include "serial/parameter_entry.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto framedWait = 100ms;
constexpr auto e02Wait = 300ms;
constexpr auto e02RepeatWait = 200ms;
constexpr auto e02LastWait = 100ms;

constexpr std::size_t shortestEntry = 3;
constexpr std::size_t shortestFramedReply = 4;
constexpr std::size_t shortestE02Reply = 3;
constexpr std::size_t shortestE02Packet = 6;
constexpr std::uint8_t firstShownByte = 30;
constexpr std::uint8_t startOfHeading = 0x01;
constexpr std::uint8_t carriageReturn = 0x0D;

bool isFramedReply(std::span<const std::uint8_t> reply) {
  return reply.size() >= shortestFramedReply && reply.front() == startOfHeading &&
         reply.back() == carriageReturn;
}

bool beginsAsE02Reply(std::span<const std::uint8_t> reply) {
  return reply.size() >= 2 && reply[0] == 'U' && reply[1] == 'I';
}

std::string withoutOuterBlanks(const std::string& text) {
  const auto begin = text.find_first_not_of(' ');
  if (begin == text.npos) return {};
  return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

}  // namespace

DebuggerReply shownReply(std::vector<std::uint8_t> bytes) {
  DebuggerReply reply;
  std::string characters;
  for (const std::uint8_t byte : bytes) {
    if (byte >= firstShownByte) characters += static_cast<char>(byte);
    reply.hex.append(hexByte(byte)).append(1, ' ');
  }
  reply.text = utf8FromLatin1(withoutOuterBlanks(characters));
  reply.bytes = std::move(bytes);
  return reply;
}

std::optional<DebuggerReply> DebuggerExchange::send(const SendChoice& choice) {
  if (port_.isBusy() || choice.entry.size() < shortestEntry) return std::nullopt;
  const DebuggerPort::Use use(port_);
  if (access_.session.commandSet == CommandSet::e02) return elocmd(choice);
  if (choice.entry == lineChangeEntry) {
    changeLineSettings();
    return std::nullopt;
  }
  const std::string_view command = commandWord(choice.entry);
  const Bytes bytes = framed(command, choice);
  if (bytes.empty() || !portIsOpen()) return std::nullopt;
  if (changesReplyFormat(command)) replyFormat_ = false;
  clearPort();
  Bytes reply = ask(bytes, framedWait);
  if (!isFramedReply(reply)) reply = ask(bytes, framedWait);
  return display(std::move(reply));
}

std::optional<DebuggerReply> DebuggerExchange::elocmd(const SendChoice& choice) {
  const auto entries = cm1set(CommandSet::e02);
  const auto entry = std::ranges::find(entries, std::string_view(choice.entry));
  if (entry == entries.end()) return std::nullopt;
  const auto position = static_cast<std::size_t>(entry - entries.begin());
  if (settingListAt(position) && !choice.setting) {
    prompt_.message("Select Setting Mode First!!");
    return std::nullopt;
  }
  const std::string packet = e02Packet(position, choice.setting);
  if (packet.size() < shortestE02Packet || !portIsOpen()) return std::nullopt;
  const Bytes bytes(packet.begin(), packet.end());
  clearPort();
  Bytes reply = ask(bytes, e02Wait);
  if (reply.size() < shortestE02Reply) reply = ask(bytes, e02RepeatWait);
  if (!beginsAsE02Reply(reply)) reply = ask(bytes, e02LastWait);
  return display(std::move(reply));
}

void DebuggerExchange::changeLineSettings() {
  if (!portIsOpen() || !prompt_.proceed(lineChangeText)) return;
  log_.note(lineChangeText);
  port_.N72toN81();
}

std::vector<std::uint8_t> DebuggerExchange::framed(std::string_view command,
                                                   const SendChoice& choice) {
  if (command == "Uu") return {queryPacket.begin(), queryPacket.end()};
  Frame frame = commandFrame(command);
  if (readsParameter(command)) frame = parameterReadFrame(choice.address);
  if (writesParameter(command)) {
    const DataBytes data = checkedDataBytes(choice.high, choice.low);
    if (!data.error.empty()) {
      prompt_.message(data.error);
      return {};
    }
    frame = parameterWriteFrame(choice.address, data.high, data.low);
  }
  access_.session.outputFrame = frame;
  return {frame.bytes().begin(), frame.bytes().end()};
}

bool DebuggerExchange::portIsOpen() {
  if (port_.serial().isOpen()) return true;
  if (!port_.tellLoss()) prompt_.message(say("serial", "The serial port is closed."));
  return false;
}

void DebuggerExchange::clearPort() {
  port_.serial().clearOutput();
  port_.serial().clearInput();
}

std::vector<std::uint8_t> DebuggerExchange::ask(std::span<const std::uint8_t> bytes,
                                                std::chrono::milliseconds wait) {
  SerialPort& serial = port_.serial();
  serial.write(bytes);
  // A device that has gone answers nothing, however long one waits.
  if (!serial.isOpen()) return {};
  log_.sent(bytes);
  access_.clock.delay(wait);
  Bytes reply = serial.readAll();
  log_.received(reply);
  return reply;
}

std::optional<DebuggerReply> DebuggerExchange::display(Bytes bytes) {
  auto reply = shownReply(std::move(bytes));
  const bool gone = port_.tellLoss();
  if (!reply.text.empty()) return reply;
  if (!gone) prompt_.message("No Return Data ???", "Result -----");
  return std::nullopt;
}

}  // namespace touch
