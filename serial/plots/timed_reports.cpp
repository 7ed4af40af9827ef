#include "serial/plots/timed_reports.h"

#include <algorithm>
#include <utility>

namespace touch {

namespace {

using namespace std::chrono_literals;

// Longer than any controller takes from one report to the next.
constexpr auto strokeEnd = 500ms;
// Read before a part, so that the report before its first one is known.
constexpr std::chrono::microseconds leadIn = 2 * strokeEnd;
constexpr TimeRange::Time shortestRange = 20ms;

TimeRange placed(TimeRange::Time from, TimeRange::Time length, const TimeRange& all) {
  length = std::min(length, std::max(all.length(), shortestRange));
  from = std::clamp(from, all.from, std::max(all.from, all.to - length));
  return {from, from + length};
}

}  // namespace

TimeRange TimeRange::zoomed(double factor, const TimeRange& all) const {
  const auto wanted = std::max(shortestRange, std::chrono::duration_cast<Time>(length() * factor));
  return placed(from + (length() - wanted) / 2, wanted, all);
}

TimeRange TimeRange::moved(double part, const TimeRange& all) const {
  return placed(from + std::chrono::duration_cast<Time>(length() * part), length(), all);
}

TimedReports::TimedReports(ReportFamily family, std::span<const ReportFormat> added)
    : splitter_(family, added) {}

void TimedReports::take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
                        const LineSettings& line, const Sink& sink) {
  const auto perByte = byteTime(line);
  fed_ += bytes.size();
  splitter_.feed(bytes, [&](const TouchReport* report, std::span<const std::uint8_t> part) {
    told_ += part.size();
    if (report == nullptr) return;
    // Bytes that were read together came one after the other, but none before the last reading.
    const std::uint64_t later = fed_ - told_;
    const auto before = std::chrono::duration_cast<std::chrono::microseconds>(
        perByte * static_cast<std::int64_t>(later));
    tell(*report, std::max(time - before, std::min(read_, time)), later > 0, sink);
  });
  read_ = time;
}

void TimedReports::tell(const TouchReport& report, std::chrono::microseconds time, bool reckoned,
                        const Sink& sink) {
  TimedReport timed{time,     report.x, report.y,    report.greatest, report.touching,
                    reckoned, 1,        std::nullopt};
  if (last_) {
    if (last_->touching && time - last_->time < strokeEnd) timed.interval = time - last_->time;
    timed.stroke = last_->stroke + (timed.interval ? 0 : 1);
  }
  last_ = timed;
  sink(timed);
}

RecordedReports::RecordedReports(TransferSource& recording, TimedReports reports)
    : recording_(&recording),
      reports_(std::move(reports)),
      isWhole_(true),
      part_{{}, TimeRange::Time::max()} {
  recording_->rewind();
}

RecordedReports::RecordedReports(TransferSource& recording, TimedReports reports,
                                 const TimeRange& part, LineChanges lines)
    : recording_(&recording), reports_(std::move(reports)), part_(part), lines_(std::move(lines)) {
  recording_->seek(std::max(TimeRange::Time(0), part.from - leadIn));
}

Result<bool> RecordedReports::takeSome(std::size_t transfers, const TimedReports::Sink& sink) {
  const TimedReports::Sink within = [this, &sink](const TimedReport& report) {
    if (part_.holds(report.time)) sink(report);
  };
  for (; transfers > 0; --transfers) {
    // What is read later than the part may have come in it.
    if (reports_.readUpTo() > part_.to) return false;
    const auto transfer = recording_->next();
    if (!transfer) {
      if (const auto failed = recording_->error()) return tl::unexpected(*failed);
      return false;
    }
    if (transfer->direction == Direction::fromController)
      reports_.take(transfer->time, transfer->bytes, lineAt(transfer->time), within);
  }
  return true;
}

LineSettings RecordedReports::lineAt(std::chrono::microseconds time) {
  const auto told = recording_->line();
  if (isWhole_ && told && (lines_.empty() || lines_.back().second != *told))
    lines_.emplace_back(time, *told);
  if (told) return *told;
  const auto after = std::ranges::upper_bound(lines_, time, {}, &LineChanges::value_type::first);
  return after == lines_.begin() ? LineSettings() : std::prev(after)->second;
}

double RecordedReports::progress() const {
  const auto end = std::min(part_.to, recording_->length());
  const auto length = static_cast<double>(std::max<std::int64_t>(1, (end - part_.from).count()));
  return std::clamp(static_cast<double>((reports_.readUpTo() - part_.from).count()) / length, 0.0,
                    1.0);
}

}  // namespace touch
