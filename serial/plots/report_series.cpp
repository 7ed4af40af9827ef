#include "serial/plots/report_series.h"

#include <algorithm>
#include <cmath>

#include "serial/plots/report_table.h"

namespace touch {

namespace {

double milliseconds(std::chrono::microseconds time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

/// Of numbers that follow each other about one in 2 to the power of `halvings`, and of those about
/// every second at one more. They keep no step with what alternates in the stream.
bool isChosen(std::uint32_t number, unsigned halvings) {
  constexpr std::uint64_t golden = 0x9E3779B97F4A7C15;
  constexpr unsigned bits = 64;
  return halvings == 0 || number * golden >> (bits - halvings) == 0;
}

/// What a report by itself is drawn as.
PlotColumn alone(const TimedReport& report) {
  return {1,
          report.reckoned ? 1U : 0U,
          {report.x, report.x},
          {report.y, report.y},
          report.interval.value_or(std::chrono::microseconds(0))};
}

/// The middle of `intervals`, which it sorts.
double rateOf(std::vector<std::chrono::microseconds>& intervals) {
  std::ranges::sort(intervals);
  const std::size_t count = intervals.size();
  const double median =
      (milliseconds(intervals[(count - 1) / 2]) + milliseconds(intervals[count / 2])) / 2;
  return median > 0 ? 1000 / median : 0;
}

/// Deviation and span of numbers.
class Scatter {
 public:
  void add(RawCounts counts) {
    const std::uint16_t value = counts.value;
    least_ = count_ == 0 ? value : std::min(least_, value);
    greatest_ = count_ == 0 ? value : std::max(greatest_, value);
    ++count_;
    // Sums of squares would lose the small differences of large numbers.
    const double away = value - mean_;
    mean_ += away / count_;
    squares_ += away * (value - mean_);
  }
  double deviation() const { return count_ > 1 ? std::sqrt(squares_ / (count_ - 1)) : 0; }
  RawCounts span() const { return {static_cast<std::uint16_t>(greatest_ - least_)}; }

 private:
  int count_ = 0;
  std::uint16_t least_ = 0;
  std::uint16_t greatest_ = 0;
  double mean_ = 0;
  double squares_ = 0;
};

}  // namespace

void PlotColumn::add(const PlotColumn& other) {
  const bool first = reports == 0;
  const auto include = [first](std::pair<RawCounts, RawCounts>& extent,
                               const std::pair<RawCounts, RawCounts>& added) {
    extent = first ? added
                   : std::pair(std::min(extent.first, added.first),
                               std::max(extent.second, added.second));
  };
  include(x, other.x);
  include(y, other.y);
  reports += other.reports;
  reckoned += other.reckoned;
  longest = std::max(longest, other.longest);
}

void ReportSeries::take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
                        const LineSettings& line) {
  reader_.take(time, bytes, line, [this](const TimedReport& report) { add(report); });
}

void ReportSeries::add(const TimedReport& report) {
  // The last one is kept only so that the end can be seen.
  if (!reports_.empty() && !stays(reports_.back())) {
    const PlotColumn last = reports_.back().all;
    reports_.pop_back();
    reports_.back().all.add(last);
  }
  reports_.push_back({report, static_cast<std::uint32_t>(taken_), alone(report)});
  ++taken_;
  greatest_ = std::max(greatest_, report.greatest);
  if (reports_.size() <= most) return;
  if (whenFull_ == WhenFull::dropOldest) {
    reports_.pop_front();
  } else {
    thinOut();
  }
}

/// The first of all does, however thin they are.
bool ReportSeries::stays(const KeptReport& report) const {
  return isChosen(report.number, halvings_) ||
         (!report.interval && isChosen(report.stroke, strokeHalvings_));
}

void ReportSeries::thinOut() {
  ++halvings_;
  dropOthers();
  if (reports_.size() <= most / 4 * 3) return;
  strokeHalvings_ = halvings_;
  dropOthers();
}

void ReportSeries::dropOthers() {
  auto kept = reports_.begin();
  const auto last = std::prev(reports_.end());
  for (auto report = std::next(kept); report != reports_.end(); ++report) {
    if (stays(*report) || report == last) {
      *++kept = *report;
    } else {
      kept->all.add(report->all);
    }
  }
  reports_.erase(std::next(kept), reports_.end());
}

TimeRange ReportSeries::range() const {
  if (reports_.empty()) return {};
  return {reports_.front().time, reports_.back().time};
}

std::pair<ReportSeries::Place, ReportSeries::Place> ReportSeries::within(
    const TimeRange& range) const {
  const auto begin = std::ranges::lower_bound(reports_, range.from, {}, &TimedReport::time);
  return {begin, std::ranges::upper_bound(begin, reports_.end(), range.to, {}, &TimedReport::time)};
}

std::size_t ReportSeries::count(const TimeRange& range) const {
  std::size_t count = 0;
  const auto [begin, end] = within(range);
  for (auto report = begin; report != end; ++report)
    count += report->all.reports;
  return count;
}

SeriesFigures ReportSeries::figures(const TimeRange& range) const {
  SeriesFigures figures;
  Scatter x;
  Scatter y;
  std::vector<std::chrono::microseconds> intervals;
  double rates = 0;
  std::size_t rated = 0;
  const auto endStroke = [&] {
    if (!intervals.empty()) {
      rates += rateOf(intervals);
      ++rated;
    }
    intervals.clear();
  };
  const auto [begin, end] = within(range);
  if (begin != end) figures.strokes = std::prev(end)->stroke - begin->stroke + 1;
  for (auto report = begin; report != end; ++report) {
    figures.reports += report->all.reports;
    figures.reckoned += report->all.reckoned;
    if (report != begin && report->stroke != std::prev(report)->stroke) endStroke();
    if (report->interval && report != begin) intervals.push_back(*report->interval);
    if (!report->touching) continue;
    x.add(report->x);
    y.add(report->y);
  }
  endStroke();
  if (rated > 0) figures.rate = rates / static_cast<double>(rated);
  figures.deviationX = x.deviation();
  figures.deviationY = y.deviation();
  figures.spanX = x.span();
  figures.spanY = y.span();
  return figures;
}

std::vector<PlotColumn> ReportSeries::columns(const TimeRange& range, std::size_t count) const {
  std::vector<PlotColumn> columns(count);
  if (count == 0 || range.length().count() <= 0) return columns;
  const auto [begin, end] = within(range);
  for (auto report = begin; report != end; ++report) {
    const auto place = static_cast<std::size_t>(
        static_cast<double>(count - 1) * static_cast<double>((report->time - range.from).count()) /
        static_cast<double>(range.length().count()));
    columns[place].add(report->all);
  }
  return columns;
}

std::string ReportSeries::csv(const TimeRange& range) const {
  std::string text(reportTableHeading);
  const auto [begin, end] = within(range);
  for (auto report = begin; report != end; ++report)
    text += tableLine(*report);
  return text;
}

}  // namespace touch
