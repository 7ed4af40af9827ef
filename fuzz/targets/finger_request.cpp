// What is said to a simulated controller from outside, at its socket.

#include <stdlib.h>

#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/write.hpp>
#include <filesystem>
#include <string>
#include <vector>

#include "app/touchsim/outside.h"
#include "fuzz/target.h"

namespace touch::fuzz {

namespace {

namespace fs = std::filesystem;
using namespace simulator;
using Socket = asio::local::stream_protocol;

/// The user's folder for sockets while it lives.
class RuntimeFolder {
 public:
  RuntimeFolder() : path_((fs::temp_directory_path() / "fuzz-XXXXXX").string()) {
    require(mkdtemp(path_.data()) != nullptr, "there is room for a folder");
    setenv("XDG_RUNTIME_DIR", path_.c_str(), 1);
  }
  ~RuntimeFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  RuntimeFolder(const RuntimeFolder&) = delete;
  RuntimeFolder& operator=(const RuntimeFolder&) = delete;

  fs::path socket() const { return fs::path(path_) / "touchsim-pts-1"; }

 private:
  std::string path_;
};

bool isOnPanel(double place) {
  return place >= 0 && place <= 1;
}

/// What a caller who says this and hangs up is answered.
std::string answerTo(std::span<const std::uint8_t> bytes, std::vector<FingerRequest>& taken) {
  const RuntimeFolder folder;
  asio::io_context context;
  const auto finger = OutsideFinger::open(
      context, "/dev/pts/1", [&taken](const auto& request) { taken.push_back(request); });
  require(finger != nullptr, "there is a socket");
  Socket::socket caller(context);
  caller.connect(Socket::endpoint(folder.socket().string()));
  std::error_code failed;
  asio::write(caller, asio::buffer(bytes.data(), bytes.size()), failed);
  caller.shutdown(Socket::socket::shutdown_send, failed);
  // What is under way is never done by one round: each has the next to wait for.
  for (int round = 0; round < 10; ++round)
    context.poll();
  std::string answer(caller.available(), '\0');
  if (!answer.empty()) caller.read_some(asio::buffer(answer), failed);
  return answer;
}

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  constexpr std::size_t longestLine = 256;
  // More is nothing but a longer line, and would fill the socket.
  bytes = bytes.first(std::min(bytes.size(), 4 * longestLine));
  const std::string_view text = textOf(bytes);
  const auto end = text.find('\n');
  const auto expected = parseFingerRequest(text.substr(0, end));
  if (expected) require(isOnPanel(expected->x) && isOnPanel(expected->y), "it is on the panel");

  std::vector<FingerRequest> taken;
  const std::string answer = answerTo(bytes, taken);
  require(answer.empty() == (end >= longestLine), "a whole line is answered, and nothing else is");
  require(taken.size() == (answer == "ok\n" ? 1U : 0U), "who is told \"ok\" has touched once");
  require(answer.empty() || expected.has_value() == (answer == "ok\n"), "the answer is true");
  if (taken.empty()) return;
  const auto& [down, x, y] = taken.front();
  require(down == expected->down && x == expected->x && y == expected->y, "it is what was said");
}

}  // namespace touch::fuzz
