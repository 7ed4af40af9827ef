#include "simulator/port/served_port.h"

#include <windows.h>

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <thread>
#include <utility>
#include <vector>

#include "simulator/port/named_pipe-win32.h"

namespace touch::simulator {

namespace {

constexpr int mostPorts = 99;

struct OpenPipe {
  Handle pipe;
  std::string path;
};

std::optional<OpenPipe> openPipe() {
  for (int number = 1; number <= mostPorts; ++number) {
    std::string path = R"(\\.\pipe\touchsim-)" + std::to_string(number);
    if (Handle pipe = createOwnPipe(path, PipeEnd::only))
      return OpenPipe{std::move(pipe), std::move(path)};
  }
  return std::nullopt;
}

/// A pipe carries bytes and nothing of a line: every speed and form counts as right.
UserLine sameAs(const LineFormat& own) {
  return {own, std::nullopt};
}

class NamedPipe final : public ServedPort {
 public:
  NamedPipe(OpenPipe pipe, const ControllerEnd& controller)
      : pipe_(std::move(pipe)),
        controller_(controller),
        thread_([this](const auto& stopped) { serve(stopped); }) {}
  ~NamedPipe() override { stop(); }

  const std::string& path() const override { return pipe_.path; }
  void wake() override { SetEvent(alarm_.get()); }
  void stop() override {
    thread_.request_stop();
    wake();
  }

 private:
  enum class Awaited { caller, bytes };

  void serve(const std::stop_token& stopped) {
    awaitCaller();
    std::vector<std::uint8_t> input;
    while (const auto turn = controller_.takeTurn(stopped, input, sameAs)) {
      writeOrLose(turn->output);
      input = waitForInput(turn->wait);
    }
    DWORD count = 0;
    CancelIoEx(handle(), awaiting_.state());
    GetOverlappedResult(handle(), awaiting_.state(), &count, TRUE);
  }

  HANDLE handle() const { return pipe_.pipe.get(); }

  void awaitCaller() {
    awaited_ = Awaited::caller;
    ResetEvent(awaiting_.event());
    // Somebody may have been faster.
    if (ConnectNamedPipe(handle(), awaiting_.state()) != 0 || GetLastError() != ERROR_IO_PENDING)
      SetEvent(awaiting_.event());
  }

  void awaitBytes() {
    awaited_ = Awaited::bytes;
    ResetEvent(awaiting_.event());
    if (ReadFile(handle(), bytes_.data(), static_cast<DWORD>(bytes_.size()), nullptr,
                 awaiting_.state()) == 0 &&
        GetLastError() != ERROR_IO_PENDING) {
      hangUp();
    }
  }

  // What has not been read goes with the caller.
  void hangUp() {
    DisconnectNamedPipe(handle());
    awaitCaller();
  }

  std::vector<std::uint8_t> waitForInput(std::optional<std::chrono::milliseconds> wait) {
    const std::array<HANDLE, 2> sources = {alarm_.get(), awaiting_.event()};
    WaitForMultipleObjects(static_cast<DWORD>(sources.size()), sources.data(), FALSE,
                           wait ? static_cast<DWORD>(wait->count()) : INFINITE);
    if (WaitForSingleObject(awaiting_.event(), 0) != WAIT_OBJECT_0) return {};
    if (awaited_ == Awaited::caller) {
      awaitBytes();
      return {};
    }
    DWORD count = 0;
    if (GetOverlappedResult(handle(), awaiting_.state(), &count, FALSE) == 0) {
      hangUp();
      return {};
    }
    std::vector<std::uint8_t> input(bytes_.begin(), bytes_.begin() + count);
    awaitBytes();
    return input;
  }

  // A full line loses bytes instead of holding up the controller, and so does one without a caller.
  void writeOrLose(std::span<const std::uint8_t> bytes) {
    if (bytes.empty() || awaited_ == Awaited::caller) return;
    OverlappedTransfer transfer;
    DWORD count = 0;
    if (WriteFile(handle(), bytes.data(), static_cast<DWORD>(bytes.size()), nullptr,
                  transfer.state()) == 0 &&
        GetLastError() == ERROR_IO_PENDING) {
      CancelIoEx(handle(), transfer.state());
      GetOverlappedResult(handle(), transfer.state(), &count, TRUE);
    }
  }

  OpenPipe pipe_;
  ControllerEnd controller_;
  Handle alarm_ = owned(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  OverlappedTransfer awaiting_;
  Awaited awaited_ = Awaited::caller;
  std::array<std::uint8_t, 4096> bytes_{};
  std::jthread thread_;  // last: it ends before what it uses goes
};

}  // namespace

std::vector<int> ServedPort::speeds() {
  return {50,     75,     110,     134,     150,     200,     300,     600,     1200,    1800,
          2400,   4800,   9600,    19200,   38400,   57600,   115200,  230400,  460800,  500000,
          576000, 921600, 1000000, 1152000, 1500000, 2000000, 2500000, 3000000, 3500000, 4000000};
}

std::unique_ptr<ServedPort> ServedPort::open(const ControllerEnd& controller) {
  // A library that is being unloaded cannot wait for its own thread: from now on it stays.
  HMODULE module = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<const char*>(&ServedPort::speeds), &module);
  auto pipe = openPipe();
  if (!pipe) return nullptr;
  return std::make_unique<NamedPipe>(std::move(*pipe), controller);
}

}  // namespace touch::simulator
