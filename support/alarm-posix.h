#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <system_error>

namespace touch {

/// Wakes who waits with `poll` for its descriptor. To be rung by any thread.
class Alarm {
 public:
  /// Throws std::system_error when the system has no more descriptors.
  Alarm() {
    if (pipe(ends_.data()) != 0) throw std::system_error(errno, std::system_category());
    for (const int end : ends_) {
      fcntl(end, F_SETFD, FD_CLOEXEC);
      fcntl(end, F_SETFL, fcntl(end, F_GETFL) | O_NONBLOCK);
    }
  }
  Alarm(const Alarm&) = delete;
  Alarm& operator=(const Alarm&) = delete;
  ~Alarm() {
    for (const int end : ends_)
      close(end);
  }

  /// Readable from the ringing on until it is silenced.
  int descriptor() const { return ends_[0]; }
  void ring() const {
    const std::uint8_t anything = 0;
    // A full pipe rings already.
    [[maybe_unused]] const auto written = write(ends_[1], &anything, 1);
  }
  void silence() const {
    std::array<std::uint8_t, 64> dropped{};
    while (read(ends_[0], dropped.data(), dropped.size()) > 0) {
    }
  }

 private:
  std::array<int, 2> ends_{};
};

}  // namespace touch
