#include "serial/receiving/receive_display.h"

#include <fmt/format.h>

namespace touch {

namespace {

std::string reportText(const TouchReport& report, bool replyFormat) {
  return fmt::format("{:<5} {}X {:5} Y {:5}", report.touching ? "touch" : "lift",
                     replyFormat ? "" : "raw ", report.x.value, report.y.value);
}

}  // namespace

std::string m01m(const TouchReport& report, bool replyFormat) {
  return reportText(report, replyFormat);
}

// These controllers have one format only: no command makes them report raw readings.
std::string e02m(const TouchReport& report, bool) {
  return reportText(report, true);
}

ReportSplitter::Sink ReceiveDisplay::writing(ConsoleLog& log, bool replyFormat) {
  const auto text = family() == ReportFamily::e02 ? e02m : m01m;
  return [this, &log, text, replyFormat](const TouchReport* report,
                                         std::span<const std::uint8_t> bytes) {
    const auto came = times_.take(bytes.size());
    report != nullptr ? log.report(text(*report, replyFormat), bytes, came)
                      : log.received(bytes, came);
  };
}

void ReceiveDisplay::show(const ReadBytes& read, const LineSettings& line, bool replyFormat,
                          ConsoleLog& log) {
  for (const ReadPart& part : read.parts)
    times_.add(part, byteTime(line));
  splitter_.feed(read.bytes, writing(log, replyFormat));
}

void ReceiveDisplay::idle(bool replyFormat, ConsoleLog& log) {
  splitter_.flush(writing(log, replyFormat));
}

}  // namespace touch
