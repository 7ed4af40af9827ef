#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <initializer_list>

#include "core/driver/host/parent_link.h"

namespace touch {

std::optional<ParentLink> ParentLink::take(int argc, char** argv) {
  if (argc != 2) return std::nullopt;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  // It may have died before.
  if (std::to_string(getppid()) != argv[1]) return std::nullopt;
  int kind = 0;
  socklen_t size = sizeof kind;
  if (getsockopt(channel, SOL_SOCKET, SO_TYPE, &kind, &size) != 0) return std::nullopt;
  close_range(channel + 1, ~0U, 0);
  // A terminal tells everybody; what is to be done with a controller that is open, the parent
  // knows.
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE})
    std::signal(number, SIG_IGN);
  return ParentLink(channel);
}

bool ParentLink::receive(std::string& bytes) const {
  std::array<char, 4096> buffer{};
  while (true) {
    const ssize_t count = recv(static_cast<int>(pipe_), buffer.data(), buffer.size(), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count > 0) bytes.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0;
  }
}

bool ParentLink::send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(static_cast<int>(pipe_), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

}  // namespace touch
