#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "reports/report_decoder.h"
#include "reports/report_splitter.h"
#include "serial/debugger/console_log.h"
#include "serial/port/arrival_times.h"
#include "serial/port/line_settings.h"

namespace touch {

/// How the receive mode tells a report, one line each: "touch" or "lift", X and Y. The console puts
/// the time before it and the bytes behind it. Without `replyFormat` the controller may have left
/// its usual format: its coordinates may be readings of the converter, and the line says "raw".
std::string m01m(const TouchReport& report, bool replyFormat);  ///< M01 and quorvane sets
std::string e02m(const TouchReport& report, bool replyFormat);  ///< E02 set

/// Writes what a controller sends to the console: a line for each report, and the bytes between
/// reports as they are, each with the time at which its last byte came.
class ReceiveDisplay {
 public:
  ReceiveDisplay(ReportFamily family, std::span<const ReportFormat> added)
      : splitter_(family, added) {}

  ReportFamily family() const { return splitter_.family(); }
  void show(const ReadBytes& read, const LineSettings& line, bool replyFormat, ConsoleLog& log);
  /// Nothing has come for a while: what waits for its end is shown as it is.
  void idle(bool replyFormat, ConsoleLog& log);

 private:
  ReportSplitter::Sink writing(ConsoleLog& log, bool replyFormat);

  ReportSplitter splitter_;
  ArrivalTimes times_;  ///< of the bytes that have not been shown yet
};

}  // namespace touch
