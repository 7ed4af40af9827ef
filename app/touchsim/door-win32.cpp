#include <array>
#include <asio/error.hpp>
#include <asio/io_context.hpp>
#include <asio/windows/overlapped_ptr.hpp>
#include <system_error>
#include <utility>
#include <vector>

#include "app/touchsim/door.h"
#include "ports/pipe-win32.h"
#include "simulator/port/named_pipe-win32.h"

namespace touch::simulator {

namespace {

constexpr std::string_view beginning = R"(\\.\pipe\touchsim-)";
constexpr std::string_view end = "-requests";

class PipeDoor final : public Door {
 public:
  PipeDoor(asio::io_context& context, std::string name, OnCall onCall)
      : context_(context), name_(std::move(name)), onCall_(std::move(onCall)) {}
  ~PipeDoor() override {
    std::error_code ignored;
    if (waiting_) waiting_->close(ignored);
  }

  bool listen(PipeEnd which) {
    Handle pipe = createOwnPipe(name_, which);
    if (!pipe) return false;
    waiting_ = std::make_shared<Call>(context_);
    std::error_code failed;
    waiting_->assign(pipe.get(), failed);
    if (failed) return false;
    static_cast<void>(pipe.release());
    asio::windows::overlapped_ptr connecting(
        context_, [this, waiting = waiting_](const std::error_code& error, std::size_t) {
          if (error == asio::error::operation_aborted) return;
          // The caller may have gone again; whoever comes next finds an end of the pipe.
          listen(PipeEnd::further);
          if (!error) onCall_(std::move(*waiting));
        });
    const bool begun = ConnectNamedPipe(waiting_->native_handle(), connecting.get()) != 0;
    const DWORD how = begun ? ERROR_IO_PENDING : GetLastError();
    if (how == ERROR_IO_PENDING) {
      connecting.release();
    } else {
      // Somebody may have been faster.
      const int error = how == ERROR_PIPE_CONNECTED ? 0 : static_cast<int>(how);
      connecting.complete({error, std::system_category()}, 0);
    }
    return true;
  }

 private:
  asio::io_context& context_;
  std::string name_;
  OnCall onCall_;
  std::shared_ptr<Call> waiting_;  ///< the end that the next caller gets
};

std::error_code connect(Call& call, const std::string& door) {
  Handle pipe = openPipe(door);
  if (!pipe) return {static_cast<int>(GetLastError()), std::system_category()};
  std::error_code error;
  call.assign(pipe.get(), error);
  if (!error) static_cast<void>(pipe.release());
  return error;
}

}  // namespace

const std::string_view doorNeeds = "Windows gives it no named pipe for that";

std::unique_ptr<Door> Door::open(asio::io_context& context, const std::string& device,
                                 OnCall onCall) {
  auto door = std::make_unique<PipeDoor>(context, doorOf(device), std::move(onCall));
  return door->listen(PipeEnd::first) ? std::move(door) : nullptr;
}

bool hasDoors() {
  return true;
}

std::string doorOf(std::string device) {
  // Of "\\.\pipe\touchsim-1" or "COM5" what tells it from others.
  if (const auto folder = device.find_last_of('\\'); folder != device.npos)
    device.erase(0, folder + 1);
  constexpr std::string_view program = "touchsim-";
  if (device.starts_with(program)) device.erase(0, program.size());
  return std::string(beginning) + device + std::string(end);
}

std::vector<std::string> doorsThere() {
  std::vector<std::string> there;
  // As many as there can be pipes, and COM ports.
  for (const auto& [name, most] : {std::pair("", 99), std::pair("COM", 255)}) {
    for (int number = 1; number <= most; ++number) {
      std::string door = doorOf(name + std::to_string(number));
      if (pipeExists(door)) there.push_back(std::move(door));
    }
  }
  return there;
}

Result<Call, std::string> callAt(asio::io_context& context, const std::string& door) {
  if (!pipeExists(door))
    return tl::unexpected(std::string("no simulated controller is running there"));
  Call call(context);
  if (const auto refused = connect(call, door)) return tl::unexpected(refused.message());
  return call;
}

}  // namespace touch::simulator
