#include "bench/tools/paced_line.h"

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "bench/tools/processor_time.h"

namespace touch::bench {

using std::chrono::steady_clock;

namespace {
constexpr double bitsPerByte = 10;  // start bit, eight data bits, stop bit
constexpr std::chrono::milliseconds step{10};
}  // namespace

PacedLine::PacedLine(std::vector<std::uint8_t> bytes, int baud)
    : bytes_(std::move(bytes)), bytesPerSecond_(baud / bitsPerByte) {
  termios raw{};
  cfmakeraw(&raw);
  raw.c_cflag |= CREAD | CLOCAL;
  if (openpty(&controllerEnd_, &deviceEnd_, nullptr, &raw, nullptr) != 0) {
    throw std::runtime_error("no pseudo-terminal");
  }
  // Whoever does not read must not hold up the end.
  fcntl(controllerEnd_, F_SETFL, fcntl(controllerEnd_, F_GETFL) | O_NONBLOCK);
  device_ = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(deviceEnd_));
}

PacedLine::~PacedLine() {
  stop();
  close(controllerEnd_);
  close(deviceEnd_);
}

void PacedLine::start() {
  sender_ = std::jthread([this](const std::stop_token& stopped) { send(stopped); });
}

void PacedLine::stop() {
  sender_.request_stop();
  if (sender_.joinable()) sender_.join();
}

void PacedLine::send(const std::stop_token& stopped) {
  const auto begin = steady_clock::now();
  const std::size_t before = sentBytes_;
  for (auto next = begin + step; !stopped.stop_requested(); next += step) {
    std::this_thread::sleep_until(next);
    const std::chrono::duration<double> passed = steady_clock::now() - begin;
    const auto due = before + static_cast<std::size_t>(passed.count() * bytesPerSecond_);
    wasDrained_ = true;
    while (sentBytes_ < due) {
      const std::size_t place = sentBytes_ % bytes_.size();
      const auto written = ::write(controllerEnd_, bytes_.data() + place,
                                   std::min(due - sentBytes_, bytes_.size() - place));
      if (written > 0) {
        sentBytes_ += static_cast<std::size_t>(written);
        continue;
      }
      if (errno != EAGAIN) return;
      wasDrained_ = false;
      break;
    }
  }
  processorSeconds_ = bench::processorSeconds(CLOCK_THREAD_CPUTIME_ID);
}

}  // namespace touch::bench
