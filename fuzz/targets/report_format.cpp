// The report format descriptor, "zevrik.fmt". Behind a zero byte stands a stream that the described
// formats decode.

#include "reports/report_format.h"

#include <map>
#include <vector>

#include "fuzz/target.h"
#include "reports/report_decoder.h"

namespace touch::fuzz {

namespace {

/// What a format says of a packet that starts with this byte, for those that have a format of their
/// own.
using FormatsByStatus = std::map<std::uint8_t, const ReportFormat*>;

FormatsByStatus byStatus(const std::vector<ReportFormat>& formats) {
  FormatsByStatus found;
  for (const ReportFormat& format : formats) {
    require(format.packetLength >= 5 && format.packetLength <= 64, "packets have 5 to 64 bytes");
    require(!format.touching.empty(), "a format has a status byte");
    for (const auto* statuses : {&format.touching, &format.released}) {
      for (const std::uint8_t status : *statuses) {
        const auto [place, isNew] = found.emplace(status, &format);
        require(isNew || place->second == &format, "a status byte is of one format");
      }
    }
  }
  return found;
}

void decode(ReportFamily family, const std::vector<ReportFormat>& formats,
            std::span<const std::uint8_t> stream) {
  const FormatsByStatus known = byStatus(formats);
  ReportDecoder decoder(family, formats);
  std::vector<TouchReport> reports;
  decoder.feed(stream, reports);
  std::uint64_t next = 0;
  for (const TouchReport& report : reports) {
    require(report.offset >= next && report.offset < stream.size(), "packets lie in the stream");
    next = report.offset + report.length;
    const auto format = known.find(stream[report.offset]);
    // The family's own formats come first; their packets are the ones of its own length.
    if (format == known.end() || report.length == packetLength(family)) continue;
    require(report.length == format->second->packetLength,
            "a packet is as long as its format says");
    require(next <= stream.size(), "a described packet is whole");
  }
}

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  const auto end = std::find(bytes.begin(), bytes.end(), std::uint8_t{0});
  const auto text = bytes.first(static_cast<std::size_t>(end - bytes.begin()));
  const auto stream = bytes.subspan(std::min(text.size() + 1, bytes.size()));
  const ReportFormats read = parseFormats(textOf(text), "zevrik.fmt");
  for (const FileError& problem : read.problems)
    require(problem.line >= 1 && !problem.describe().empty(), "a problem names its line");
  decode(ReportFamily::tablet, read.formats, stream);
  decode(ReportFamily::e02, read.formats, stream);
}

}  // namespace touch::fuzz
