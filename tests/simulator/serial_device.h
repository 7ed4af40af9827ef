#pragma once

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace touch::simulator {

/// A device as a program sees it that talks to a controller over its serial port.
class SerialDevice {
 public:
  explicit SerialDevice(const std::string& path)
      : descriptor_(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {}
  SerialDevice(const SerialDevice&) = delete;
  SerialDevice& operator=(const SerialDevice&) = delete;
  ~SerialDevice() {
    if (descriptor_ >= 0) close(descriptor_);
  }

  bool isOpen() const { return descriptor_ >= 0; }
  /// Whether the other end is gone. Its path may be another line's by then, but not while this is open.
  bool hasHungUp() const {
    pollfd source{descriptor_, POLLIN, 0};
    return poll(&source, 1, 0) == 1 && (source.revents & POLLHUP) != 0;
  }
  bool send(std::string_view bytes) const {
    return write(descriptor_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }
  void setTwoStopBits(bool two) const {
    termios line{};
    tcgetattr(descriptor_, &line);
    line.c_cflag = two ? line.c_cflag | CSTOPB : line.c_cflag & ~tcflag_t{CSTOPB};
    tcsetattr(descriptor_, TCSANOW, &line);
  }
  /// The next `count` bytes; fewer when the line hangs up, or when they do not come although given
  /// ample time.
  std::string receive(std::size_t count) const {
    std::string received;
    while (received.size() < count) {
      pollfd source{descriptor_, POLLIN, 0};
      constexpr int ample = 10'000;
      if (poll(&source, 1, ample) <= 0) break;
      std::array<char, 256> bytes{};
      const auto got =
          read(descriptor_, bytes.data(), std::min(bytes.size(), count - received.size()));
      if (got <= 0) break;
      received.append(bytes.data(), static_cast<std::size_t>(got));
    }
    return received;
  }

 private:
  int descriptor_;
};

}  // namespace touch::simulator
