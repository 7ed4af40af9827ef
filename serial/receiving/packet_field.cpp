#include "serial/receiving/packet_field.h"

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

}  // namespace

std::string fieldText(const ReportDecoder& decoder, std::uint8_t first, std::size_t place,
                      std::size_t length) {
  return filled(partText(decoder.partAt(first, place)),
                {std::to_string(place + 1), std::to_string(length)});
}

std::string byteText(const ReportDecoder& decoder, const ConsoleLine& line, std::size_t place) {
  if (line.kind == ConsoleLineKind::report)
    return fieldText(decoder, line.bytes.front(), place, line.bytes.size()) + ' ' + line.text;
  return filled(say("debugger", "Byte %1 of %2: decimal %3."),
                {std::to_string(place + 1), std::to_string(line.bytes.size()),
                 std::to_string(line.bytes[place])});
}

}  // namespace touch
