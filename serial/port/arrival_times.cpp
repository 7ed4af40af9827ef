#include "serial/port/arrival_times.h"

#include <algorithm>

namespace touch {

ReadBytes readTimed(SerialPort& port, Clock::TimePoint now) {
  ReadBytes read{port.readAll(), {}};
  if (read.bytes.empty()) return read;
  read.parts = port.readParts();
  if (read.parts.empty()) read.parts.push_back({now, read.bytes.size()});
  return read;
}

void ArrivalTimes::add(const ReadPart& part, std::chrono::nanoseconds byteTime) {
  parts_.push_back(part);
  byteTime_ = byteTime;
}

Clock::TimePoint ArrivalTimes::take(std::size_t count) {
  const auto onTheLine = [this](std::size_t bytes) {
    return byteTime_ * static_cast<Clock::TimePoint::rep>(bytes);
  };
  while (count > 0 && !parts_.empty()) {
    ReadPart& part = parts_.front();
    const std::size_t taken = std::min(count, part.bytes);
    count -= taken;
    part.bytes -= taken;
    const auto latest = part.time - onTheLine(part.bytes);
    last_ = std::min(part.time, std::max(latest, last_ + onTheLine(taken)));
    if (part.bytes == 0) parts_.pop_front();
  }
  return last_;
}

}  // namespace touch
