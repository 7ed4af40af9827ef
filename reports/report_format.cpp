#include "reports/report_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "reports/report_decoder.h"
#include "support/files/whole_file.h"
#include "support/text/hex.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr std::size_t largestFormatFile = std::size_t{64} << 10U;
constexpr std::size_t shortestPacket = 5;
constexpr std::size_t longestPacket = 64;
constexpr std::size_t coordinateSize = 2;
constexpr std::uint8_t lowestMarkedStatus = 0x80;

struct EncodingName {
  std::string_view name;
  CoordinateEncoding encoding;
};
constexpr std::array encodingNames = {
    EncodingName{"low7", CoordinateEncoding::sevenBitLowFirst},
    EncodingName{"high7", CoordinateEncoding::sevenBitHighFirst},
    EncodingName{"le16", CoordinateEncoding::sixteenBitLittleEndian},
};

/// What is wrong within a line.
struct FormatFlaw {
  std::string expected;
  std::string found;
};

tl::unexpected<FormatFlaw> flaw(std::string expected, std::string found) {
  return tl::unexpected(FormatFlaw{std::move(expected), std::move(found)});
}

std::vector<std::string_view> split(std::string_view text, std::string_view separators,
                                    bool keepEmpty) {
  std::vector<std::string_view> parts;
  while (true) {
    const auto end = text.find_first_of(separators);
    if (keepEmpty || end != 0) {
      if (const auto part = text.substr(0, end); keepEmpty || !part.empty()) parts.push_back(part);
    }
    if (end == text.npos) return parts;
    text.remove_prefix(end + 1);
  }
}

template <typename Number>
std::optional<Number> parseNumber(std::string_view text, int base) {
  Number value = 0;
  const char* const end = text.data() + text.size();
  const auto [parsed, failed] = std::from_chars(text.data(), end, value, base);
  if (failed != std::errc() || parsed != end) return std::nullopt;
  return value;
}

Result<std::vector<std::uint8_t>, FormatFlaw> parseStatusBytes(std::string_view field) {
  std::vector<std::uint8_t> bytes;
  for (const std::string_view part : split(field, ",", true)) {
    const auto byte = part.size() == 2 ? parseNumber<std::uint8_t>(part, 16) : std::nullopt;
    if (!byte)
      return flaw(say("reports", "status bytes of two hexadecimal digits, such as D8,D9"),
                  foundText(field));
    bytes.push_back(*byte);
  }
  return bytes;
}

Result<CoordinateLayout, FormatFlaw> parseLayout(std::string_view field, std::size_t packetLength) {
  const auto malformed =
      flaw(say("reports", "a layout such as low7@1,3 with low7, high7 or le16"), foundText(field));
  const auto halves = split(field, "@", true);
  if (halves.size() != 2) return malformed;
  const auto known = std::find_if(encodingNames.begin(), encodingNames.end(),
                                  [&](const auto& entry) { return entry.name == halves[0]; });
  const auto places = split(halves[1], ",", true);
  if (known == encodingNames.end() || places.size() != 2) return malformed;
  const auto x = parseNumber<std::size_t>(places[0], 10);
  const auto y = parseNumber<std::size_t>(places[1], 10);
  if (!x || !y) return malformed;

  const std::size_t last = packetLength - coordinateSize;
  const std::size_t apart = *x > *y ? *x - *y : *y - *x;
  if (*x < 1 || *y < 1 || *x > last || *y > last || apart < coordinateSize) {
    return flaw(
        filled(say("reports", "two different places from 1 to %1 for coordinates of two bytes"),
               {std::to_string(last)}),
        foundText(field));
  }
  return CoordinateLayout{known->encoding, *x, *y};
}

bool has(const std::vector<std::uint8_t>& bytes, std::uint8_t byte) {
  return std::find(bytes.begin(), bytes.end(), byte) != bytes.end();
}

/// The name of the format that has this status byte; empty when none has.
std::string_view ownerOf(std::uint8_t status, const std::vector<ReportFormat>& earlier) {
  for (const ReportFormat& other : earlier)
    if (has(other.touching, status) || has(other.released, status)) return other.name;
  return builtInFormat(status);
}

/// Every status byte must tell one thing only: which format, and whether the panel is touched.
Result<void, FormatFlaw> checkStatusBytes(const ReportFormat& format,
                                          const std::vector<ReportFormat>& earlier) {
  const bool marked = format.layout.encoding != CoordinateEncoding::sixteenBitLittleEndian;
  for (const auto* bytes : {&format.touching, &format.released}) {
    for (const std::uint8_t byte : *bytes) {
      if (marked && byte < lowestMarkedStatus) {
        return flaw(say("reports", "status bytes from 80 to FF with coordinates of 7 bits"),
                    hexByte(byte));
      }
      if (const std::string_view owner = ownerOf(byte, earlier); !owner.empty()) {
        return flaw(say("reports", "status bytes that no other format has"),
                    filled(say("reports", "%1 of %2"), {hexByte(byte), foundText(owner)}));
      }
    }
  }
  for (const std::uint8_t byte : format.released) {
    if (has(format.touching, byte)) {
      return flaw(say("reports", "status bytes that are either touching or released"),
                  filled(say("reports", "%1 in both"), {hexByte(byte)}));
    }
  }
  return {};
}

Result<ReportFormat, FormatFlaw> parseFormat(const std::vector<std::string_view>& fields,
                                             const std::vector<ReportFormat>& earlier) {
  if (fields.size() != 5) {
    return flaw(say("reports", "five fields: name, length, touching, released, layout"),
                std::to_string(fields.size()));
  }
  ReportFormat format;
  format.name = toUtf8(fields[0]);
  for (const ReportFormat& other : earlier) {
    if (other.name == format.name)
      return flaw(say("reports", "a name of its own"),
                  filled(say("reports", "another %1"), {foundText(fields[0])}));
  }
  const auto length = parseNumber<std::size_t>(fields[1], 10);
  if (!length || *length < shortestPacket || *length > longestPacket) {
    return flaw(say("reports", "a packet length from 5 to 64"), foundText(fields[1]));
  }
  format.packetLength = *length;
  const auto touching = parseStatusBytes(fields[2]);
  if (!touching) return tl::unexpected(touching.error());
  format.touching = *touching;
  if (fields[3] != "-") {
    const auto released = parseStatusBytes(fields[3]);
    if (!released) return tl::unexpected(released.error());
    format.released = *released;
  }
  const auto layout = parseLayout(fields[4], format.packetLength);
  if (!layout) return tl::unexpected(layout.error());
  format.layout = *layout;
  if (const auto checked = checkStatusBytes(format, earlier); !checked)
    return tl::unexpected(checked.error());
  return format;
}

}  // namespace

ReportFormats parseFormats(std::string_view text, const std::string& name) {
  ReportFormats result;
  int number = 0;
  for (const std::string_view line : linesOf(withoutByteOrderMark(text))) {
    ++number;
    const auto fields = split(line.substr(0, line.find('#')), " \t", false);
    if (fields.empty()) continue;
    auto format = parseFormat(fields, result.formats);
    if (format) {
      result.formats.push_back(std::move(*format));
    } else {
      const auto& [expected, found] = format.error();
      result.problems.push_back({name, number, expected, found});
    }
  }
  return result;
}

ReportFormats rdformad(const std::filesystem::path& folder) {
  const auto file = folder / "zevrik.fmt";
  std::error_code ignored;
  if (!std::filesystem::exists(file, ignored)) return {};
  const auto content = readWholeFile(file, largestFormatFile);
  if (!content) return {{}, {content.error()}};
  return parseFormats(*content, file.string());
}

std::string describeProblems(const ReportFormats& formats) {
  constexpr std::size_t mostTold = 10;
  std::string text;
  const std::size_t told = std::min(formats.problems.size(), mostTold);
  for (const FileError& problem : std::span(formats.problems).first(told)) {
    if (!text.empty()) text += '\n';
    text += problem.describe();
  }
  if (const std::size_t all = formats.problems.size(); all > mostTold) {
    text += '\n' + filled(say("reports", "%1 problems in all; these are the first %2."),
                          {std::to_string(all), std::to_string(mostTold)});
  }
  return text;
}

RawCounts greatestCoordinate(CoordinateEncoding encoding) {
  return {encoding == CoordinateEncoding::sixteenBitLittleEndian ? std::uint16_t{65535}
                                                                 : std::uint16_t{16383}};
}

}  // namespace touch
