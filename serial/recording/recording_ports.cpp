#include "serial/recording/recording_ports.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>
#include <utility>

namespace touch {

namespace {

using namespace std::chrono_literals;

// Less than half a packet takes on the line: a recording tells when each report came.
constexpr auto recordingInterval = 2ms;
// Then the time of what was read is not true any more, and the recording says so.
constexpr auto heldUp = 50ms;
// More than half a second of the fastest line. What a slow reader has not taken then stays on the
// line; a recording takes it all the same, and the reader loses it.
constexpr std::size_t mostWaiting = std::size_t{256} << 10U;
// What a system keeps of a line is full at little more.
constexpr std::size_t flood = 3000;
// A flood is over when for so long no reader has found one, and nobody uses a port that was not
// used for so long.
constexpr auto keepingUp = 1s;
constexpr int mostReadsInOneGo = 8;

/// What came close together is one transfer, which came when its last byte did.
std::vector<ReadPart> transfersOf(const std::vector<ReadPart>& parts) {
  std::vector<ReadPart> transfers;
  Clock::TimePoint begin;
  for (const ReadPart& part : parts) {
    if (transfers.empty() || part.time - begin >= recordingInterval) {
      begin = part.time;
      transfers.push_back(part);
    } else {
      transfers.back() = {part.time, transfers.back().bytes + part.bytes};
    }
  }
  return transfers;
}

}  // namespace

RecordedPort::RecordedPort(SerialPort& inner, Clock& clock)
    : inner_(inner), clock_(clock), timer_(clock.makeTimer([this] {
        collect();
        if (!isKeepingUp()) timer_->stop();
      })) {}

bool RecordedPort::isKeepingUp() const {
  return isRecording() || listener_ || clock_.now() < keepUpEnd_;
}

void RecordedPort::keepUp() {
  keepUpEnd_ = clock_.now() + keepingUp;
  timer_->start(recordingInterval);
}

void RecordedPort::keepUpWith(std::size_t found) {
  if (found >= flood) keepUp();
}

void RecordedPort::forgetWaiting() {
  waiting_.clear();
  waitingParts_.clear();
}

Status RecordedPort::startRecording(const std::filesystem::path& file, RecordingHead head) {
  collect();
  head.started = zonedTimeNow();
  if (head.port.empty()) head.port = portName_;
  if (head.line.empty()) head.line = settings_;
  head.times = fmt::format(
      "when the last byte came; where the system does not tell, when it was read, at most "
      "{} ms later",
      std::chrono::milliseconds(recordingInterval).count());
  auto started = recorder_.start(file, clock_.now(), head);
  if (started) timer_->start(recordingInterval);
  return started;
}

Status RecordedPort::stopRecording() {
  if (isRecording()) collect();
  auto stopped = recorder_.stop();
  if (!isKeepingUp()) timer_->stop();
  return stopped;
}

void RecordedPort::listen(Listener listener) {
  listener_ = std::move(listener);
  if (listener_) timer_->start(recordingInterval);
}

Result<void, std::string> RecordedPort::setSettings(std::string_view settings) {
  // What has come in came at the settings before.
  if (isRecording()) collect();
  auto set = inner_.setSettings(settings);
  if (!set || settings == settings_) return set;
  settings_ = settings;
  recorder_.remark(clock_.now(), "Line: " + settings_);
  return set;
}

void RecordedPort::selectPort(int number) {
  inner_.selectPort(number);
  portName_ = "COM" + std::to_string(number);
  recorder_.remark(clock_.now(), "Port: " + portName_);
}

Result<void, std::string> RecordedPort::open() {
  if (isOpen()) return inner_.open();
  // The rest of what came before the device went.
  if (isRecording()) collect();
  forgetWaiting();
  auto opened = inner_.open();
  isLost_ = false;
  if (opened) recorder_.remark(clock_.now(), "Opened");
  return opened;
}

void RecordedPort::close() {
  if (isRecording()) collect();
  inner_.close();
  forgetWaiting();
}

void RecordedPort::collect() {
  takeIn();
  const bool isLost = !inner_.isOpen() && inner_.lost();
  if (isLost && !isLost_) recorder_.remark(clock_.now(), "Gone");
  isLost_ = isLost;
}

void RecordedPort::takeIn() {
  for (int i = 0; i < mostReadsInOneGo; ++i) {
    const bool isFull = waiting_.size() >= mostWaiting;
    if (isFull && !isRecording() && !listener_) return;
    const auto bytes = inner_.readAll();
    const auto now = clock_.now();
    const auto since = now - std::exchange(collected_, now);
    received_ += bytes.size();
    auto parts = transfersOf(inner_.readParts());
    if (parts.empty() && !bytes.empty()) {
      parts.push_back({now, bytes.size()});
      if (isRecording() && since > heldUp) {
        recorder_.remark(now, fmt::format("Read late: what follows came within {:.3f} s",
                                          std::chrono::duration<double>(since).count()));
      }
    }
    auto rest = std::span(bytes);
    for (const ReadPart& part : parts) {
      recorder_.add(part.time, Direction::fromController, rest.first(part.bytes));
      if (listener_) listener_(part.time, rest.first(part.bytes));
      rest = rest.subspan(part.bytes);
    }
    // The last of them may go beyond: it is off the line, and half of it would be lost.
    if (!isFull) {
      waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
      waitingParts_.insert(waitingParts_.end(), parts.begin(), parts.end());
    }
    if (bytes.size() < flood) return;
  }
}

std::size_t RecordedPort::inBufferCount() {
  const std::size_t found = waiting_.size() + inner_.inBufferCount();
  if (clock_.now() - lastRead_ < keepingUp) keepUpWith(found);
  return found;
}

void RecordedPort::clearInput() {
  if (isRecording()) {
    collect();
  } else {
    inner_.clearInput();
  }
  forgetWaiting();
}

bool RecordedPort::write(std::span<const std::uint8_t> bytes) {
  // What came before is recorded before.
  if (isRecording()) collect();
  const auto begun = clock_.now();
  if (!inner_.write(bytes)) return false;
  if (keepsTimes_) keepUp();
  sent_ += bytes.size();
  recorder_.add(begun, Direction::toController, bytes);
  return true;
}

std::vector<std::uint8_t> RecordedPort::readAll() {
  collect();
  lastRead_ = clock_.now();
  keepsTimes_ ? keepUp() : keepUpWith(waiting_.size());
  readParts_.clear();
  if (waiting_.size() <= mostInOneRead) {
    readParts_.swap(waitingParts_);
    return std::exchange(waiting_, {});
  }
  for (std::size_t rest = mostInOneRead; rest > 0;) {
    ReadPart& part = waitingParts_[readParts_.size()];
    const std::size_t bytes = std::min(rest, part.bytes);
    readParts_.push_back({part.time, bytes});
    part.bytes -= bytes;
    rest -= bytes;
  }
  std::erase_if(waitingParts_, [](const ReadPart& part) { return part.bytes == 0; });
  const auto end = waiting_.begin() + mostInOneRead;
  std::vector<std::uint8_t> first(waiting_.begin(), end);
  waiting_.erase(waiting_.begin(), end);
  return first;
}

ReplayPort::ReplayPort(std::unique_ptr<TransferSource> recording, const Clock& clock)
    : recording_(std::move(recording)), clock_(clock) {
  advance();
}

Result<void, std::string> ReplayPort::open() {
  if (isOpen()) return {};
  recording_->rewind();
  waiting_.clear();
  waitingParts_.clear();
  advance();
  open_ = true;
  paused_ = false;
  goOnFrom(next_ ? next_->time : Time(0));
  return {};
}

void ReplayPort::advance() {
  taken_ = 0;
  next_ = recording_->next();
}

ReplayPort::Time ReplayPort::played() const {
  return open_ && !paused_ ? positionAt(clock_.now()) : from_;
}

ReplayPort::Time ReplayPort::positionAt(Clock::TimePoint time) const {
  const std::chrono::duration<double, std::micro> passed = time - since_;
  return from_ + std::chrono::round<Time>(passed * speed_);
}

void ReplayPort::goOnFrom(Time time) {
  since_ = clock_.now();
  from_ = time;
}

void ReplayPort::seek(Time time) {
  recording_->seek(time);
  waiting_.clear();
  waitingParts_.clear();
  advance();
  goOnFrom(std::clamp(time, Time(0), length()));
}

void ReplayPort::setSpeed(double speed) {
  goOnFrom(played());
  speed_ = speed;
}

void ReplayPort::pause(bool on) {
  goOnFrom(played());
  paused_ = on;
}

void ReplayPort::step() {
  if (paused_ && next_) goOnFrom(std::max(from_, next_->time));
}

bool ReplayPort::isDue() const {
  return open_ && next_ && played() >= next_->time;
}

Clock::TimePoint ReplayPort::dueAt() const {
  return since_ +
         std::chrono::duration_cast<Clock::TimePoint::duration>((next_->time - from_) / speed_);
}

void ReplayPort::collect() {
  while (isDue() && waiting_.size() < mostInOneRead) {
    if (next_->direction == Direction::toController) {
      if (!waiting_.empty()) return;
      const auto sent = std::move(next_->bytes);
      sentAt_ = dueAt();
      advance();
      if (onSent) onSent(sent);
      continue;
    }
    const auto rest = std::span(next_->bytes).subspan(taken_);
    const auto part = rest.first(std::min(rest.size(), mostInOneRead - waiting_.size()));
    waiting_.insert(waiting_.end(), part.begin(), part.end());
    if (!part.empty()) waitingParts_.push_back({dueAt(), part.size()});
    taken_ += part.size();
    if (taken_ == next_->bytes.size()) advance();
  }
}

std::size_t ReplayPort::inBufferCount() {
  collect();
  return waiting_.size();
}

void ReplayPort::clearInput() {
  while (!readAll().empty()) {
  }
}

std::vector<std::uint8_t> ReplayPort::readAll() {
  collect();
  readParts_ = std::exchange(waitingParts_, {});
  return std::exchange(waiting_, {});
}

}  // namespace touch
