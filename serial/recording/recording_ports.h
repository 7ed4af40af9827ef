#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/serial_port.h"
#include "serial/recording/recording.h"
#include "support/clock.h"

namespace touch {

/// A serial port that can be recorded: every byte that goes out or comes in, when it does, whoever
/// sends or reads it, and whether anybody reads at all. Of a flood it takes in between what a slow
/// reader will ask for, so that the line does not run over; where times are kept, of everything
/// that comes while it is used. What it is made of outlives it.
class RecordedPort final : public SerialPort {
 public:
  static constexpr std::ptrdiff_t mostInOneRead = std::ptrdiff_t{64} << 10U;

  RecordedPort(SerialPort& inner, Clock& clock);

  /// Starts a new recording in `file`. What has come in before is not of it. Of the head it fills
  /// in when it began, and how the port was set through this.
  Status startRecording(const std::filesystem::path& file, RecordingHead head = {});
  /// Ends the recording. The error is what has gone wrong since it was started.
  Status stopRecording();
  /// Told of what comes in, and when, whoever reads it and whether anybody does; null: nobody is.
  using Listener = std::function<void(Clock::TimePoint, std::span<const std::uint8_t>)>;
  void listen(Listener listener);
  bool isListenedTo() const { return listener_ != nullptr; }
  /// Whether readParts is to tell when the bytes came, and not only when they were asked for.
  void keepTimes(bool on) { keepsTimes_ = on; }
  /// A recording that cannot be written on ends itself.
  bool isRecording() const { return recorder_.isOn(); }

  /// Bytes since this was made.
  std::uint64_t sentBytes() const { return sent_; }
  std::uint64_t receivedBytes() const { return received_; }

  Result<void, std::string> setSettings(std::string_view settings) override;
  void selectPort(int number) override;
  Result<void, std::string> open() override;
  void close() override;
  bool isOpen() const override { return inner_.isOpen(); }
  std::string sharedWith() const override { return inner_.sharedWith(); }
  std::optional<std::string> lost() const override { return inner_.lost(); }
  std::size_t inBufferCount() override;
  /// What is cleared has come in as well, so while recording it is read instead.
  void clearInput() override;
  void clearOutput() override { inner_.clearOutput(); }
  /// Recorded when it has gone out.
  bool write(std::span<const std::uint8_t> bytes) override;
  /// At most `mostInOneRead`: whoever reads must not be held up by a flood.
  std::vector<std::uint8_t> readAll() override;
  std::vector<ReadPart> readParts() const override { return readParts_; }
  std::size_t takeDamaged() override { return inner_.takeDamaged(); }
  std::optional<LineState> lineState() override { return inner_.lineState(); }
  bool switchLine(LineSwitch which, bool on) override { return inner_.switchLine(which, on); }
  std::optional<int> descriptor() const override { return inner_.descriptor(); }

 private:
  /// Takes what has come in off the line, for whoever reads next.
  void collect();
  void takeIn();
  void forgetWaiting();
  bool isKeepingUp() const;
  void keepUp();
  /// A reader has found so many bytes.
  void keepUpWith(std::size_t found);

  SerialPort& inner_;
  Clock& clock_;
  Recorder recorder_;
  std::uint64_t sent_ = 0;
  std::uint64_t received_ = 0;
  std::string portName_;
  std::string settings_;
  bool isLost_ = false;                ///< the recording says so
  std::vector<std::uint8_t> waiting_;  ///< come in, and read by nobody yet
  std::vector<ReadPart> waitingParts_;
  std::vector<ReadPart> readParts_;
  bool keepsTimes_ = false;
  Listener listener_;
  Clock::TimePoint collected_{};
  Clock::TimePoint lastRead_{};
  Clock::TimePoint keepUpEnd_{};
  std::unique_ptr<Timer> timer_;  ///< runs while recording, listened to, or keeping up
};

/// A port on which a recording comes in again, at its own pace from the moment of opening, but for
/// the silence before its first byte. What is written to it goes nowhere. Opened again, it begins
/// anew. What was sent when it was recorded is told when its turn comes: whatever came in before is
/// read first.
class ReplayPort final : public SerialPort {
 public:
  using Time = std::chrono::microseconds;  ///< since the recording began
  static constexpr std::size_t mostInOneRead = std::size_t{64} << 10U;

  ReplayPort(std::unique_ptr<TransferSource> recording, const Clock& clock);

  /// Told of what was sent to the controller. May be empty.
  std::function<void(std::span<const std::uint8_t>)> onSent;
  /// When the turn came of what was told last.
  Clock::TimePoint sentAt() const { return sentAt_; }

  /// When the last byte passed the port.
  Time length() const { return recording_->length(); }
  /// How the line was set, where that is known.
  std::optional<LineSettings> line() const { return recording_->line(); }
  Time position() const { return std::min(played(), length()); }
  /// What of the recording was, or will be, due at `time` unless it is held, moved or sped up.
  Time positionAt(Clock::TimePoint time) const;
  /// Goes on with what passed the port from then on.
  void seek(Time time);
  /// How many times as fast as it was; more than 0. It stays when it is opened again.
  void setSpeed(double speed);
  double speed() const { return speed_; }
  void pause(bool on);
  bool isPaused() const { return paused_; }
  /// While paused: lets the next transfer pass.
  void step();

  Result<void, std::string> setSettings(std::string_view) override { return {}; }
  void selectPort(int) override {}
  Result<void, std::string> open() override;
  void close() override { open_ = false; }
  bool isOpen() const override { return open_; }
  std::optional<std::string> lost() const override { return std::nullopt; }
  /// At most `mostInOneRead`, as for readAll.
  std::size_t inBufferCount() override;
  void clearInput() override;
  void clearOutput() override {}
  bool write(std::span<const std::uint8_t>) override { return isOpen(); }
  /// At most `mostInOneRead`, however much is due: whoever reads must not be held up by a long
  /// recording.
  std::vector<std::uint8_t> readAll() override;
  /// With the times at which they were due.
  std::vector<ReadPart> readParts() const override { return readParts_; }

  /// All of it has been read, or as much as could be.
  bool isFinished() const { return !next_ && waiting_.empty(); }
  /// Why it could not be read on.
  std::optional<FileError> error() const { return recording_->error(); }

 private:
  void advance();
  Time played() const;
  /// Goes on from `time`, now.
  void goOnFrom(Time time);
  bool isDue() const;
  /// When the next transfer was due.
  Clock::TimePoint dueAt() const;
  void collect();

  std::unique_ptr<TransferSource> recording_;
  const Clock& clock_;
  bool open_ = false;
  bool paused_ = false;
  double speed_ = 1;
  Clock::TimePoint since_{};  ///< when it had come to `from_`
  Time from_{};
  std::optional<Transfer> next_;
  std::size_t taken_ = 0;              ///< bytes of it that are due
  std::vector<std::uint8_t> waiting_;  ///< due, and not read
  std::vector<ReadPart> waitingParts_;
  std::vector<ReadPart> readParts_;
  Clock::TimePoint sentAt_{};
};

}  // namespace touch
