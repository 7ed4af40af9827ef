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

#include "serial/plots/timed_reports.h"

namespace touch {

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

/// Reports that are drawn as one: the least and the greatest of them.
struct PlotColumn {
  std::uint32_t reports = 0;
  std::uint32_t reckoned = 0;
  std::pair<RawCounts, RawCounts> x;
  std::pair<RawCounts, RawCounts> y;
  std::chrono::microseconds longest{};  ///< interval

  void add(const PlotColumn& other);
};

/// A report that is kept, and those behind it that are not.
struct KeptReport : TimedReport {
  std::uint32_t number = 0;  ///< in the stream
  PlotColumn all;
};

/// The reports of a stream or of a recording over time: only so many of them are kept.
class ReportSeries {
 public:
  static constexpr std::size_t most = 500'000;

  /// Which reports go when there are too many: the oldest, or every second of all, then of those
  /// that are left again. Of these the extremes stay, and the first report of each stroke, as long
  /// as the strokes are not too many.
  enum class WhenFull : std::uint8_t { dropOldest, thinOut };

  explicit ReportSeries(TimedReports reader, WhenFull whenFull = WhenFull::dropOldest)
      : reader_(std::move(reader)), whenFull_(whenFull) {}
  explicit ReportSeries(ReportFamily family, std::span<const ReportFormat> added = {})
      : ReportSeries(TimedReports(family, added)) {}

  /// What came from a controller and was read at `time`, over a line that was set so; in the order
  /// of time.
  void take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
            const LineSettings& line = {});
  /// One that was found already.
  void add(const TimedReport& report);
  /// Reports, also those that are not kept.
  std::uint64_t taken() const { return taken_; }
  /// About one report in so many is kept.
  std::uint64_t every() const { return std::uint64_t{1} << halvings_; }

  const std::deque<KeptReport>& reports() const { return reports_; }
  /// From the first to the last.
  TimeRange range() const;
  std::size_t count(const TimeRange& range) const;
  /// Where reports were thinned out, rate and scatter are those of the kept ones.
  SeriesFigures figures(const TimeRange& range) const;
  std::vector<PlotColumn> columns(const TimeRange& range, std::size_t count) const;
  /// The greatest coordinate that a report can have.
  RawCounts greatest() const { return greatest_; }
  /// Those kept in the range, one a line below a heading.
  std::string csv(const TimeRange& range) const;

 private:
  using Place = std::deque<KeptReport>::const_iterator;
  std::pair<Place, Place> within(const TimeRange& range) const;
  bool stays(const KeptReport& report) const;
  void thinOut();
  void dropOthers();

  TimedReports reader_;
  WhenFull whenFull_;
  unsigned halvings_ = 0;
  unsigned strokeHalvings_ = 0;
  std::uint64_t taken_ = 0;
  std::deque<KeptReport> reports_;
  RawCounts greatest_{1};
};

}  // namespace touch
