#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "app/touchctl/interrupt.h"
#include "app/touchctl/terminal.h"

namespace touch {

bool isTerminalInput() {
  return isatty(STDIN_FILENO) == 1;
}

// Reading would begin anew after a signal that the program catches.
bool awaitInput() {
  constexpr int pause = 100;  // ms: one may come between the look and the wait
  pollfd input{STDIN_FILENO, POLLIN, 0};
  while (!interrupted()) {
    if (poll(&input, 1, pause) > 0) return true;
  }
  return false;
}

namespace {

class TerminalKeys final : public Keys {
 public:
  TerminalKeys() {
    if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
    termios each = before_;
    each.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG | IEXTEN);
    each.c_iflag &= ~static_cast<tcflag_t>(ICRNL | INLCR | IGNCR | IXON | ISTRIP);
    each.c_cc[VMIN] = 1;
    each.c_cc[VTIME] = 0;
    isTaken_ = tcsetattr(STDIN_FILENO, TCSANOW, &each) == 0;
  }
  TerminalKeys(const TerminalKeys&) = delete;
  TerminalKeys& operator=(const TerminalKeys&) = delete;
  ~TerminalKeys() override {
    if (isTaken_) tcsetattr(STDIN_FILENO, TCSANOW, &before_);
  }

  std::optional<std::string> pressed() override {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (poll(&input, 1, 0) <= 0) return std::string();
    std::array<char, 4096> keys{};
    const ssize_t count = read(STDIN_FILENO, keys.data(), keys.size());
    if (count > 0) return std::string(keys.data(), static_cast<std::size_t>(count));
    return count < 0 && (errno == EINTR || errno == EAGAIN) ? std::optional(std::string())
                                                            : std::nullopt;
  }

 private:
  termios before_{};
  bool isTaken_ = false;
};

}  // namespace

std::unique_ptr<Keys> takeKeys() {
  return std::make_unique<TerminalKeys>();
}

bool isTerminalOutput() {
  return isatty(STDOUT_FILENO) == 1;
}

void makeOutputBinary() {}

void dropOutput() {
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere < 0) return;
  dup2(nowhere, STDOUT_FILENO);
  close(nowhere);
}

}  // namespace touch
