#include "simulator/port/timed_bytes.h"

#include <algorithm>

namespace touch::simulator {

namespace {
constexpr std::size_t capacity = 4096;
}

bool TimedBytes::send(std::span<const std::uint8_t> bytes, TimePoint earliest) {
  if (bytes_.size() + bytes.size() > capacity) return false;
  free_ = std::max(free_, earliest);
  for (const std::uint8_t byte : bytes) {
    free_ += std::chrono::duration_cast<TimePoint::duration>(byteTime_);
    bytes_.push_back({free_, byte});
  }
  return true;
}

std::size_t TimedBytes::arrived(TimePoint now) const {
  const auto coming = std::ranges::upper_bound(bytes_, now, {}, &Byte::arrival);
  return static_cast<std::size_t>(coming - bytes_.begin());
}

std::vector<std::uint8_t> TimedBytes::take(std::size_t limit, TimePoint now) {
  const auto count = static_cast<std::ptrdiff_t>(std::min(limit, arrived(now)));
  std::vector<std::uint8_t> taken;
  std::ranges::transform(bytes_.begin(), bytes_.begin() + count, std::back_inserter(taken),
                         &Byte::value);
  bytes_.erase(bytes_.begin(), bytes_.begin() + count);
  return taken;
}

std::optional<TimePoint> TimedBytes::nextArrival() const {
  if (bytes_.empty()) return std::nullopt;
  return bytes_.front().arrival;
}

void TimedBytes::clear() {
  bytes_.clear();
  free_ = {};
}

}  // namespace touch::simulator
