#include "serial/receiving/packet_field.h"

#include <algorithm>
#include <optional>
#include <span>
#include <vector>

#include "serial/receiving/receive_display.h"
#include "support/text/language.h"

namespace touch {

namespace {

std::string partText(ReportDecoder::Part part) {
  using Part = ReportDecoder::Part;
  switch (part) {
    case Part::state:
      return say("rawdrawing", "Byte %1 of %2: touched or lifted.");
    case Part::xLow:
      return say("rawdrawing", "Byte %1 of %2: X, low bits.");
    case Part::xHigh:
      return say("rawdrawing", "Byte %1 of %2: X, high bits.");
    case Part::yLow:
      return say("rawdrawing", "Byte %1 of %2: Y, low bits.");
    case Part::yHigh:
      return say("rawdrawing", "Byte %1 of %2: Y, high bits.");
    case Part::other:
      break;
  }
  return say("rawdrawing", "Byte %1 of %2.");
}

constexpr std::uint8_t frameBegin = 0x01;
constexpr std::uint8_t frameEnd = 0x0D;

/// Bytes that passed the port in one direction, one behind the other, and one of them.
struct Passed {
  ConsoleLineKind kind{};
  std::vector<std::uint8_t> bytes;
  std::size_t place = 0;
};

/// The packet that has the byte, in words; nothing: it is of none.
std::optional<std::string> reportText(ReportDecoder decoder, const Passed& passed) {
  if (passed.kind != ConsoleLineKind::received) return std::nullopt;
  decoder.reset();
  const std::uint64_t begin = decoder.received();
  std::vector<TouchReport> reports;
  decoder.feed(passed.bytes, reports);
  for (const TouchReport& report : reports) {
    const auto offset = static_cast<std::size_t>(report.offset - begin);
    if (passed.place < offset || passed.place >= offset + report.length) continue;
    return fieldText(decoder, passed.bytes[offset], passed.place - offset, report.length) + ' ' +
           m01m(report, true);
  }
  return std::nullopt;
}

/// The message from 01 to 0D that has the byte, in words; nothing: it is of none.
std::optional<std::string> messageText(const Passed& passed) {
  const std::span bytes(passed.bytes);
  std::size_t begin = passed.place;
  while (bytes[begin] != frameBegin) {
    if (begin == 0 || bytes[begin - 1] == frameEnd) return std::nullopt;
    --begin;
  }
  const auto rest = bytes.subspan(passed.place);
  const auto end = std::ranges::find(rest, frameEnd);
  if (end == rest.end()) return std::nullopt;
  const std::size_t place = passed.place - begin;
  const std::size_t length = place + static_cast<std::size_t>(end - rest.begin()) + 1;
  constexpr std::size_t commandEnd = 3;
  const bool isCommand = passed.kind == ConsoleLineKind::sent && place < commandEnd;
  const std::string text = place == 0 ? say("debugger", "Byte %1 of %2: begin of message.")
                           : place + 1 == length ? say("debugger", "Byte %1 of %2: end of message.")
                           : isCommand           ? say("debugger", "Byte %1 of %2: command.")
                                                 : say("debugger", "Byte %1 of %2: data.");
  return filled(text, {std::to_string(place + 1), std::to_string(length)}) + ' ' +
         filled(say("debugger", "Decimal %1."), {std::to_string(bytes[passed.place])});
}

std::string passedText(const ReportDecoder& decoder, const Passed& passed, const ConsoleLine& line,
                       std::size_t place) {
  if (const auto text = reportText(decoder, passed)) return *text;
  if (const auto text = messageText(passed)) return *text;
  return filled(say("debugger", "Byte %1 of %2: decimal %3."),
                {std::to_string(place + 1), std::to_string(line.bytes.size()),
                 std::to_string(line.bytes[place])});
}

}  // namespace

std::string fieldText(const ReportDecoder& decoder, std::uint8_t first, std::size_t place,
                      std::size_t length) {
  return filled(partText(decoder.partAt(first, place)),
                {std::to_string(place + 1), std::to_string(length)});
}

std::string byteText(const ReportDecoder& decoder, const ConsoleLine& line, std::size_t place) {
  if (line.kind == ConsoleLineKind::report)
    return fieldText(decoder, line.bytes.front(), place, line.bytes.size()) + ' ' + line.text;
  return passedText(decoder, {line.kind, line.bytes, place}, line, place);
}

std::string byteText(const ReportDecoder& decoder, const KeptLines& kept, std::uint64_t number,
                     std::size_t place) {
  const ConsoleLine line = kept.at(number);
  if (line.kind == ConsoleLineKind::report) return byteText(decoder, line, place);
  // More lines than the longest packet has.
  constexpr std::uint64_t beside = 4;
  const auto belongs = [&](std::uint64_t other) { return kept.kindOf(other) == line.kind; };
  std::uint64_t begin = number;
  while (begin > kept.begin() && number - begin < beside && belongs(begin - 1))
    --begin;
  std::uint64_t end = number + 1;
  while (end < kept.end() && end - number <= beside && belongs(end))
    ++end;
  Passed passed{line.kind, {}, 0};
  for (; begin < end; ++begin) {
    if (begin == number) passed.place = passed.bytes.size() + place;
    const auto bytes = kept.at(begin).bytes;
    passed.bytes.insert(passed.bytes.end(), bytes.begin(), bytes.end());
  }
  return passedText(decoder, passed, line, place);
}

}  // namespace touch
