#include "serial/recording_ports.h"

#include <algorithm>
#include <span>
#include <utility>

namespace touch {

namespace {

using namespace std::chrono_literals;

// Less than half a packet takes on the line: a recording tells when each report came.
constexpr auto recordingInterval = 2ms;
// A minute of an endless stream. A line that nobody reads loses what comes then, and the recording does not.
constexpr std::size_t mostWaiting = std::size_t{64} << 10U;

}  // namespace

RecordedPort::RecordedPort(SerialPort& inner, Clock& clock)
    : inner_(inner), clock_(clock), timer_(clock.makeTimer([this] {
        collect();
        if (!isRecording()) timer_->stop();
      })) {}

std::optional<FileError> RecordedPort::startRecording(const std::filesystem::path& file) {
  collect();
  auto failed = recorder_.start(file, clock_.now());
  if (!failed) timer_->start(recordingInterval);
  return failed;
}

std::optional<FileError> RecordedPort::stopRecording() {
  if (isRecording()) collect();
  timer_->stop();
  return recorder_.stop();
}

std::optional<std::string> RecordedPort::open() {
  if (!isOpen()) waiting_.clear();
  return inner_.open();
}

void RecordedPort::close() {
  if (isRecording()) collect();
  inner_.close();
  waiting_.clear();
}

void RecordedPort::collect() {
  const auto bytes = inner_.readAll();
  recorder_.add(clock_.now(), Direction::fromController, bytes);
  const auto taken = std::min(bytes.size(), mostWaiting - std::min(mostWaiting, waiting_.size()));
  waiting_.insert(waiting_.end(), bytes.begin(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(taken));
}

void RecordedPort::clearInput() {
  if (isRecording()) {
    collect();
  } else {
    inner_.clearInput();
  }
  waiting_.clear();
}

bool RecordedPort::write(std::span<const std::uint8_t> bytes) {
  const auto begun = clock_.now();
  if (!inner_.write(bytes)) return false;
  recorder_.add(begun, Direction::toController, bytes);
  return true;
}

std::vector<std::uint8_t> RecordedPort::readAll() {
  collect();
  return std::exchange(waiting_, {});
}

std::optional<std::string> ReplayPort::open() {
  if (isOpen()) return std::nullopt;
  start_ = clock_.now();
  next_ = 0;
  taken_ = 0;
  return std::nullopt;
}

bool ReplayPort::isDue(const Transfer& transfer) const {
  return start_ && clock_.now() - *start_ >= transfer.time;
}

std::size_t ReplayPort::inBufferCount() {
  std::size_t count = 0;
  for (std::size_t i = next_; i < recording_.size() && isDue(recording_[i]); ++i) {
    if (recording_[i].direction == Direction::toController) continue;
    count += recording_[i].bytes.size() - (i == next_ ? taken_ : 0);
  }
  return count;
}

void ReplayPort::clearInput() {
  while (!readAll().empty()) {
  }
}

std::vector<std::uint8_t> ReplayPort::readAll() {
  std::vector<std::uint8_t> bytes;
  while (next_ < recording_.size() && isDue(recording_[next_])) {
    const Transfer& transfer = recording_[next_];
    if (transfer.direction == Direction::fromController) {
      const auto rest = std::span(transfer.bytes).subspan(taken_);
      const auto part = rest.first(std::min(rest.size(), mostInOneRead - bytes.size()));
      bytes.insert(bytes.end(), part.begin(), part.end());
      taken_ += part.size();
      if (part.size() < rest.size()) break;
    }
    ++next_;
    taken_ = 0;
  }
  return bytes;
}

}  // namespace touch
