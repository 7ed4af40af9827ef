#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "reports/report_decoder.h"

namespace touch {

/// Cuts a controller's stream, which comes in pieces of any size, into touch reports and the bytes
/// between them.
class ReportSplitter {
 public:
  /// Told of every byte once, in order: those of a report with it, the others without one.
  using Sink = std::function<void(const TouchReport* report, std::span<const std::uint8_t> bytes)>;

  ReportSplitter(ReportFamily family, std::span<const ReportFormat> added)
      : family_(family), decoder_(family, added) {}

  ReportFamily family() const { return family_; }
  const ReportDecoder& decoder() const { return decoder_; }
  void feed(std::span<const std::uint8_t> bytes, const Sink& sink);
  /// Nothing has come for a while: what waits for its end is told as it is.
  void flush(const Sink& sink);

 private:
  void tellReady(const Sink& sink, bool all);

  ReportFamily family_;
  ReportDecoder decoder_;
  std::vector<std::uint8_t> bytes_;  ///< those not told yet
  std::uint64_t firstByte_ = 0;      ///< offset of the first of them
  std::vector<TouchReport> reports_;
};

}  // namespace touch
