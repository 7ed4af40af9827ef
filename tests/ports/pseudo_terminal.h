#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "ports/com_ports.h"
#include "tests/doubles/test.h"

namespace touch::test {

/// The far end of a serial line: a pseudo-terminal whose device a serial port opens. Until then it
/// echoes and waits for whole lines, as terminals do.
class PseudoTerminal {
 public:
  PseudoTerminal() {
    if (openpty(&master_, &device_, nullptr, nullptr, nullptr) != 0) {
      throw std::runtime_error("no pseudo-terminal");
    }
    fcntl(master_, F_SETFL, fcntl(master_, F_GETFL) | O_NONBLOCK);
    // A program that held it too would never see it unplugged.
    for (const int end : {master_, device_})
      fcntl(end, F_SETFD, FD_CLOEXEC);
    path_ = fs::read_symlink("/proc/self/fd/" + std::to_string(device_));
  }
  ~PseudoTerminal() {
    unplug();
    ::close(device_);
  }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  const std::string& path() const { return path_; }
  /// Ports of which this is number `number`, whatever the machine has there.
  ComPorts asPort(int number) const {
    ComPorts ports;
    ports.assign(std::to_string(number) + '=' + path_);
    return ports;
  }

  /// Returns when the bytes have arrived at the device.
  void send(std::span<const std::uint8_t> bytes) const {
    const int before = arrived();
    flood(bytes);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (arrived() < before + std::ssize(bytes) && std::chrono::steady_clock::now() < deadline) {
      poll(nullptr, 0, 1);
    }
  }

  /// The next `count` bytes; fewer when they do not come although given ample time.
  std::vector<std::uint8_t> receive(std::size_t count) const {
    std::vector<std::uint8_t> all;
    pollfd state{master_, POLLIN, 0};
    std::uint8_t byte = 0;
    while (all.size() < count && poll(&state, 1, static_cast<int>(patience.count())) > 0 &&
           ::read(master_, &byte, 1) == 1) {
      all.push_back(byte);
    }
    return all;
  }

  /// Sends as fast as the line takes it, whatever its length.
  void flood(std::span<const std::uint8_t> bytes) const {
    pollfd state{master_, POLLOUT, 0};
    while (!bytes.empty() && poll(&state, 1, static_cast<int>(patience.count())) > 0) {
      const auto part = ::write(master_, bytes.data(), bytes.size());
      if (part > 0) bytes = bytes.subspan(static_cast<std::size_t>(part));
    }
  }

  /// The settings of the line as its user made them.
  termios settings() const {
    termios line{};
    tcgetattr(master_, &line);
    return line;
  }

  bool isPluggedIn() const { return master_ >= 0; }
  void unplug() {
    if (master_ >= 0) ::close(std::exchange(master_, -1));
  }

 private:
  static constexpr std::chrono::milliseconds patience{5000};

  int arrived() const {
    int count = 0;
    ioctl(device_, FIONREAD, &count);
    return count;
  }

  int master_ = -1;
  int device_ = -1;  ///< kept open only to see what has arrived
  std::string path_;
};

}  // namespace touch::test
