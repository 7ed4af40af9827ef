#pragma once

#include <cstdint>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace touch::bench {

/// The far end of a serial line: a pseudo-terminal at which a controller sends `bytes` over and
/// over, as fast as so many baud carry them, or as fast as they are read.
class PacedLine {
 public:
  explicit PacedLine(std::vector<std::uint8_t> bytes, int baud = 9600);
  ~PacedLine();
  PacedLine(const PacedLine&) = delete;
  PacedLine& operator=(const PacedLine&) = delete;

  const std::string& device() const { return device_; }
  void start();
  void stop();
  // Of the sending, once it has stopped.
  double processorSeconds() const { return processorSeconds_; }
  std::size_t sentBytes() const { return sentBytes_; }
  /// All that was due was taken.
  bool wasDrained() const { return wasDrained_; }

 private:
  void send(const std::stop_token& stopped);

  std::vector<std::uint8_t> bytes_;
  double bytesPerSecond_;
  int controllerEnd_ = -1;
  int deviceEnd_ = -1;  ///< kept open, so that the line does not hang up
  std::string device_;
  double processorSeconds_ = 0;
  std::size_t sentBytes_ = 0;
  bool wasDrained_ = false;
  std::jthread sender_;
};

}  // namespace touch::bench
