#pragma once

#include <memory>
#include <vector>

#include "core/clock.h"
#include "core/serial_port.h"
#include "serial/recording.h"

namespace touch {

/// A serial port that can be recorded: every byte that goes out or comes in, when it does, whoever sends or reads it, and
/// whether anybody reads at all. What it is made of outlives it.
class RecordedPort final : public SerialPort {
 public:
  RecordedPort(SerialPort& inner, Clock& clock);

  /// Starts a new recording in `file`; returns why it cannot be written. What has come in before is not of it.
  std::optional<FileError> startRecording(const std::filesystem::path& file);
  /// Ends the recording; returns what has gone wrong since it was started.
  std::optional<FileError> stopRecording();
  /// A recording that cannot be written on ends itself.
  bool isRecording() const { return recorder_.isOn(); }

  std::optional<std::string> setSettings(std::string_view settings) override {
    return inner_.setSettings(settings);
  }
  void selectPort(int number) override { inner_.selectPort(number); }
  std::optional<std::string> open() override;
  void close() override;
  bool isOpen() const override { return inner_.isOpen(); }
  std::string sharedWith() const override { return inner_.sharedWith(); }
  std::optional<std::string> lost() const override { return inner_.lost(); }
  std::size_t inBufferCount() override { return waiting_.size() + inner_.inBufferCount(); }
  /// What is cleared has come in as well, so while recording it is read instead.
  void clearInput() override;
  void clearOutput() override { inner_.clearOutput(); }
  void write(std::span<const std::uint8_t> bytes) override;
  std::vector<std::uint8_t> readAll() override;

 private:
  /// Takes what has come in off the line, for whoever reads next.
  void collect();

  SerialPort& inner_;
  Clock& clock_;
  Recorder recorder_;
  std::vector<std::uint8_t> waiting_;  ///< come in, and read by nobody yet
  std::unique_ptr<Timer> timer_;       ///< runs while recording
};

/// A port on which a recording comes in again, at its own pace from the moment of opening. What is written to it goes
/// nowhere. Opened again, it begins anew.
class ReplayPort final : public SerialPort {
 public:
  static constexpr std::size_t mostInOneRead = std::size_t{64} << 10U;

  ReplayPort(std::vector<Transfer> recording, const Clock& clock)
      : recording_(std::move(recording)), clock_(clock) {}

  std::optional<std::string> setSettings(std::string_view) override { return std::nullopt; }
  void selectPort(int) override {}
  std::optional<std::string> open() override;
  void close() override { start_.reset(); }
  bool isOpen() const override { return start_.has_value(); }
  std::optional<std::string> lost() const override { return std::nullopt; }
  std::size_t inBufferCount() override;
  void clearInput() override;
  void clearOutput() override {}
  void write(std::span<const std::uint8_t>) override {}
  /// At most `mostInOneRead`, however much is due: whoever reads must not be held up by a long recording.
  std::vector<std::uint8_t> readAll() override;

  /// All of it has been read.
  bool isFinished() const { return next_ == recording_.size(); }

 private:
  bool isDue(const Transfer& transfer) const;

  std::vector<Transfer> recording_;
  const Clock& clock_;
  std::optional<Clock::TimePoint> start_;  ///< while open
  std::size_t next_ = 0;                   ///< transfer
  std::size_t taken_ = 0;                  ///< bytes of it that have been read
};

}  // namespace touch
