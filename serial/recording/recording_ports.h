#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/serial_port.h"
#include "serial/recording/recording.h"
#include "support/clock.h"

namespace touch {

/// A serial port that can be recorded: every byte that goes out or comes in, when it does, whoever
/// sends or reads it, and whether anybody reads at all. What it is made of outlives it.
class RecordedPort final : public SerialPort {
 public:
  RecordedPort(SerialPort& inner, Clock& clock);

  /// Starts a new recording in `file`. What has come in before is not of it. Of the head it fills
  /// in when it began, and how the port was set through this.
  Status startRecording(const std::filesystem::path& file, RecordingHead head = {});
  /// Ends the recording. The error is what has gone wrong since it was started.
  Status stopRecording();
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
  std::size_t inBufferCount() override { return waiting_.size() + inner_.inBufferCount(); }
  /// What is cleared has come in as well, so while recording it is read instead.
  void clearInput() override;
  void clearOutput() override { inner_.clearOutput(); }
  /// Recorded when it has gone out.
  bool write(std::span<const std::uint8_t> bytes) override;
  std::vector<std::uint8_t> readAll() override;
  std::size_t takeDamaged() override { return inner_.takeDamaged(); }
  std::optional<LineState> lineState() override { return inner_.lineState(); }
  bool switchLine(LineSwitch which, bool on) override { return inner_.switchLine(which, on); }
  std::optional<int> descriptor() const override { return inner_.descriptor(); }

 private:
  /// Takes what has come in off the line, for whoever reads next.
  void collect();

  SerialPort& inner_;
  Clock& clock_;
  Recorder recorder_;
  std::uint64_t sent_ = 0;
  std::uint64_t received_ = 0;
  std::string portName_;
  std::string settings_;
  std::vector<std::uint8_t> waiting_;  ///< come in, and read by nobody yet
  std::unique_ptr<Timer> timer_;       ///< runs while recording
};

/// A port on which a recording comes in again, at its own pace from the moment of opening, but for
/// the silence before the controller's first byte. What is written to it goes nowhere. Opened
/// again, it begins anew.
class ReplayPort final : public SerialPort {
 public:
  static constexpr std::size_t mostInOneRead = std::size_t{64} << 10U;

  ReplayPort(std::unique_ptr<TransferSource> recording, const Clock& clock);

  Result<void, std::string> setSettings(std::string_view) override { return {}; }
  void selectPort(int) override {}
  Result<void, std::string> open() override;
  void close() override { start_.reset(); }
  bool isOpen() const override { return start_.has_value(); }
  std::optional<std::string> lost() const override { return std::nullopt; }
  /// At most `mostInOneRead`, as for readAll.
  std::size_t inBufferCount() override;
  void clearInput() override;
  void clearOutput() override {}
  bool write(std::span<const std::uint8_t>) override { return isOpen(); }
  /// At most `mostInOneRead`, however much is due: whoever reads must not be held up by a long
  /// recording.
  std::vector<std::uint8_t> readAll() override;

  /// All of it has been read, or as much as could be.
  bool isFinished() const { return !next_ && waiting_.empty(); }
  /// Why it could not be read on.
  std::optional<FileError> error() const { return recording_->error(); }

 private:
  void advance();
  bool isDue() const;
  void collect();

  std::unique_ptr<TransferSource> recording_;
  const Clock& clock_;
  std::optional<Clock::TimePoint> start_;  ///< while open
  std::optional<Transfer> next_;           ///< from the controller
  std::size_t taken_ = 0;                  ///< bytes of it that are due
  std::chrono::microseconds silence_{};    ///< before its first byte
  std::vector<std::uint8_t> waiting_;      ///< due, and not read
};

}  // namespace touch
