#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>
#include <utility>

#include "core/driver/host/host_link.h"
#include "core/driver/host/parent_link.h"
#include "support/text/language.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

/// A descriptor that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int number() const { return number_; }

 private:
  int number_;
};

std::string described(int status) {
  if (WIFEXITED(status)) {
    return filled(say("driver", "it ended by itself, with status %1"),
                  {std::to_string(WEXITSTATUS(status))});
  }
  const int signal = WTERMSIG(status);
  const char* const short_ = sigabbrev_np(signal);
  return std::string(strsignal(signal)) + " (SIG" + (short_ != nullptr ? short_ : "?") + ')';
}

class HostProcess final : public HostLink {
 public:
  HostProcess(std::string name, pid_t process, Descriptor channel)
      : name_(std::move(name)), process_(process), channel_(std::move(channel)) {}
  ~HostProcess() override { end(); }

  bool send(std::string_view bytes) override {
    while (!bytes.empty()) {
      // A host that reads nothing is one that hangs: what it was sent is far less than fits.
      const ssize_t sent =
          ::send(channel_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
      if (sent < 0 && errno == EINTR) continue;
      if (sent < 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
  }

  Arrival receive(std::string& bytes, std::chrono::milliseconds longest) override {
    pollfd waiting{channel_.number(), POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(longest.count())) <= 0) return Arrival::nothing;
    std::array<char, 4096> buffer{};
    const ssize_t count = recv(channel_.number(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return Arrival::nothing;
    if (count <= 0) return Arrival::end;
    bytes.append(buffer.data(), static_cast<std::size_t>(count));
    return Arrival::bytes;
  }

  std::string end() override {
    if (process_ == 0) return ended_;
    // One that has closed its end is on its way out, and what it dies of is to be told.
    const auto status = awaitEnd(50ms);
    if (status) return ended_ = described(*status);
    kill(process_, SIGKILL);
    const auto killed = awaitEnd(500ms);
    // What hangs in the system itself cannot be ended; the system takes it when this program ends.
    process_ = 0;
    return ended_ = killed ? described(*killed) : std::string(say("driver", "it cannot be ended"));
  }

  std::string name() const override { return name_; }

 private:
  bool isGone() const {
    pollfd waiting{channel_.number(), 0, 0};
    return poll(&waiting, 1, 0) > 0 && (waiting.revents & (POLLHUP | POLLERR)) != 0;
  }

  /// Its status; nothing while it runs. One that still has its end open is not waited for.
  std::optional<int> awaitEnd(std::chrono::milliseconds longest) {
    for (auto waited = 0ms;; ++waited) {
      int status = 0;
      const pid_t ended = waitpid(process_, &status, WNOHANG);
      if (ended != 0) process_ = 0;
      if (ended > 0) return status;
      if (ended < 0) return std::nullopt;
      if (waited >= longest || (waited == 0ms && longest < 100ms && !isGone())) return std::nullopt;
      poll(nullptr, 0, 1);
    }
  }

  std::string name_;
  pid_t process_;
  Descriptor channel_;
  std::string ended_;
};

}  // namespace

std::string hostProgramName(int bits) {
  return bits == 32 && sizeof(void*) > 4 ? "touchdriver32" : "touchdriver";
}

Result<std::unique_ptr<HostLink>, std::string> startHostProcess(
    const std::filesystem::path& program) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
    return tl::unexpected(std::string(std::strerror(errno)));
  Descriptor ours(ends[0]);
  const Descriptor theirs(ends[1]);

  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  // What a driver prints is no part of what this program prints.
  posix_spawn_file_actions_adddup2(&files, STDERR_FILENO, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&files, theirs.number(), ParentLink::channel);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t none;
  sigemptyset(&none);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);

  std::string name = program.string();
  std::string parent = std::to_string(getpid());
  const std::array<char*, 3> arguments = {name.data(), parent.data(), nullptr};
  pid_t process = 0;
  const int failed =
      posix_spawn(&process, name.c_str(), &files, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  if (failed != 0) {
    return tl::unexpected(filled(say("driver", "its driver host %1 cannot be started: %2"),
                                 {name, std::strerror(failed)}));
  }
  return std::unique_ptr<HostLink>(
      new HostProcess(program.filename().string(), process, std::move(ours)));
}

}  // namespace touch
