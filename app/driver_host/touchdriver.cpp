#include <cstdio>
#include <string>

#include "core/driver/host/driver_server.h"
#include "core/driver/host/parent_link.h"
#include "core/driver/nexapi.h"

// The driver host: one driver library in a process of its own, for the program that starts it.

namespace {

using namespace touch;

constexpr int exitWrongUse = 2;
constexpr int exitDamaged = 1;

BoundDriverOrError bindLibrary(const std::optional<std::filesystem::path>& path) {
  auto bound = NexapiDriver::bind(path);
  if (!bound) return tl::unexpected(bound.error());
  return std::unique_ptr<BoundDriver>(std::move(*bound));
}

int complain(const std::string& text) {
  std::fprintf(stderr, "touchdriver: %s\n", text.c_str());
  return exitDamaged;
}

int serve(const ParentLink& parent) {
  DriverServer server(bindLibrary);
  HostMessageReader reader;
  std::string bytes;
  while (parent.receive(bytes)) {
    reader.add(bytes);
    bytes.clear();
    while (true) {
      const auto message = reader.next();
      if (!message) return complain("expected " + message.error());
      if (!*message) break;
      const auto answer = server.answer(**message);
      if (!answer) return complain("the message \"" + (*message)->name + "\" is none for a host");
      const auto sent = encoded(*answer);
      if (!sent) return complain("the answer to \"" + (*message)->name + "\" is too long");
      if (!parent.send(*sent)) return 0;
    }
  }
  return 0;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): it crashes then, and its parent tells the user how
int main(int argc, char** argv) {
  trustOwnFoldersAlone();
  const auto parent = ParentLink::take(argc, argv);
  if (parent) return serve(*parent);
  std::fputs("touchdriver: touchutility and touchctl start this program; it has no other use\n",
             stderr);
  return exitWrongUse;
}
