#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "simulator/controller/simulated_clock.h"

namespace touch::simulator {

/// Bytes on their way from a controller to its reader, each with the time of its arrival.
class TimedBytes {
 public:
  /// `byteTime` is what a byte takes on the line; 0 when a whole reply arrives at once.
  explicit TimedBytes(std::chrono::nanoseconds byteTime) : byteTime_(byteTime) {}
  void setByteTime(std::chrono::nanoseconds byteTime) { byteTime_ = byteTime; }

  /// Sends `bytes` from `earliest` on, or as soon as the line is free. False, and nothing is sent,
  /// when the reader has left too many bytes lying.
  bool send(std::span<const std::uint8_t> bytes, TimePoint earliest);
  std::size_t arrived(TimePoint now) const;
  /// The oldest bytes that have arrived, at most `limit`.
  std::vector<std::uint8_t> take(std::size_t limit, TimePoint now);
  /// When the next byte arrives, or arrived; nothing when none is on its way.
  std::optional<TimePoint> nextArrival() const;
  void clear();

 private:
  struct Byte {
    TimePoint arrival;
    std::uint8_t value = 0;
  };
  std::chrono::nanoseconds byteTime_;
  std::deque<Byte> bytes_;
  TimePoint free_{};
};

}  // namespace touch::simulator
