#include "serial/recording_ports.h"

namespace touch {

void RecordedPort::clearInput() {
  if (recorder_.isOn()) {
    readAll();
  } else {
    inner_.clearInput();
  }
}

void RecordedPort::write(std::span<const std::uint8_t> bytes) {
  if (inner_.isOpen()) recorder_.add(clock_.now(), Direction::toController, bytes);
  inner_.write(bytes);
}

std::vector<std::uint8_t> RecordedPort::readAll() {
  auto bytes = inner_.readAll();
  recorder_.add(clock_.now(), Direction::fromController, bytes);
  return bytes;
}

std::optional<std::string> ReplayPort::open() {
  if (isOpen()) return std::nullopt;
  start_ = clock_.now();
  next_ = 0;
  return std::nullopt;
}

bool ReplayPort::isDue(const Transfer& transfer) const {
  return start_ && clock_.now() - *start_ >= transfer.time;
}

std::size_t ReplayPort::inBufferCount() {
  std::size_t count = 0;
  for (std::size_t i = next_; i < recording_.size() && isDue(recording_[i]); ++i) {
    if (recording_[i].direction == Direction::fromController) count += recording_[i].bytes.size();
  }
  return count;
}

std::vector<std::uint8_t> ReplayPort::readAll() {
  std::vector<std::uint8_t> bytes;
  for (; next_ < recording_.size() && isDue(recording_[next_]); ++next_) {
    const Transfer& transfer = recording_[next_];
    if (transfer.direction == Direction::toController) continue;
    bytes.insert(bytes.end(), transfer.bytes.begin(), transfer.bytes.end());
  }
  return bytes;
}

}  // namespace touch
