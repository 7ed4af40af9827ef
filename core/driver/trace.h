#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/driver/driver.h"
#include "core/serial_port.h"
#include "support/files/system_file.h"

namespace touch {

/// Where every driver call and every serial transfer is written while tracing is on: one JSON
/// object a line, with the time in UTC. Bytes are written in hexadecimal. Off until started.
class Trace {
 public:
  /// A day's work. What is forgotten while it is on must not fill the disk.
  static constexpr std::size_t largest = std::size_t{256} << 20U;

  /// It ends by itself behind `limit` bytes.
  explicit Trace(std::size_t limit = largest) : limit_(limit) {}

  /// Starts a new trace in `file`, which must not be a link or another user's.
  Result<void, std::string> start(const std::filesystem::path& file);
  void stop();
  bool isOn() const { return file_ != nullptr; }
  /// Why the trace ended before it was stopped, once: a full disk ends it, and its limit.
  std::optional<std::string> takeBreak() { return std::exchange(break_, std::nullopt); }
  /// Where it is, or was last, written.
  const std::filesystem::path& path() const { return path_; }
  /// The last `limit` bytes that were written, without the rest of a line that begins before them.
  /// Nothing when they cannot be read.
  std::optional<std::string> end(std::size_t limit) const;

  /// `members` are JSON members without the surrounding braces, e.g. "\"call\":\"IsPenUp\"".
  void write(std::string_view members);

 private:
  /// False, with the reason in `errno`, when it could not be written; then nothing of it is.
  bool put(const std::string& line);
  void breakOff(std::string why);

  std::size_t limit_;
  std::size_t written_ = 0;
  File file_;
  std::filesystem::path path_;
  std::optional<std::string> break_;
};

/// A driver that is traced. The inner driver outlives it.
class TracingDriver final : public Driver {
 public:
  TracingDriver(Driver& inner, Trace& trace) : inner_(inner), trace_(trace) {}

#define TOUCH_TRACED(name, parameters, arguments) std::int32_t name parameters override;
  NEXAPI_OPERATIONS(TOUCH_TRACED)
#undef TOUCH_TRACED
  bool isSimulated() const override {
    return inner_.isSimulated();
  }
  Result<std::string, std::string> simulate(const std::string& request) override {
    return inner_.simulate(request);
  }
  std::vector<std::string_view> missing() const override {
    return inner_.missing();
  }
  DriverReport report() const override {
    return inner_.report();
  }
  void revive() override {
    inner_.revive();
  }

 private:
  Driver& inner_;
  Trace& trace_;
};

/// A serial port that is traced.
class TracingSerialPort final : public SerialPort {
 public:
  TracingSerialPort(std::unique_ptr<SerialPort> inner, Trace& trace)
      : inner_(std::move(inner)), trace_(trace) {}

  Result<void, std::string> setSettings(std::string_view settings) override;
  void selectPort(int number) override;
  Result<void, std::string> open() override;
  void close() override;
  bool isOpen() const override { return inner_->isOpen(); }
  std::string sharedWith() const override { return inner_->sharedWith(); }
  std::optional<std::string> lost() const override { return inner_->lost(); }
  std::size_t inBufferCount() override { return inner_->inBufferCount(); }
  void clearInput() override;
  void clearOutput() override;
  bool write(std::span<const std::uint8_t> bytes) override;
  std::vector<std::uint8_t> readAll() override;
  std::vector<ReadPart> readParts() const override { return inner_->readParts(); }
  std::size_t takeDamaged() override { return inner_->takeDamaged(); }
  std::optional<LineState> lineState() override { return inner_->lineState(); }
  bool switchLine(LineSwitch which, bool on) override;
  std::optional<int> descriptor() const override { return inner_->descriptor(); }

 private:
  void note(std::string_view operation, std::string_view argument = {});

  std::unique_ptr<SerialPort> inner_;
  Trace& trace_;
};

}  // namespace touch
