#include "serial/report_splitter.h"

#include <algorithm>

namespace touch {

void ReportSplitter::feed(std::span<const std::uint8_t> bytes, const Sink& sink) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  decoder_.feed(bytes, reports_);
  tellReady(sink, false);
}

void ReportSplitter::flush(const Sink& sink) {
  decoder_.reset();
  tellReady(sink, true);
}

void ReportSplitter::tellReady(const Sink& sink, bool all) {
  const auto tell = [&](const TouchReport* report, std::span<const std::uint8_t> bytes) {
    if (!bytes.empty()) sink(report, bytes);
    drop(bytes.size());
  };
  std::size_t told = 0;
  for (const TouchReport& report : reports_) {
    const std::uint64_t end = report.offset + report.length;
    if (!all && end > firstByte_ + bytes_.size()) break;
    tell(nullptr, bytesUpTo(report.offset));
    tell(&report, bytesUpTo(end));
    ++told;
  }
  reports_.erase(reports_.begin(), reports_.begin() + static_cast<std::ptrdiff_t>(told));
  tell(nullptr, bytesUpTo(reports_.empty() ? decoder_.decided() : reports_.front().offset));
}

std::span<const std::uint8_t> ReportSplitter::bytesUpTo(std::uint64_t offset) const {
  const auto count = static_cast<std::size_t>(offset - firstByte_);
  return std::span(bytes_).first(std::min(count, bytes_.size()));
}

void ReportSplitter::drop(std::size_t count) {
  bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(count));
  firstByte_ += count;
}

}  // namespace touch
