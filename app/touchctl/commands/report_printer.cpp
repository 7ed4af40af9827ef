#include "app/touchctl/commands/report_printer.h"

#include <nlohmann/json.hpp>

#include "app/touchctl/commands/serial/serial_work.h"
#include "app/touchctl/output.h"
#include "serial/debugger/console_log.h"
#include "serial/receiving/receive_display.h"

namespace touch {

namespace {

using nlohmann::ordered_json;

double seconds(std::chrono::microseconds time) {
  return static_cast<double>(time.count()) / 1e6;
}

void printLine(const ConsoleLine& line) {
  print("{}\n", shown(line));
}

void printObject(const ordered_json& object) {
  print("{}\n", object.dump(-1, ' ', true));
}

}  // namespace

ReportPrinter::ReportPrinter(CommandSet set, const std::filesystem::path& workFolder, bool json)
    : family_(familyOf(set)), json_(json), splitter_(family_, addedFormats(workFolder)) {}

void ReportPrinter::take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes) {
  arrivals_.add({Clock::TimePoint(time), bytes.size()}, byteTime(line_));
  splitter_.feed(bytes, sink());
  flushOutput();
}

void ReportPrinter::sent(std::chrono::microseconds time, std::span<const std::uint8_t> bytes) {
  if (json_) {
    printObject({{"time", seconds(time)}, {"sent", hexText(bytes)}});
  } else {
    printLine({ConsoleLineKind::sent, time, {bytes.begin(), bytes.end()}, {}});
  }
  flushOutput();
}

ReportSplitter::Sink ReportPrinter::sink() {
  return [this](const TouchReport* report, std::span<const std::uint8_t> bytes) {
    if (report != nullptr) ++reports_;
    time_ = std::chrono::floor<std::chrono::microseconds>(arrivals_.take(bytes.size()))
                .time_since_epoch();
    json_ ? printJson(report, bytes) : printText(report, bytes);
  };
}

void ReportPrinter::printText(const TouchReport* report,
                              std::span<const std::uint8_t> bytes) const {
  ConsoleLine line{ConsoleLineKind::received, time_, {bytes.begin(), bytes.end()}, {}};
  if (report != nullptr) {
    line.kind = ConsoleLineKind::report;
    line.text = family_ == ReportFamily::e02 ? e02m(*report, true) : m01m(*report, true);
  }
  printLine(line);
}

void ReportPrinter::printJson(const TouchReport* report,
                              std::span<const std::uint8_t> bytes) const {
  ordered_json object = {{"time", seconds(time_)}};
  if (report != nullptr) {
    object.update({{"touching", report->touching}, {"x", report->x.value}, {"y", report->y.value}});
  }
  object["bytes"] = hexText(bytes);
  printObject(object);
}

}  // namespace touch
