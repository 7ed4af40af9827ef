#include "serial/receiving/report_rate.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "support/text/language.h"

namespace touch {

namespace {

constexpr std::uint8_t highestDataByte = 0x7F;
constexpr std::uint8_t tabletEnd = 0x88;
constexpr std::uint8_t otherTabletEnd = 0x98;
constexpr std::uint8_t e02End = 0x84;
// A finger that never leaves must not fill the memory: an hour at full speed.
constexpr std::size_t mostTimesKept = 700'000;

}  // namespace

std::optional<IntervalEvidence> evidenceOf(std::span<const Clock::TimePoint> reports) {
  using Duration = IntervalEvidence::Duration;
  if (reports.size() < 2) return std::nullopt;
  std::vector<Duration> intervals;
  for (std::size_t i = 1; i < reports.size(); ++i) {
    intervals.push_back(std::chrono::duration_cast<Duration>(reports[i] - reports[i - 1]));
  }
  IntervalEvidence evidence;
  for (const Duration interval : intervals) {
    const auto bucket = static_cast<std::size_t>(interval / IntervalEvidence::bucketWidth);
    ++evidence.histogram[std::min(bucket, evidence.histogram.size() - 1)];
  }
  std::vector<Duration> sorted = intervals;
  std::ranges::sort(sorted);
  evidence.shortest = sorted.front();
  evidence.median = (sorted[(sorted.size() - 1) / 2] + sorted[sorted.size() / 2]) / 2;
  evidence.longest = sorted.back();
  for (std::size_t i = 0; i < intervals.size(); ++i) {
    if (intervals[i] <= evidence.median * IntervalEvidence::gapFactor) continue;
    evidence.gaps.push_back(
        {std::chrono::duration_cast<Duration>(reports[i] - reports[0]), intervals[i]});
  }
  return evidence;
}

std::optional<double> medianRate(const IntervalEvidence& evidence) {
  if (evidence.median.count() == 0) return std::nullopt;
  return std::chrono::duration<double>(std::chrono::seconds(1)) / evidence.median;
}

double rateCeiling(const LineSettings& line, std::size_t packetLength) {
  return static_cast<double>(line.baud) / bitsPerByte(line) / static_cast<double>(packetLength);
}

std::array<std::string, 4> rateLines(const StrokeRate& stroke) {
  const auto time = stroke.totalTime.count();
  const std::string rate = time == 0 ? "-"
                                     : fmt::format("{:.2f}", static_cast<double>(stroke.points) *
                                                                 1000 / static_cast<double>(time));
  return {fmt::format("Total Time : {} ms", time), fmt::format("Total Points : {}", stroke.points),
          "Report rate : " + rate, "============================="};
}

std::vector<std::string> evidenceLines(const StrokeRate& stroke, double ceiling) {
  const auto text = [](IntervalEvidence::Duration duration) {
    return fmt::format("{:.1f}", static_cast<double>(duration.count()) / 1000);
  };
  std::vector<std::string> lines;
  if (const auto& evidence = stroke.evidence) {
    if (const auto rate = medianRate(*evidence)) {
      lines.push_back(filled(say("receiving", "While touched : %1 reports per second"),
                             {fmt::format("{:.2f}", *rate)}));
    }
    lines.push_back(
        filled(say("receiving", "Intervals : shortest %1, median %2, longest %3 ms"),
               {text(evidence->shortest), text(evidence->median), text(evidence->longest)}));
    std::string gaps = evidence->gaps.empty() ? say("receiving", "none") : std::string();
    constexpr std::size_t mostToldGaps = 3;
    for (std::size_t i = 0; i < std::min(evidence->gaps.size(), mostToldGaps); ++i) {
      const auto& [at, length] = evidence->gaps[i];
      if (i > 0) gaps += ", ";
      gaps += filled(say("receiving", "%1 ms at %2 ms"), {text(length), text(at)});
    }
    if (evidence->gaps.size() > mostToldGaps) {
      gaps += ' ' + filled(say("receiving", "and %1 more"),
                           {std::to_string(evidence->gaps.size() - mostToldGaps)});
    }
    lines.push_back(filled(say("receiving", "Gaps : %1"), {gaps}));
  }
  lines.push_back(filled(say("receiving", "Line limit: %1 reports per second"),
                         {fmt::format("{:.0f}", ceiling)}));
  return lines;
}

ReportRate::ReportRate(ReportFamily family, std::span<const ReportFormat> added,
                       const LineSettings& line)
    : family_(family), added_(added.begin(), added.end()), byteTime_(byteTime(line)) {}

void ReportRate::collect(Clock::TimePoint now, std::span<const std::uint8_t> bytes) {
  heard_ = heard_ || !bytes.empty();
  arrivals_.add({now, bytes.size()}, byteTime_);
  if (splitter_) {
    splitter_->feed(bytes, [this](const auto* report, auto part) { count(report, part); });
  } else {
    countOwn(bytes);
  }
}

void ReportRate::count(const TouchReport* report, std::span<const std::uint8_t> bytes) {
  if (report == nullptr || !builtInFormat(bytes.front()).empty()) {
    countOwn(bytes);
    return;
  }
  collected_.push_back({arrivals_.take(1), true, !report->touching, bytes.size()});
  arrivals_.take(bytes.size() - 1);
}

void ReportRate::countOwn(std::span<const std::uint8_t> bytes) {
  for (const std::uint8_t byte : bytes) {
    const auto time = arrivals_.take(1);
    family_ == ReportFamily::e02 ? countE02(byte, time) : countTablet(byte, time);
  }
}

void ReportRate::countTablet(std::uint8_t byte, Clock::TimePoint time) {
  if (byte <= highestDataByte) return;
  collected_.push_back(
      {time, true, byte == tabletEnd || byte == otherTabletEnd, packetLength(family_)});
}

void ReportRate::countE02(std::uint8_t byte, Clock::TimePoint time) {
  if (matched_ == 2 && byte == e02End) collected_.push_back({time, false, true, 0});
  matched_ = byte == 'U' ? 1 : matched_ == 1 && byte == 'T' ? 2 : 0;
  if (matched_ == 2) collected_.push_back({time, true, false, packetLength(family_)});
}

void ReportRate::begin(Clock::TimePoint now) {
  armed_ = false;
  start_ = now;
  points_ = 0;
  times_.clear();
  matched_ = 0;
  arrivals_.forget();
  if (!added_.empty()) splitter_.emplace(family_, added_);
}

std::optional<StrokeRate> ReportRate::tick(Clock::TimePoint now) {
  // A packet whose end has not come within a tick does not come whole any more.
  if (!std::exchange(heard_, false) && splitter_) {
    splitter_->flush([this](const auto* report, auto part) { count(report, part); });
  }
  const auto events = std::exchange(collected_, {});
  if (armed_) {
    begin(now);
    return std::nullopt;
  }
  for (const Event& event : events) {
    if (event.counts) {
      ++points_;
      packetLength_ = event.packetLength;
      if (times_.size() < mostTimesKept) times_.push_back(event.time);
    }
    if (!event.ends) continue;
    armed_ = true;
    return StrokeRate{std::chrono::duration_cast<std::chrono::milliseconds>(now - start_), points_,
                      packetLength_, evidenceOf(times_)};
  }
  return std::nullopt;
}

}  // namespace touch
