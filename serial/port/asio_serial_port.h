#pragma once

#include <chrono>
#include <memory>
#include <system_error>

#include "core/serial_port.h"
#include "ports/com_ports.h"
#include "serial/port/line_settings.h"

namespace touch {

/// A serial port of this machine. While it is open no other program gets at it. Nothing here
/// throws, and nothing waits for the other end longer than the transfer limit.
class AsioSerialPort final : public SerialPort {
 public:
  static constexpr std::chrono::milliseconds usualTransferLimit{1000};
  /// When bytes came: at their reading as far as this port knows, or as `readParts` tells by the
  /// system's steady clock, where the platform wakes somebody for them.
  enum class Times : std::uint8_t { ofReading, ofArrival };

  /// What the line has not taken of a write within `transferLimit` is thrown away.
  explicit AsioSerialPort(ComPorts ports,
                          std::chrono::milliseconds transferLimit = usualTransferLimit,
                          Times times = Times::ofReading);
  /// As the programs have it.
  static std::unique_ptr<AsioSerialPort> withTrueTimes(ComPorts ports);
  ~AsioSerialPort() override;

  Result<void, std::string> setSettings(std::string_view settings) override;
  void selectPort(int number) override;
  Result<void, std::string> open() override;
  void close() override;
  bool isOpen() const override { return line_ != nullptr; }
  std::string sharedWith() const override { return sharedWith_; }
  std::optional<std::string> lost() const override { return lost_; }

  std::size_t inBufferCount() override;
  void clearInput() override;
  void clearOutput() override;
  bool write(std::span<const std::uint8_t> bytes) override;
  std::vector<std::uint8_t> readAll() override;
  std::vector<ReadPart> readParts() const override { return readParts_; }
  std::size_t takeDamaged() override;
  std::optional<LineState> lineState() override;
  bool switchLine(LineSwitch which, bool on) override;
  std::optional<int> descriptor() const override;

 private:
  class Line;
  struct Received {
    std::vector<std::uint8_t> bytes;
    std::vector<ReadPart> parts;
  };

  /// Takes in what has arrived.
  void collect();
  /// Closes the port when `error` is one, and keeps the reason.
  void loseOn(const std::error_code& error);
  std::string cannotOpen(const std::error_code& error) const;
  std::string refusesSettings(const LineSettings& settings, const std::error_code& error) const;

  ComPorts ports_;
  std::chrono::milliseconds transferLimit_;
  Times times_;
  LineSettings settings_;
  int number_ = 1;
  std::unique_ptr<Line> line_;  ///< null while closed
  std::optional<std::string> lost_;
  Received left_;  ///< what had come before it was lost, and is to be read
  std::vector<ReadPart> readParts_;
  std::string sharedWith_;
};

}  // namespace touch
