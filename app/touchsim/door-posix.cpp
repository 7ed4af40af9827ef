#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "app/touchsim/door.h"

namespace touch::simulator {

namespace {

namespace fs = std::filesystem;
using Socket = asio::local::stream_protocol;

constexpr std::string_view prefix = "touchsim-";

/// The user's own folder for sockets; empty without one. A folder that others may write is none.
fs::path runtimeFolder() {
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  struct stat found {};
  if (folder == nullptr || *folder != '/' || lstat(folder, &found) != 0) return {};
  const bool isOwn = S_ISDIR(found.st_mode) && found.st_uid == geteuid() &&
                     (found.st_mode & (S_IWGRP | S_IWOTH)) == 0;
  return isOwn ? fs::path(folder) : fs::path();
}

bool isOwnSocket(const fs::path& path) {
  struct stat found {};
  return lstat(path.c_str(), &found) == 0 && S_ISSOCK(found.st_mode) && found.st_uid == geteuid();
}

bool isTooLong(const fs::path& path) {
  return path.native().size() >= sizeof(sockaddr_un{}.sun_path);
}

class SocketDoor final : public Door {
 public:
  SocketDoor(asio::io_context& context, fs::path path, OnCall onCall)
      : path_(std::move(path)), onCall_(std::move(onCall)), acceptor_(context), retry_(context) {}
  ~SocketDoor() override {
    if (isThere_) unlink(path_.c_str());
  }

  bool listen() {
    // The device is this process's: a socket of its name was left behind by one that has gone.
    if (isOwnSocket(path_)) unlink(path_.c_str());
    if (isTooLong(path_)) return false;
    std::error_code failed;
    const mode_t before = umask(S_IRWXG | S_IRWXO | S_IXUSR);
    acceptor_.open(Socket(), failed);
    if (!failed) acceptor_.bind(Socket::endpoint(path_.string()), failed);
    umask(before);
    if (failed) return false;
    isThere_ = true;
    acceptor_.listen(Socket::socket::max_listen_connections, failed);
    if (failed) return false;
    acceptNext();
    return true;
  }

 private:
  void acceptNext() {
    acceptor_.async_accept([this](const std::error_code& error, Call call) {
      if (error == asio::error::operation_aborted) return;
      if (!error) {
        onCall_(std::move(call));
        return acceptNext();
      }
      // Where there are too many open files the caller goes on knocking.
      constexpr std::chrono::milliseconds littleLater{100};
      retry_.expires_after(littleLater);
      retry_.async_wait([this](const std::error_code& ended) {
        if (!ended) acceptNext();
      });
    });
  }

  fs::path path_;
  OnCall onCall_;
  Socket::acceptor acceptor_;
  asio::steady_timer retry_;
  bool isThere_ = false;
};

}  // namespace

const std::string_view doorNeeds =
    "XDG_RUNTIME_DIR names no folder of yours that nobody else may write. Set it for both programs";

std::unique_ptr<Door> Door::open(asio::io_context& context, const std::string& device,
                                 OnCall onCall) {
  if (!hasDoors()) return nullptr;
  auto door = std::make_unique<SocketDoor>(context, doorOf(device), std::move(onCall));
  return door->listen() ? std::move(door) : nullptr;
}

bool hasDoors() {
  return !runtimeFolder().empty();
}

std::string doorOf(std::string device) {
  if (device.starts_with("/dev/")) device.erase(0, 5);
  std::ranges::replace(device, '/', '-');
  return runtimeFolder() / (std::string(prefix) + device);
}

std::vector<std::string> doorsThere() {
  std::vector<std::string> there;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(runtimeFolder(), ignored)) {
    asio::io_context context;
    if (entry.path().filename().string().starts_with(prefix) && callAt(context, entry.path()))
      there.push_back(entry.path());
  }
  return there;
}

Result<Call, std::string> callAt(asio::io_context& context, const std::string& door) {
  if (!isOwnSocket(door) || isTooLong(door))
    return tl::unexpected(std::string("no simulated controller is running there"));
  Call call(context);
  std::error_code refused;
  call.connect(Socket::endpoint(door), refused);
  if (refused) return tl::unexpected(refused.message());
  return call;
}

}  // namespace touch::simulator
