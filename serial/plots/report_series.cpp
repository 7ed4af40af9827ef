#include "serial/plots/report_series.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace touch {

namespace {

using namespace std::chrono_literals;

// Longer than any controller takes from one report to the next.
constexpr auto strokeEnd = 500ms;
constexpr TimeRange::Time shortestRange = 20ms;

double milliseconds(std::chrono::microseconds time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

TimeRange placed(TimeRange::Time from, TimeRange::Time length, const TimeRange& all) {
  length = std::min(length, std::max(all.length(), shortestRange));
  from = std::clamp(from, all.from, std::max(all.from, all.to - length));
  return {from, from + length};
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

TimeRange TimeRange::zoomed(double factor, const TimeRange& all) const {
  const auto wanted = std::max(shortestRange, std::chrono::duration_cast<Time>(length() * factor));
  return placed(from + (length() - wanted) / 2, wanted, all);
}

TimeRange TimeRange::moved(double part, const TimeRange& all) const {
  return placed(from + std::chrono::duration_cast<Time>(length() * part), length(), all);
}

ReportSeries::ReportSeries(ReportFamily family, std::span<const ReportFormat> added)
    : splitter_(family, added) {}

void ReportSeries::take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
                        const LineSettings& line) {
  const auto perByte = byteTime(line);
  fed_ += bytes.size();
  splitter_.feed(bytes, [&](const TouchReport* report, std::span<const std::uint8_t> part) {
    told_ += part.size();
    if (report == nullptr) return;
    // Bytes that were read together came one after the other, but none before the last reading.
    const std::uint64_t later = fed_ - told_;
    const auto before = std::chrono::duration_cast<std::chrono::microseconds>(
        perByte * static_cast<std::int64_t>(later));
    add(*report, std::max(time - before, std::min(read_, time)), later > 0);
  });
  read_ = time;
}

Status ReportSeries::takeAll(TransferSource& recording) {
  constexpr std::size_t many = 100'000;
  while (true) {
    const auto more = takeSome(recording, many);
    if (!more) return tl::unexpected(more.error());
    if (!*more) return {};
  }
}

Result<bool> ReportSeries::takeSome(TransferSource& recording, std::size_t transfers) {
  for (; transfers > 0; --transfers) {
    const auto transfer = recording.next();
    if (!transfer) {
      if (const auto failed = recording.error()) return tl::unexpected(*failed);
      return false;
    }
    if (transfer->direction == Direction::fromController)
      take(transfer->time, transfer->bytes, recording.line().value_or(LineSettings()));
  }
  return true;
}

void ReportSeries::add(const TouchReport& report, std::chrono::microseconds time, bool reckoned) {
  TimedReport timed{time, report.x, report.y, report.touching, reckoned, std::nullopt};
  if (!reports_.empty()) {
    const TimedReport& last = reports_.back();
    if (last.touching && time - last.time < strokeEnd) timed.interval = time - last.time;
  }
  reports_.push_back(timed);
  ++taken_;
  if (reports_.size() > most) reports_.pop_front();
  greatest_ = std::max(greatest_, report.greatest);
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
  const auto [begin, end] = within(range);
  return static_cast<std::size_t>(end - begin);
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
  for (auto report = begin; report != end; ++report) {
    ++figures.reports;
    if (report->reckoned) ++figures.reckoned;
    if (report->interval && report != begin) {
      intervals.push_back(*report->interval);
    } else {
      endStroke();
      ++figures.strokes;
    }
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
  const auto include = [](std::pair<RawCounts, RawCounts>& extent, RawCounts value, bool first) {
    extent = first ? std::pair(value, value)
                   : std::pair(std::min(extent.first, value), std::max(extent.second, value));
  };
  const auto [begin, end] = within(range);
  for (auto report = begin; report != end; ++report) {
    const auto place = static_cast<std::size_t>(
        static_cast<double>(count - 1) * static_cast<double>((report->time - range.from).count()) /
        static_cast<double>(range.length().count()));
    PlotColumn& column = columns[place];
    include(column.x, report->x, column.reports == 0);
    include(column.y, report->y, column.reports == 0);
    ++column.reports;
    if (report->interval) column.longest = std::max(column.longest, *report->interval);
  }
  return columns;
}

std::string ReportSeries::csv(const TimeRange& range) const {
  std::string text = "time_s,touching,x,y,interval_ms,reckoned\n";
  const auto [begin, end] = within(range);
  for (auto report = begin; report != end; ++report) {
    const std::string interval =
        report->interval ? fmt::format("{:.3f}", milliseconds(*report->interval)) : std::string();
    text +=
        fmt::format("{:.6f},{},{},{},{},{}\n", std::chrono::duration<double>(report->time).count(),
                    report->touching ? 1 : 0, report->x.value, report->y.value, interval,
                    report->reckoned ? 1 : 0);
  }
  return text;
}

}  // namespace touch
