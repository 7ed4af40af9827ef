#include "serial/recording/recording_ports.h"

#include <algorithm>
#include <span>
#include <utility>

namespace touch {

namespace {

using namespace std::chrono_literals;

// Less than half a packet takes on the line: a recording tells when each report came.
constexpr auto recordingInterval = 2ms;
// A minute of an endless stream. A line that nobody reads loses what comes then, and the recording
// does not.
constexpr std::size_t mostWaiting = std::size_t{64} << 10U;

}  // namespace

RecordedPort::RecordedPort(SerialPort& inner, Clock& clock)
    : inner_(inner), clock_(clock), timer_(clock.makeTimer([this] {
        collect();
        if (!isRecording() && !listener_) timer_->stop();
      })) {}

Status RecordedPort::startRecording(const std::filesystem::path& file, RecordingHead head) {
  collect();
  head.started = zonedTimeNow();
  if (head.port.empty()) head.port = portName_;
  if (head.line.empty()) head.line = settings_;
  auto started = recorder_.start(file, clock_.now(), head);
  if (started) timer_->start(recordingInterval);
  return started;
}

Status RecordedPort::stopRecording() {
  if (isRecording()) collect();
  if (!listener_) timer_->stop();
  return recorder_.stop();
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
  waiting_.clear();
  auto opened = inner_.open();
  if (opened) recorder_.remark(clock_.now(), "Opened");
  return opened;
}

void RecordedPort::close() {
  if (isRecording()) collect();
  inner_.close();
  waiting_.clear();
}

void RecordedPort::collect() {
  const auto bytes = inner_.readAll();
  received_ += bytes.size();
  recorder_.add(clock_.now(), Direction::fromController, bytes);
  if (listener_ && !bytes.empty()) listener_(clock_.now(), bytes);
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
  sent_ += bytes.size();
  recorder_.add(begun, Direction::toController, bytes);
  return true;
}

std::vector<std::uint8_t> RecordedPort::readAll() {
  collect();
  return std::exchange(waiting_, {});
}

ReplayPort::ReplayPort(std::unique_ptr<TransferSource> recording, const Clock& clock)
    : recording_(std::move(recording)), clock_(clock) {
  advance();
}

Result<void, std::string> ReplayPort::open() {
  if (isOpen()) return {};
  recording_->rewind();
  waiting_.clear();
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
  if (!open_ || paused_) return from_;
  const std::chrono::duration<double, std::micro> passed = clock_.now() - since_;
  return from_ + std::chrono::duration_cast<Time>(passed * speed_);
}

void ReplayPort::goOnFrom(Time time) {
  since_ = clock_.now();
  from_ = time;
}

void ReplayPort::seek(Time time) {
  recording_->seek(time);
  waiting_.clear();
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

void ReplayPort::collect() {
  while (isDue() && waiting_.size() < mostInOneRead) {
    if (next_->direction == Direction::toController) {
      if (!waiting_.empty()) return;
      const auto sent = std::move(next_->bytes);
      advance();
      if (onSent) onSent(sent);
      continue;
    }
    const auto rest = std::span(next_->bytes).subspan(taken_);
    const auto part = rest.first(std::min(rest.size(), mostInOneRead - waiting_.size()));
    waiting_.insert(waiting_.end(), part.begin(), part.end());
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
  return std::exchange(waiting_, {});
}

}  // namespace touch
