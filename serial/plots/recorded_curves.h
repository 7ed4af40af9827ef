#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "serial/plots/report_series.h"
#include "serial/plots/timed_reports.h"

namespace touch {

/// The reports of a recording over time, however long it is. In the whole of a long one they are
/// thinned out; a part that is looked at closely is read once more, in full. Both is done piece by
/// piece.
class RecordedCurves {
 public:
  using MakeReader = std::function<TimedReports()>;

  RecordedCurves(std::unique_ptr<TransferSource> recording, MakeReader makeReader);

  /// Reads on by so many transfers, until `isReading` says no. An error ends it, too.
  Status readOn(std::size_t transfers);
  bool isReading() const { return reading_.has_value(); }
  bool isReadingPart() const { return isReading() && part_.next != nullptr; }
  /// From 0 to 1.
  double progress() const { return reading_ ? reading_->progress() : 1; }
  /// What was read of the whole stays, as if it were all; of a part it goes.
  void stop();

  /// Begins to read `range` in full, unless it is seen so already, has too many reports for that,
  /// or the whole is being read. Whether it has begun.
  bool lookCloser(const TimeRange& range);

  const ReportSeries& whole() const { return whole_; }
  /// What shows `range` best.
  const ReportSeries& best(const TimeRange& range) const;

  /// The reports in `range`, all of them; none: of all that was read. Nothing else reads
  /// the recording meanwhile.
  RecordedReports reports(const std::optional<TimeRange>& range);

 private:
  struct Part {
    TimeRange range;
    std::unique_ptr<ReportSeries> series;
    TimeRange nextRange;
    std::unique_ptr<ReportSeries> next;  ///< while it is read
  };
  bool showsInFull(const TimeRange& range) const;
  void end();

  std::unique_ptr<TransferSource> recording_;
  MakeReader makeReader_;
  ReportSeries whole_;
  Part part_;
  LineChanges lines_;
  bool stopped_ = false;  ///< before the whole was read
  std::optional<RecordedReports> reading_;
};

}  // namespace touch
