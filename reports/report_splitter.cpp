#include "reports/report_splitter.h"

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
  std::size_t told = 0;
  const auto tellUpTo = [&](std::uint64_t offset, const TouchReport* report) {
    const auto end = std::min(static_cast<std::size_t>(offset - firstByte_), bytes_.size());
    if (end <= told) return;
    sink(report, std::span(bytes_).subspan(told, end - told));
    told = end;
  };
  auto next = reports_.begin();
  for (; next != reports_.end(); ++next) {
    const std::uint64_t end = next->offset + next->length;
    if (!all && end > firstByte_ + bytes_.size()) break;
    tellUpTo(next->offset, nullptr);
    tellUpTo(end, &*next);
  }
  tellUpTo(next == reports_.end() ? decoder_.decided() : next->offset, nullptr);
  reports_.erase(reports_.begin(), next);
  // Once for all that was told: what comes in one go may be long.
  bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(told));
  firstByte_ += told;
}

}  // namespace touch
