#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "core/serial_port.h"
#include "support/clock.h"

namespace touch {

struct ReadBytes {
  std::vector<std::uint8_t> bytes;
  std::vector<ReadPart> parts;  ///< that they are made of
};
/// Every byte that has arrived. Where the port does not tell when, that was at `now`.
ReadBytes readTimed(SerialPort& port, Clock::TimePoint now);

/// When each byte of a stream came, reckoned from when it was read and from what the bytes behind
/// it took on the line.
class ArrivalTimes {
 public:
  void add(const ReadPart& part, std::chrono::nanoseconds byteTime);
  /// When the last of the next `count` bytes came.
  Clock::TimePoint take(std::size_t count);
  void forget() { parts_.clear(); }

 private:
  std::deque<ReadPart> parts_;
  std::chrono::nanoseconds byteTime_{};
  Clock::TimePoint last_{};  ///< of the bytes that were taken
};

}  // namespace touch
