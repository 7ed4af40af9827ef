#include <fcntl.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <thread>
#include <utility>

#include "ports/port_holders.h"
#include "ports/port_lock.h"
#include "ports/serial_device.h"
#include "support/alarm-posix.h"
#include "support/text/language.h"

namespace touch::serial_device {

namespace {

std::error_code lastError() {
  return {errno, std::system_category()};
}

std::error_code failedIf(bool failed) {
  return failed ? lastError() : std::error_code();
}

/// Takes a device step by step, and gives back what it has got of it.
class Taken final : public Before {
 public:
  Taken(int device, PortLock lock) : lock_(std::move(lock)), device_(device) {}
  Taken(const Taken&) = delete;
  Taken& operator=(const Taken&) = delete;
  ~Taken() override {
    if (line_) tcsetattr(device_, TCSANOW, &*line_);
    // A pseudo-terminal would stay exclusive for as long as its other end is open.
    if (exclusive_) ioctl(device_, TIOCNXCL);
  }

  /// The lock keeps out programs that ask for it, even those of root; the exclusive mode all
  /// others. Whoever is refused the lock must leave the mode alone: it is the other program's.
  std::error_code keepOthersOut() {
    if (flock(device_, LOCK_EX | LOCK_NB) != 0 || ioctl(device_, TIOCEXCL) != 0) return lastError();
    exclusive_ = true;
    return {};
  }

  /// Every byte passes as it is, the modem lines do not matter, and reading never waits.
  std::error_code makeRaw() {
    termios line{};
    if (tcgetattr(device_, &line) != 0) return lastError();
    line_ = line;
    cfmakeraw(&line);
    line.c_cflag |= CREAD | CLOCAL;
    line.c_cc[VMIN] = 1;
    line.c_cc[VTIME] = 0;
    return failedIf(tcsetattr(device_, TCSANOW, &line) != 0);
  }

 private:
  PortLock lock_;  // goes last
  int device_;
  bool exclusive_ = false;
  std::optional<termios> line_;  ///< as it was found
};

bool hungUp(int device) {
  pollfd state{device, 0, 0};
  return poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

}  // namespace

std::string defaultName(int number) {
  return "/dev/ttyS" + std::to_string(number - 1);
}

Result<std::unique_ptr<Before>, std::error_code> open(asio::serial_port& port,
                                                      const std::string& device) {
  // Opening can already disturb whoever has it: what their lock file says is asked first.
  auto lock = PortLock::take(device);
  if (!lock) return tl::unexpected(std::error_code(EBUSY, std::system_category()));
  // Asio would set the line up before anybody could say that it is somebody else's.
  const int opened = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (opened < 0) return tl::unexpected(lastError());
  std::error_code error;
  port.assign(opened, error);
  if (error) {
    ::close(opened);
    return tl::unexpected(error);
  }
  auto taken = std::make_unique<Taken>(opened, std::move(*lock));
  error = taken->keepOthersOut();
  if (!error) error = taken->makeRaw();
  // What came in while nobody listened was taken apart by the line's earlier mode.
  if (!error) error = failedIf(tcflush(opened, TCIOFLUSH) != 0);
  if (error) return tl::unexpected(error);
  return std::unique_ptr<Before>(std::move(taken));
}

Takes takenBy(asio::serial_port& port) {
  constexpr unsigned firstPseudoTerminal = 136;
  constexpr unsigned lastPseudoTerminal = 143;
  struct stat status {};
  if (fstat(port.native_handle(), &status) != 0) return Takes::everything;
  const unsigned kind = major(status.st_rdev);
  return kind >= firstPseudoTerminal && kind <= lastPseudoTerminal ? Takes::speedAndStopBits
                                                                   : Takes::everything;
}

std::error_code reportDamage(asio::serial_port& port) {
  termios line{};
  if (tcgetattr(port.native_handle(), &line) != 0) return lastError();
  // Asio has damaged bytes dropped.
  line.c_iflag &= ~static_cast<tcflag_t>(IGNPAR | IGNBRK | BRKINT);
  line.c_iflag |= INPCK | PARMRK;
  return failedIf(tcsetattr(port.native_handle(), TCSANOW, &line) != 0);
}

Result<Waiting, std::error_code> waiting(asio::serial_port& port) {
  int count = 0;
  if (ioctl(port.native_handle(), FIONREAD, &count) != 0) return tl::unexpected(lastError());
  if (count == 0 && hungUp(port.native_handle())) {
    return tl::unexpected(std::make_error_code(std::errc::io_error));
  }
  return Waiting{.bytes = static_cast<std::size_t>(count)};
}

Result<std::size_t, std::error_code> read(asio::serial_port& port, std::span<std::uint8_t> room) {
  const auto count = ::read(port.native_handle(), room.data(), room.size());
  if (count >= 0) return static_cast<std::size_t>(count);
  if (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) return std::size_t{0};
  return tl::unexpected(lastError());
}

Result<std::size_t, std::error_code> waitingOutput(asio::serial_port& port) {
  int count = 0;
  if (ioctl(port.native_handle(), TIOCOUTQ, &count) != 0) return tl::unexpected(lastError());
  // What the hardware still holds goes out without fail.
  if (count > 0 || tcdrain(port.native_handle()) == 0) return static_cast<std::size_t>(count);
  if (errno == EINTR) return std::size_t{1};
  return tl::unexpected(lastError());
}

namespace {

class DeviceWatch final : public Watch {
 public:
  DeviceWatch(int device, std::function<Outcome()> take)
      : device_(device),
        take_(std::move(take)),
        thread_([this](const std::stop_token& stopped) { run(stopped); }) {}
  ~DeviceWatch() override {
    thread_.request_stop();
    ending_.ring();
  }

  int descriptor() const override { return news_.descriptor(); }
  void settle() override { news_.silence(); }

 private:
  void run(const std::stop_token& stopped) {
    constexpr int littleLater = 5;  // milliseconds
    Outcome outcome = Outcome::taken;
    while (outcome != Outcome::gone) {
      const bool isFull = outcome == Outcome::full;
      std::array<pollfd, 2> sources{{{ending_.descriptor(), POLLIN, 0}, {device_, POLLIN, 0}}};
      poll(sources.data(), isFull ? 1 : 2, isFull ? littleLater : -1);
      if (stopped.stop_requested()) return;
      outcome = take_();
      news_.ring();
    }
  }

  int device_;
  std::function<Outcome()> take_;
  Alarm ending_;
  Alarm news_;
  std::jthread thread_;  // last: it ends before what it uses goes
};

}  // namespace

std::unique_ptr<Watch> watch(asio::serial_port& port, std::function<Watch::Outcome()> take) {
  return std::make_unique<DeviceWatch>(port.native_handle(), std::move(take));
}

std::optional<int> descriptor(asio::serial_port& port) {
  return port.native_handle();
}

std::optional<LineState> lineState(asio::serial_port& port) {
  int wires = 0;
  if (ioctl(port.native_handle(), TIOCMGET, &wires) != 0) return std::nullopt;
  LineState state{.cts = (wires & TIOCM_CTS) != 0,
                  .dsr = (wires & TIOCM_DSR) != 0,
                  .dcd = (wires & TIOCM_CD) != 0,
                  .ri = (wires & TIOCM_RI) != 0};
  serial_icounter_struct counts{};
  if (ioctl(port.native_handle(), TIOCGICOUNT, &counts) != 0) return state;
  const auto count = [](int counted) { return static_cast<std::uint64_t>(std::max(counted, 0)); };
  state.faults = LineFaults{.framing = count(counts.frame),
                            .parity = count(counts.parity),
                            .overruns = count(counts.overrun) + count(counts.buf_overrun),
                            .breaks = count(counts.brk)};
  return state;
}

bool switchLine(asio::serial_port& port, LineSwitch which, bool on) {
  if (which == LineSwitch::holdBreak)
    return ioctl(port.native_handle(), on ? TIOCSBRK : TIOCCBRK) == 0;
  const int wire = which == LineSwitch::dtr ? TIOCM_DTR : TIOCM_RTS;
  return ioctl(port.native_handle(), on ? TIOCMBIS : TIOCMBIC, &wire) == 0;
}

std::error_code clearInput(asio::serial_port& port) {
  return failedIf(tcflush(port.native_handle(), TCIFLUSH) != 0);
}

std::error_code clearOutput(asio::serial_port& port) {
  return failedIf(tcflush(port.native_handle(), TCOFLUSH) != 0);
}

std::string explainRefusal(const std::error_code& error, const std::string& device, int number) {
  const std::string option = "--com " + std::to_string(number) + "=DEVICE";
  switch (error.value()) {
    case ENOENT:
      return filled(say("ports",
                        "there is no such device. Connect it, or say which device it is with %1. "
                        "'touchctl doctor' lists those that are there."),
                    {option});
    case ENXIO:
    case ENODEV:
    case EIO:
      return filled(say("ports",
                        "there is no hardware behind it. Connect it, or say which device it is "
                        "with %1."),
                    {option});
    case EACCES:
    case EPERM:
      return say("ports", "permission denied.") + ' ' + portPermission(device).wayOut();
    case EBUSY:
    case EWOULDBLOCK:
      return inUseText(portHolders(device));
    case ENOTTY:
    case EISDIR:
      return filled(say("ports", "it is not a serial port. Please say which device it is with %1."),
                    {option});
    default:
      return error.message() + ". " + say("ports", "Check the connection, then try again.");
  }
}

std::string explainNoSimulatedPort() {
  return say("ports",
             "the simulated controller has no serial port while its driver holds it. Choose that "
             "controller first. If it is chosen, the system has no pseudo-terminal left: mount "
             "devpts on /dev/pts.");
}

}  // namespace touch::serial_device
