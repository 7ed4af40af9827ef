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
#include <cerrno>
#include <optional>
#include <utility>

#include "ports/port_holders.h"
#include "ports/port_lock.h"
#include "ports/serial_device.h"
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

bool isPseudoTerminal(asio::serial_port& port) {
  constexpr unsigned firstMajor = 136;
  constexpr unsigned lastMajor = 143;
  struct stat status {};
  if (fstat(port.native_handle(), &status) != 0) return false;
  return major(status.st_rdev) >= firstMajor && major(status.st_rdev) <= lastMajor;
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
  state.framing = count(counts.frame);
  state.parity = count(counts.parity);
  state.overruns = count(counts.overrun) + count(counts.buf_overrun);
  state.breaks = count(counts.brk);
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

std::string explainNoSimulatedPort(int) {
  return say("ports",
             "the simulated controller has no serial port while its driver holds it. Choose that "
             "controller first. If it is chosen, the system has no pseudo-terminal left: mount "
             "devpts on /dev/pts.");
}

}  // namespace touch::serial_device
