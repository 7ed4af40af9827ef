#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
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
  bool touching = false;
  /// More was read together with it: its time follows from that and from the speed of the line.
  bool reckoned = false;
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
  friend bool operator==(const TimeRange&, const TimeRange&) = default;
};

/// What the reports in a range say as numbers.
struct SeriesFigures {
  std::size_t reports = 0;
  std::size_t strokes = 0;
  std::size_t reckoned = 0;  ///< reports whose times are
  /// 1000 divided by the median interval in ms, the mean of the strokes; nothing without intervals.
  std::optional<double> rate;
  /// How far reports of the touched panel scatter: of a finger that rests that is noise.
  /// In raw counts, of which it may be a part.
  double deviationX = 0;
  double deviationY = 0;
  RawCounts spanX;
  RawCounts spanY;
};

/// What lies in one column of a plot: the least and the greatest.
struct PlotColumn {
  std::size_t reports = 0;
  std::pair<RawCounts, RawCounts> x;
  std::pair<RawCounts, RawCounts> y;
  std::chrono::microseconds longest{};  ///< interval
};

/// The reports of a stream or of a recording over time. The oldest are dropped.
class ReportSeries {
 public:
  static constexpr std::size_t most = 500'000;

  explicit ReportSeries(ReportFamily family, std::span<const ReportFormat> added = {});

  /// What came from a controller and was read at `time`, over a line that was set so; in the order
  /// of time.
  void take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
            const LineSettings& line = {});
  /// All of a recording. The error is where it could not be read on.
  Status takeAll(TransferSource& recording);
  /// So many transfers more of a recording. Whether there may be more of them.
  Result<bool> takeSome(TransferSource& recording, std::size_t transfers);
  /// Reports, also those that were dropped.
  std::uint64_t taken() const { return taken_; }
  std::chrono::microseconds readUpTo() const { return read_; }

  const std::deque<TimedReport>& reports() const { return reports_; }
  /// From the first to the last.
  TimeRange range() const;
  std::size_t count(const TimeRange& range) const;
  SeriesFigures figures(const TimeRange& range) const;
  std::vector<PlotColumn> columns(const TimeRange& range, std::size_t count) const;
  /// The greatest coordinate that a report can have.
  RawCounts greatest() const { return greatest_; }
  /// Those in the range, one a line below a heading.
  std::string csv(const TimeRange& range) const;

 private:
  using Place = std::deque<TimedReport>::const_iterator;
  std::pair<Place, Place> within(const TimeRange& range) const;
  void add(const TouchReport& report, std::chrono::microseconds time, bool reckoned);

  ReportSplitter splitter_;
  std::uint64_t fed_ = 0;   ///< bytes, to the splitter
  std::uint64_t told_ = 0;  ///< bytes, by the splitter
  std::uint64_t taken_ = 0;
  std::chrono::microseconds read_{};  ///< when bytes were read last
  std::deque<TimedReport> reports_;
  RawCounts greatest_{1};
};

}  // namespace touch
