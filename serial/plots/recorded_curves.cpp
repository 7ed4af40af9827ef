#include "serial/plots/recorded_curves.h"

#include <utility>

namespace touch {

namespace {

// Read around what is looked at, so that it can be moved a little.
constexpr double around = 3;

}  // namespace

RecordedCurves::RecordedCurves(std::unique_ptr<TransferSource> recording, MakeReader makeReader)
    : recording_(std::move(recording)),
      makeReader_(std::move(makeReader)),
      whole_(makeReader_(), ReportSeries::WhenFull::thinOut),
      reading_(RecordedReports(*recording_, makeReader_())) {}

Status RecordedCurves::readOn(std::size_t transfers) {
  if (!reading_) return {};
  ReportSeries& series = part_.next ? *part_.next : whole_;
  const auto more =
      reading_->takeSome(transfers, [&series](const TimedReport& report) { series.add(report); });
  if (!more || !*more) end();
  return more ? Status() : tl::unexpected(more.error());
}

void RecordedCurves::end() {
  if (part_.next) {
    part_.series = std::move(part_.next);
    part_.range = part_.nextRange;
  } else {
    lines_ = reading_->lines();
  }
  reading_.reset();
}

void RecordedCurves::stop() {
  if (!reading_) return;
  if (!part_.next) {
    stopped_ = true;
    return end();
  }
  part_.next.reset();
  reading_.reset();
}

bool RecordedCurves::showsInFull(const TimeRange& range) const {
  return part_.series && part_.range.holds(range.from) && part_.range.holds(range.to);
}

bool RecordedCurves::lookCloser(const TimeRange& range) {
  if (isReading() && !isReadingPart()) return false;
  const bool isReadAlready =
      part_.next && part_.nextRange.holds(range.from) && part_.nextRange.holds(range.to);
  if (isReadAlready) return true;
  stop();
  if (whole_.every() == 1 || showsInFull(range)) return false;
  if (whole_.count(range) > ReportSeries::most / 2) return false;
  const TimeRange wide = range.zoomed(around, whole_.range());
  part_.nextRange = whole_.count(wide) > ReportSeries::most / 2 ? range : wide;
  part_.next = std::make_unique<ReportSeries>(makeReader_());
  reading_.emplace(*recording_, makeReader_(), part_.nextRange, lines_);
  return true;
}

const ReportSeries& RecordedCurves::best(const TimeRange& range) const {
  return showsInFull(range) ? *part_.series : whole_;
}

RecordedReports RecordedCurves::reports(const std::optional<TimeRange>& range) {
  stop();
  if (!range && !stopped_) return {*recording_, makeReader_()};
  return {*recording_, makeReader_(), range.value_or(whole_.range()), lines_};
}

}  // namespace touch
