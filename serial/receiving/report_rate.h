#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "reports/report_decoder.h"
#include "reports/report_splitter.h"
#include "serial/port/arrival_times.h"
#include "serial/port/line_settings.h"
#include "support/clock.h"

namespace touch {

/// What lies behind a measured rate: the times from each report of the stroke to the next, as
/// ArrivalTimes reckons them.
struct IntervalEvidence {
  using Duration = std::chrono::microseconds;
  static constexpr Duration bucketWidth{2000};
  /// A gap is an interval of more than this many times the median.
  static constexpr int gapFactor = 2;

  struct Gap {
    Duration at{};  ///< from the stroke's first report
    Duration length{};
    friend bool operator==(const Gap&, const Gap&) = default;
  };

  Duration shortest{};
  Duration median{};
  Duration longest{};
  /// How many intervals there are from i to i + 1 bucket widths, the last entry also those that are
  /// longer.
  std::array<std::size_t, 26> histogram{};
  std::vector<Gap> gaps;
};

/// Nothing for fewer than two reports. The times are those of the reports, in order.
std::optional<IntervalEvidence> evidenceOf(std::span<const Clock::TimePoint> reports);

/// The reports a second while the pen is down: by the median, which no pause moves.
std::optional<double> medianRate(const IntervalEvidence& evidence);

/// The reports a second that a line can carry at most.
double rateCeiling(const LineSettings& line, std::size_t packetLength);

/// One measured stroke.
struct StrokeRate {
  std::chrono::milliseconds totalTime{};
  std::size_t points = 0;
  std::size_t packetLength = 0;  ///< of its last report, in bytes
  std::optional<IntervalEvidence> evidence;
};

inline constexpr std::string_view rateModeLine = "======== Report Rate Mode ==============";
/// The console's lines about a stroke, in order. Over no time there is no rate: "-" stands there.
std::array<std::string, 4> rateLines(const StrokeRate& stroke);

/// What lies behind the rate in words: the intervals, the gaps, and `ceiling`, the most that the
/// line allows.
std::vector<std::string> evidenceLines(const StrokeRate& stroke, double ceiling);

/// Counts the touch reports of one stroke after the other: the family's own by their status bytes
/// alone, those of the added formats by whole packets. What comes before the first tick is thrown
/// away: it may be a stroke's rest.
class ReportRate {
 public:
  explicit ReportRate(ReportFamily family, std::span<const ReportFormat> added = {},
                      const LineSettings& line = {});

  ReportFamily family() const { return family_; }

  /// Bytes that were read at `now`. The oftener they are read between two ticks, the better is the
  /// evidence; the count does not depend on it.
  void collect(Clock::TimePoint now, std::span<const std::uint8_t> bytes);
  /// The debugger's tick, every 200 ms. Begins a measurement, goes on with it, or ends it when the
  /// stroke has ended; returns the stroke then.
  std::optional<StrokeRate> tick(Clock::TimePoint now);

 private:
  /// Something that counts as a report, or says that the stroke has ended, or both.
  struct Event {
    Clock::TimePoint time;
    bool counts = false;
    bool ends = false;
    std::size_t packetLength = 0;
  };
  void count(const TouchReport* report, std::span<const std::uint8_t> bytes);
  void countOwn(std::span<const std::uint8_t> bytes);
  void countTablet(std::uint8_t byte, Clock::TimePoint time);
  void countE02(std::uint8_t byte, Clock::TimePoint time);
  void begin(Clock::TimePoint now);

  ReportFamily family_;
  std::vector<ReportFormat> added_;
  Clock::TimePoint::duration byteTime_;
  bool armed_ = true;
  Clock::TimePoint start_{};
  std::optional<ReportSplitter>
      splitter_;                  ///< where formats were added: their packets hold any bytes
  ArrivalTimes arrivals_;         ///< of the bytes that have not been counted yet
  bool heard_ = false;            ///< something came since the last tick
  std::vector<Event> collected_;  ///< since the last tick
  std::size_t points_ = 0;
  std::size_t packetLength_ = 0;
  std::vector<Clock::TimePoint> times_;  ///< of the stroke's reports so far
  int matched_ = 0;                      ///< bytes of "UT" that came last
};

}  // namespace touch
