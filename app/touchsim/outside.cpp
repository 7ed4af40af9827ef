#include "app/touchsim/outside.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/read_until.hpp>
#include <asio/write.hpp>
#include <charconv>
#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace touch::simulator {

namespace {

namespace fs = std::filesystem;
using Socket = asio::local::stream_protocol;

constexpr std::size_t longestLine = 256;
constexpr std::string_view prefix = "touchsim-";
constexpr std::string_view done = "ok";

constexpr std::pair<std::string_view, ReplayRequest::Action> replayActions[] = {
    {"pause", ReplayRequest::Action::pause},
    {"go", ReplayRequest::Action::go},
    {"step", ReplayRequest::Action::step},
    {"seek", ReplayRequest::Action::seek},
    {"progress", ReplayRequest::Action::progress}};

/// The user's own folder for sockets; empty without one. A folder that others may write is none.
fs::path runtimeFolder() {
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  struct stat found {};
  if (folder == nullptr || *folder != '/' || lstat(folder, &found) != 0) return {};
  const bool isOwn = S_ISDIR(found.st_mode) && found.st_uid == geteuid() &&
                     (found.st_mode & (S_IWGRP | S_IWOTH)) == 0;
  return isOwn ? fs::path(folder) : fs::path();
}

fs::path socketOf(const fs::path& folder, std::string device) {
  if (device.starts_with("/dev/")) device.erase(0, 5);
  std::ranges::replace(device, '/', '-');
  return folder / (std::string(prefix) + device);
}

bool isOwnSocket(const fs::path& path) {
  struct stat found {};
  return lstat(path.c_str(), &found) == 0 && S_ISSOCK(found.st_mode) && found.st_uid == geteuid();
}

/// Those that somebody listens at.
std::vector<fs::path> liveSockets(const fs::path& folder) {
  std::vector<fs::path> live;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    if (!entry.path().filename().string().starts_with(prefix) || !isOwnSocket(entry.path()))
      continue;
    asio::io_context context;
    Socket::socket socket(context);
    std::error_code refused;
    socket.connect(Socket::endpoint(entry.path().string()), refused);
    if (!refused) live.push_back(entry.path());
  }
  return live;
}

std::string_view takeWord(std::string_view& text) {
  const auto begin = std::min(text.find_first_not_of(' '), text.size());
  text.remove_prefix(begin);
  const auto word = text.substr(0, text.find(' '));
  text.remove_prefix(word.size());
  return word;
}

std::optional<double> numberUpTo(double greatest, std::string_view text) {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || !(value >= 0 && value <= greatest))
    return std::nullopt;
  return value;
}

}  // namespace

std::optional<FingerRequest> parseFingerRequest(std::string_view line) {
  const auto word = takeWord(line);
  FingerRequest request{.down = word == "touch"};
  if (!request.down && word != "lift") return std::nullopt;
  if (request.down) {
    const auto x = numberUpTo(1, takeWord(line));
    const auto y = numberUpTo(1, takeWord(line));
    if (!x || !y) return std::nullopt;
    request.x = *x;
    request.y = *y;
  }
  if (!takeWord(line).empty()) return std::nullopt;
  return request;
}

std::optional<ReplayRequest> parseReplayRequest(std::string_view line) {
  const auto word = takeWord(line);
  const auto* const found = std::ranges::find(
      replayActions, word, &std::pair<std::string_view, ReplayRequest::Action>::first);
  if (found == std::end(replayActions)) return std::nullopt;
  ReplayRequest request{.action = found->second};
  if (request.action == ReplayRequest::Action::seek) {
    const auto seconds = numberUpTo(longestSeek, takeWord(line));
    if (!seconds) return std::nullopt;
    request.seconds = *seconds;
  }
  if (!takeWord(line).empty()) return std::nullopt;
  return request;
}

/// Whoever has connected, until they have been answered.
class OutsideFinger::Caller : public std::enable_shared_from_this<Caller> {
 public:
  /// `answer` is what they are told.
  Caller(Socket::socket socket, std::function<std::string(std::string_view)> answer)
      : socket_(std::move(socket)), answer_(std::move(answer)) {}

  void serve() {
    asio::async_read_until(socket_, asio::dynamic_buffer(line_, longestLine), '\n',
                           [self = shared_from_this()](const std::error_code& error, std::size_t) {
                             if (!error) self->answer();
                           });
  }

 private:
  void answer() {
    reply_ = answer_(std::string_view(line_).substr(0, line_.find('\n'))) + '\n';
    asio::async_write(socket_, asio::buffer(reply_),
                      [self = shared_from_this()](const std::error_code&, std::size_t) {});
  }

  Socket::socket socket_;
  std::function<std::string(std::string_view)> answer_;
  std::string line_;
  std::string reply_;
};

std::unique_ptr<OutsideFinger> OutsideFinger::open(asio::io_context& context,
                                                   const std::string& device, OnFinger onFinger,
                                                   OnReplay onReplay) {
  const fs::path folder = runtimeFolder();
  if (folder.empty()) return nullptr;
  auto finger = std::make_unique<OutsideFinger>(context, socketOf(folder, device),
                                                std::move(onFinger), std::move(onReplay));
  return finger->listen() ? std::move(finger) : nullptr;
}

OutsideFinger::OutsideFinger(asio::io_context& context, fs::path path, OnFinger onFinger,
                             OnReplay onReplay)
    : path_(std::move(path)),
      onFinger_(std::move(onFinger)),
      onReplay_(std::move(onReplay)),
      acceptor_(context) {}

OutsideFinger::~OutsideFinger() {
  if (isThere_) unlink(path_.c_str());
}

bool OutsideFinger::listen() {
  // The device is this process's: a socket of its name was left behind by one that has gone.
  if (isOwnSocket(path_)) unlink(path_.c_str());
  std::error_code failed;
  const mode_t before = umask(S_IRWXG | S_IRWXO | S_IXUSR);
  if (path_.native().size() < sizeof(sockaddr_un{}.sun_path)) {
    acceptor_.open(Socket(), failed);
    if (!failed) acceptor_.bind(Socket::endpoint(path_.string()), failed);
  } else {
    failed = std::make_error_code(std::errc::filename_too_long);
  }
  umask(before);
  if (failed) return false;
  isThere_ = true;
  acceptor_.listen(Socket::socket::max_listen_connections, failed);
  if (failed) return false;
  acceptNext();
  return true;
}

void OutsideFinger::acceptNext() {
  acceptor_.async_accept([this](const std::error_code& error, Socket::socket socket) {
    if (error) return;
    std::make_shared<Caller>(std::move(socket), [this](std::string_view line) {
      return carryOut(line);
    })->serve();
    acceptNext();
  });
}

std::string OutsideFinger::carryOut(std::string_view line) const {
  if (const auto finger = parseFingerRequest(line)) {
    onFinger_(*finger);
    return std::string(done);
  }
  const auto replay = parseReplayRequest(line);
  if (!replay) {
    return "expected \"touch X Y\" with X and Y from 0 to 1, \"lift\", \"pause\", \"go\", "
           "\"step\", \"seek SECONDS\" or \"progress\"";
  }
  if (!onReplay_) return "it plays no recording: start it with --play or --replay";
  const std::string told = onReplay_(*replay);
  return told.empty() ? std::string(done) : std::string(done) + ' ' + told;
}

Result<std::string, std::string> sendRequest(const std::string& request,
                                             const std::optional<std::string>& device) {
  const fs::path folder = runtimeFolder();
  if (folder.empty()) return tl::unexpected(std::string(neededFolder));
  fs::path path = device ? socketOf(folder, *device) : fs::path();
  if (!device) {
    const auto live = liveSockets(folder);
    if (live.empty()) return tl::unexpected(std::string("no simulated controller is running"));
    if (live.size() > 1) {
      return tl::unexpected(std::to_string(live.size()) +
                            " simulated controllers are running. Say which with --device");
    }
    path = live.front();
  }
  const auto failed = [&path](const std::string& why) {
    return tl::unexpected(path.string() + ": " + why);
  };
  if (!isOwnSocket(path) || path.native().size() >= sizeof(sockaddr_un{}.sun_path))
    return failed("no simulated controller is running there");
  asio::io_context context;
  Socket::socket socket(context);
  std::error_code error;
  socket.connect(Socket::endpoint(path.string()), error);
  if (!error) asio::write(socket, asio::buffer(request + '\n'), error);
  std::string answer;
  if (!error) asio::read_until(socket, asio::dynamic_buffer(answer, longestLine), '\n', error);
  if (error) return failed(error.message());
  answer.resize(answer.find('\n'));
  if (answer == done) return std::string();
  if (!answer.starts_with(std::string(done) + ' ')) return failed(answer);
  return answer.substr(done.size() + 1);
}

}  // namespace touch::simulator
