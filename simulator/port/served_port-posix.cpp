#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#if defined(__linux__)
#include <pty.h>
#else
#include <util.h>
#endif
#include <termios.h>

#include <array>
#include <cerrno>
#include <optional>
#include <span>
#include <thread>
#include <utility>
#include <vector>

#include "simulator/port/served_port.h"
#include "support/alarm-posix.h"

namespace touch::simulator {

namespace {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) { fcntl(number, F_SETFD, FD_CLOEXEC); }
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() {
    if (number_ >= 0) close(number_);
  }

  int number() const { return number_; }
  // A full line loses bytes instead of holding up the controller.
  void neverWait() const { fcntl(number_, F_SETFL, fcntl(number_, F_GETFL) | O_NONBLOCK); }

 private:
  int number_ = -1;
};

struct Terminal {
  FileDescriptor controllerEnd;
  // Kept open, so that the line does not hang up whenever a program closes the device.
  FileDescriptor device;
  std::string path;
};

std::optional<Terminal> openTerminal() {
  termios raw{};
  cfmakeraw(&raw);
  cfsetspeed(&raw, B9600);
  raw.c_cflag |= CREAD | CLOCAL;
  int controllerEnd = -1;
  int device = -1;
  if (openpty(&controllerEnd, &device, nullptr, &raw, nullptr) != 0) return std::nullopt;
  Terminal terminal{FileDescriptor(controllerEnd), FileDescriptor(device), {}};
  terminal.controllerEnd.neverWait();
  std::array<char, 128> path{};
  if (ttyname_r(device, path.data(), path.size()) != 0) return std::nullopt;
  terminal.path = path.data();
  return terminal;
}

std::vector<std::uint8_t> readAll(int descriptor) {
  std::vector<std::uint8_t> bytes(256);
  const auto count = read(descriptor, bytes.data(), bytes.size());
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

constexpr std::pair<speed_t, int> lineSpeeds[] = {
    {B50, 50},           {B75, 75},           {B110, 110},         {B134, 134},
    {B150, 150},         {B200, 200},         {B300, 300},         {B600, 600},
    {B1200, 1200},       {B1800, 1800},       {B2400, 2400},       {B4800, 4800},
    {B9600, 9600},       {B19200, 19200},     {B38400, 38400},     {B57600, 57600},
    {B115200, 115200},   {B230400, 230400},
// Beyond these the platforms go their own ways.
#ifdef B460800
    {B460800, 460800},
#endif
#ifdef B500000
    {B500000, 500000},   {B576000, 576000},
#endif
#ifdef B921600
    {B921600, 921600},
#endif
#ifdef B1000000
    {B1000000, 1000000}, {B1152000, 1152000}, {B1500000, 1500000}, {B2000000, 2000000},
#endif
#ifdef B4000000
    {B2500000, 2500000}, {B3000000, 3000000}, {B3500000, 3500000}, {B4000000, 4000000},
#endif
};

/// How the program at the device writes its bytes to a controller that writes them in `own`. A
/// pseudo-terminal keeps the stop bits, but neither data bits nor parity: where the stop bits are
/// right, these count as right too.
LineFormat formatAt(int controllerEnd, const LineFormat& own) {
  termios line{};
  if (tcgetattr(controllerEnd, &line) != 0) return own;
  const int stopBits = (line.c_cflag & CSTOPB) != 0 ? 2 : 1;
  if (stopBits == own.stopBits) return own;
  return stopBits == 2 ? LineFormat::sevenN2 : LineFormat::eightN1;
}

/// The speed that the program at the device has set; nothing for one that no controller has.
std::optional<int> speedAt(int controllerEnd) {
  termios line{};
  if (tcgetattr(controllerEnd, &line) != 0) return std::nullopt;
  for (const auto& [constant, baud] : lineSpeeds)
    if (cfgetospeed(&line) == constant) return baud;
  return std::nullopt;
}

void writeOrLose(int descriptor, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const auto count = write(descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

class PseudoTerminal final : public ServedPort {
 public:
  PseudoTerminal(Terminal terminal, const ControllerEnd& controller)
      : terminal_(std::move(terminal)),
        controller_(controller),
        thread_([this](const std::stop_token& stopped) { serve(stopped); }) {}
  ~PseudoTerminal() override { stop(); }

  const std::string& path() const override { return terminal_.path; }
  void wake() override { alarm_.ring(); }
  void stop() override {
    thread_.request_stop();
    wake();
  }

 private:
  void serve(const std::stop_token& stopped) {
    const int line = terminal_.controllerEnd.number();
    std::vector<std::uint8_t> input;
    while (const auto turn = controller_.takeTurn(stopped, input, [line](const LineFormat& own) {
      return UserLine{formatAt(line, own), speedAt(line)};
    })) {
      writeOrLose(line, turn->output);
      input = waitForInput(turn->wait);
    }
  }

  std::vector<std::uint8_t> waitForInput(std::optional<std::chrono::milliseconds> wait) {
    std::array<pollfd, 2> sources{
        {{terminal_.controllerEnd.number(), POLLIN, 0}, {alarm_.descriptor(), POLLIN, 0}}};
    if (poll(sources.data(), sources.size(), wait ? static_cast<int>(wait->count()) : -1) <= 0)
      return {};
    if (sources[1].revents != 0) alarm_.silence();
    return sources[0].revents != 0 ? readAll(terminal_.controllerEnd.number())
                                   : std::vector<std::uint8_t>();
  }

  Terminal terminal_;
  Alarm alarm_;
  ControllerEnd controller_;
  std::jthread thread_;  // last: it ends before what it uses goes
};

}  // namespace

std::vector<int> ServedPort::speeds() {
  std::vector<int> speeds;
  for (const auto& [constant, baud] : lineSpeeds)
    speeds.push_back(baud);
  return speeds;
}

std::unique_ptr<ServedPort> ServedPort::open(const ControllerEnd& controller) {
  auto terminal = openTerminal();
  if (!terminal) return nullptr;
  return std::make_unique<PseudoTerminal>(std::move(*terminal), controller);
}

}  // namespace touch::simulator
