#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <span>

#include "core/session.h"
#include "reports/report_splitter.h"
#include "serial/port/arrival_times.h"
#include "serial/port/line_settings.h"

namespace touch {

/// A line on which nothing has come for longer is idle: no packet pauses within itself that long.
inline constexpr std::chrono::milliseconds idleAfter{200};

/// Prints what passes a serial line as it does: a line, or a JSON object in a line, for each
/// report, for the bytes between reports and for what was sent.
class ReportPrinter {
 public:
  /// `workFolder` may hold further forms of reports.
  ReportPrinter(CommandSet set, const std::filesystem::path& workFolder, bool json);

  /// What came in, the last of it at `time`. The others are reckoned back by what they took on
  /// the line.
  void take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes);
  /// How the line is set from now on; `normalLineSettings` until it is told.
  void setLine(const LineSettings& line) { line_ = line; }
  void sent(std::chrono::microseconds time, std::span<const std::uint8_t> bytes);
  /// Nothing came for a while: what is kept belongs to no report any more.
  void idle() { splitter_.flush(sink()); }

  std::uint64_t reports() const { return reports_; }
  std::uint64_t strayBytes() const { return splitter_.decoder().strayBytes(); }

 private:
  ReportSplitter::Sink sink();
  void printText(const TouchReport* report, std::span<const std::uint8_t> bytes) const;
  void printJson(const TouchReport* report, std::span<const std::uint8_t> bytes) const;

  ReportFamily family_;
  bool json_;
  ReportSplitter splitter_;
  LineSettings line_;
  ArrivalTimes arrivals_;  ///< of the bytes that have not been printed yet
  std::chrono::microseconds time_{};
  std::uint64_t reports_ = 0;
};

}  // namespace touch
