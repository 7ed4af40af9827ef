#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "reports/report_decoder.h"
#include "support/result.h"

namespace touch {

/// A touch report, and when its last byte came, by the program's clock.
struct ArrivedReport {
  TouchReport report;
  std::chrono::duration<double> time{};
};

/// What a controller reports on its serial port. While it is read here the system's pointer stands
/// still.
class TouchStream {
 public:
  TouchStream() = default;
  TouchStream(const TouchStream&) = delete;
  TouchStream& operator=(const TouchStream&) = delete;
  virtual ~TouchStream() = default;

  /// Reads COM port `port` from now on. The error says why it cannot, and then nothing is held.
  virtual Result<void, std::string> begin(int port) = 0;
  /// Gives the port back; nothing happens while none is read.
  virtual void end() = 0;
  /// What has come since this was last called.
  virtual std::vector<ArrivedReport> read() = 0;
  /// Why the port closed by itself since `begin`.
  virtual std::optional<std::string> lost() const = 0;
};

}  // namespace touch
