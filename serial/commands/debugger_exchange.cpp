#include "serial/commands/debugger_exchange.h"

#include <algorithm>
#include <utility>

#include "core/exchange/frame.h"
#include "serial/commands/command_sets.h"
#include "serial/commands/parameter_entry.h"
#include "support/clock.h"
#include "support/prompt.h"
#include "support/text/hex.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

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

bool isFramedReply(const Reply& reply) {
  return reply.size() >= shortestFramedReply && reply.isFramed();
}

bool beginsAsE02Reply(const Reply& reply) {
  return reply.size() >= 2 && reply.bytes[0] == 'U' && reply.bytes[1] == 'I';
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
  if (choice.entry.size() < shortestEntry) return std::nullopt;
  std::optional<DebuggerReply> reply;
  port_.gate().run([&] { reply = converse(choice); });
  return reply;
}

std::optional<DebuggerReply> DebuggerExchange::sendBytes(std::span<const std::uint8_t> bytes) {
  std::optional<Reply> reply;
  port_.gate().run([&] {
    if (!portIsOpen()) return;
    const auto command = framedCommand(bytes);
    if (command && changesReplyFormat(*command)) replyFormat_ = false;
    clearPort();
    reply = ask(bytes, access_.session.commandSet == CommandSet::e02 ? e02Wait : framedWait);
    port_.tellLoss();
  });
  if (!reply) return std::nullopt;
  return shownReply(std::move(reply->bytes));
}

std::optional<DebuggerReply> DebuggerExchange::converse(const SendChoice& choice) {
  if (access_.session.commandSet == CommandSet::e02) return elocmd(choice);
  if (choice.entry == lineChangeEntry) {
    changeLineSettings();
    return std::nullopt;
  }
  const std::string_view command = commandWord(choice.entry);
  const Frame frame = framed(command, choice);
  if (frame.empty() || !portIsOpen()) return std::nullopt;
  if (changesReplyFormat(command)) replyFormat_ = false;
  begin(frame);
  auto reply = ask(frame.bytes(), framedWait);
  if (reply && !isFramedReply(*reply)) reply = ask(frame.bytes(), framedWait);
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
  const Frame frame = unframed(packet);
  begin(frame);
  auto reply = ask(frame.bytes(), e02Wait);
  if (reply && reply->size() < shortestE02Reply) reply = ask(frame.bytes(), e02RepeatWait);
  // The last attempt is whatever stands in the shared output frame buffer.
  if (reply && !beginsAsE02Reply(*reply))
    reply = ask(access_.session.outputFrame.bytes(), e02LastWait);
  return display(std::move(reply));
}

void DebuggerExchange::changeLineSettings() {
  if (!portIsOpen() || !prompt_.proceed(lineChangeText)) return;
  log_.note(lineChangeText);
  port_.N72toN81();
}

Frame DebuggerExchange::framed(std::string_view command, const SendChoice& choice) {
  if (command == "Uu") return unframed(queryPacket);
  if (readsParameter(command)) return parameterReadFrame(choice.address);
  if (!writesParameter(command)) return commandFrame(std::string(command) + choice.digit);
  const auto data = checkedDataBytes(choice.high, choice.low);
  if (data) return parameterWriteFrame(choice.address, data->high, data->low);
  prompt_.message(data.error());
  return {};
}

bool DebuggerExchange::portIsOpen() {
  if (port_.serial().isOpen()) return true;
  if (!port_.tellLoss()) prompt_.message(say("commands", "The serial port is closed."));
  return false;
}

void DebuggerExchange::begin(const Frame& frame) {
  access_.session.outputFrame = frame;
  clearPort();
}

void DebuggerExchange::clearPort() {
  port_.serial().clearOutput();
  port_.serial().clearInput();
}

std::optional<Reply> DebuggerExchange::ask(std::span<const std::uint8_t> bytes,
                                           std::chrono::milliseconds wait) {
  if (port_.send(bytes)) {
    access_.clock.delay(wait);
    return Reply{port_.receive()};
  }
  // A device that has gone answers nothing, however long one waits.
  if (!port_.tellLoss()) port_.tellNotSent();
  return std::nullopt;
}

std::optional<DebuggerReply> DebuggerExchange::display(std::optional<Reply> reply) {
  if (!reply) return std::nullopt;
  auto shown = shownReply(std::move(reply->bytes));
  const bool gone = port_.tellLoss();
  if (!shown.text.empty()) return shown;
  if (!gone) prompt_.message("No Return Data ???", "Result -----");
  return std::nullopt;
}

}  // namespace touch
