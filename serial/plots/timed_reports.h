#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "reports/report_splitter.h"
#include "serial/recording/recording.h"

namespace touch {

/// A report and when it came.
struct TimedReport {
  std::chrono::microseconds time{};
  RawCounts x;
  RawCounts y;
  RawCounts greatest;  ///< that x and y can be
  bool touching = false;
  /// More was read together with it: its time follows from that and from the speed of the line.
  bool reckoned = false;
  std::uint32_t stroke = 0;  ///< of which it is, counted from 1
  /// From the report before, where that is of the same stroke.
  std::optional<std::chrono::microseconds> interval;
};

/// A stretch of time.
struct TimeRange {
  using Time = std::chrono::microseconds;
  Time from{};
  Time to{};

  Time length() const { return to - from; }
  /// `factor` times as long around its middle, within `all`; not shorter than a few reports take.
  TimeRange zoomed(double factor, const TimeRange& all) const;
  /// Moved on by a part of its length, within `all`.
  TimeRange moved(double part, const TimeRange& all) const;
  bool holds(Time time) const { return from <= time && time <= to; }
  friend bool operator==(const TimeRange&, const TimeRange&) = default;
};

/// Finds the reports in what comes from a controller, and when each came.
class TimedReports {
 public:
  using Sink = std::function<void(const TimedReport&)>;

  explicit TimedReports(ReportFamily family, std::span<const ReportFormat> added = {});

  /// What was read at `time`, over a line that was set so; in the order of time.
  void take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
            const LineSettings& line, const Sink& sink);
  std::chrono::microseconds readUpTo() const { return read_; }

 private:
  void tell(const TouchReport& report, std::chrono::microseconds time, bool reckoned,
            const Sink& sink);

  ReportSplitter splitter_;
  std::uint64_t fed_ = 0;             ///< bytes, to the splitter
  std::uint64_t told_ = 0;            ///< bytes, by the splitter
  std::chrono::microseconds read_{};  ///< when bytes were read last
  std::optional<TimedReport> last_;
};

/// How the line was set from when on, in the order of time.
using LineChanges = std::vector<std::pair<std::chrono::microseconds, LineSettings>>;

/// The reports of a recording, or of a part of it, found while it is read: little of it is in
/// memory. The recording outlives it, and is read by nobody else meanwhile.
class RecordedReports {
 public:
  RecordedReports(TransferSource& recording, TimedReports reports);
  /// Those in `part`, as they are in the whole. `lines` is known from reading before: where a
  /// recording is entered in the middle it says nothing of its line.
  RecordedReports(TransferSource& recording, TimedReports reports, const TimeRange& part,
                  LineChanges lines);

  /// Tells of those in so many transfers more. Whether there may be more of them.
  Result<bool> takeSome(std::size_t transfers, const TimedReports::Sink& sink);
  /// What part of it was read, from 0 to 1.
  double progress() const;
  const LineChanges& lines() const { return lines_; }

 private:
  LineSettings lineAt(std::chrono::microseconds time);

  TransferSource* recording_;
  TimedReports reports_;
  bool isWhole_ = false;
  TimeRange part_{};
  LineChanges lines_;
};

}  // namespace touch
