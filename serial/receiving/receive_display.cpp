#include "serial/receiving/receive_display.h"

#include <fmt/format.h>

namespace touch {

namespace {

std::string reportText(const TouchReport& report, bool replyFormat) {
  return fmt::format("{:<5} {}X {:5} Y {:5}", report.touching ? "touch" : "lift",
                     replyFormat ? "" : "raw ", report.x, report.y);
}

ReportSplitter::Sink writing(ConsoleLog& log, ReportFamily family, bool replyFormat) {
  const auto text = family == ReportFamily::e02 ? e02m : m01m;
  return [&log, text, replyFormat](const TouchReport* report, std::span<const std::uint8_t> bytes) {
    report != nullptr ? log.report(text(*report, replyFormat), bytes) : log.received(bytes);
  };
}

}  // namespace

std::string m01m(const TouchReport& report, bool replyFormat) {
  return reportText(report, replyFormat);
}

// These controllers have one format only: no command makes them report raw readings.
std::string e02m(const TouchReport& report, bool) {
  return reportText(report, true);
}

void ReceiveDisplay::show(std::span<const std::uint8_t> bytes, bool replyFormat, ConsoleLog& log) {
  splitter_.feed(bytes, writing(log, family(), replyFormat));
}

void ReceiveDisplay::idle(bool replyFormat, ConsoleLog& log) {
  splitter_.flush(writing(log, family(), replyFormat));
}

}  // namespace touch
