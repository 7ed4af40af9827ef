#include "ports/serial_device.h"

// Behind Asio, which must be the first to include the socket headers.
#include <windows.h>

#include <asio/buffer.hpp>
#include <vector>

#include "ports/pipe-win32.h"
#include "ports/port_holders.h"
#include "support/handle-win32.h"
#include "support/text/language.h"

namespace touch::serial_device {

namespace {

std::error_code failedIf(bool failed) {
  if (!failed) return {};
  return {static_cast<int>(GetLastError()), std::system_category()};
}

bool isPipe(asio::serial_port& port) {
  return GetFileType(port.native_handle()) == FILE_TYPE_PIPE;
}

std::error_code openAsPort(asio::serial_port& port, const std::string& name) {
  Handle pipe = openPipe(name);
  if (!pipe) return failedIf(true);
  std::error_code error;
  port.assign(pipe.get(), error);
  if (!error) static_cast<void>(pipe.release());
  return error;
}

/// Controllers are powered from DTR and RTS, which Asio lets fall. A damaged byte is to arrive as
/// it came.
std::error_code raiseLines(HANDLE device) {
  DCB line{};
  line.DCBlength = sizeof line;
  if (GetCommState(device, &line) == 0) return failedIf(true);
  line.fDtrControl = DTR_CONTROL_ENABLE;
  line.fRtsControl = RTS_CONTROL_ENABLE;
  line.fErrorChar = FALSE;
  return failedIf(SetCommState(device, &line) == 0);
}

}  // namespace

std::string defaultName(int number) {
  return "COM" + std::to_string(number);
}

Result<std::unique_ptr<Before>, std::error_code> open(asio::serial_port& port,
                                                      const std::string& device) {
  std::error_code error;
  if (isPipeName(device)) {
    error = openAsPort(port, device);
    if (error) return tl::unexpected(error);
    return std::make_unique<Before>();
  }
  // Windows opens a serial port for one program only, and Asio makes it raw.
  port.open(device, error);
  if (error) return tl::unexpected(error);
  error = raiseLines(port.native_handle());
  if (!error) error = failedIf(PurgeComm(port.native_handle(), PURGE_RXCLEAR | PURGE_TXCLEAR) == 0);
  if (error) return tl::unexpected(error);
  // Whoever opens a port there sets it up anew, and closing it is all that others wait for.
  return std::make_unique<Before>();
}

Takes takenBy(asio::serial_port& port) {
  return isPipe(port) ? Takes::nothing : Takes::everything;
}

std::error_code reportDamage(asio::serial_port&) {
  // Windows has both from the opening.
  return {};
}

Result<Waiting, std::error_code> waiting(asio::serial_port& port) {
  if (isPipe(port)) {
    DWORD bytes = 0;
    const auto gone =
        failedIf(PeekNamedPipe(port.native_handle(), nullptr, 0, nullptr, &bytes, nullptr) == 0);
    if (gone) return tl::unexpected(gone);
    return Waiting{.bytes = bytes};
  }
  COMSTAT state{};
  DWORD errors = 0;
  const auto error = failedIf(ClearCommError(port.native_handle(), &errors, &state) == 0);
  if (error) return tl::unexpected(error);
  // It tells that there was damage since it was asked last, not how much.
  const bool damaged = (errors & (CE_FRAME | CE_RXPARITY | CE_BREAK)) != 0;
  return Waiting{.bytes = state.cbInQue, .damaged = damaged ? std::size_t{1} : std::size_t{0}};
}

Result<std::size_t, std::error_code> read(asio::serial_port& port, std::span<std::uint8_t> room) {
  std::error_code error;
  const std::size_t count = port.read_some(asio::buffer(room.data(), room.size()), error);
  if (error) return tl::unexpected(error);
  return count;
}

Result<std::size_t, std::error_code> waitingOutput(asio::serial_port& port) {
  if (isPipe(port)) return std::size_t{0};
  COMSTAT state{};
  DWORD errors = 0;
  const auto error = failedIf(ClearCommError(port.native_handle(), &errors, &state) == 0);
  if (error) return tl::unexpected(error);
  return state.cbOutQue;
}

// Nothing here waits for bytes but who reads them.
std::unique_ptr<Watch> watch(asio::serial_port&, std::function<Watch::Outcome()>) {
  return nullptr;
}

std::optional<int> descriptor(asio::serial_port&) {
  return std::nullopt;
}

std::optional<LineState> lineState(asio::serial_port& port) {
  DWORD wires = 0;
  if (GetCommModemStatus(port.native_handle(), &wires) == 0) return std::nullopt;
  return LineState{.cts = (wires & MS_CTS_ON) != 0,
                   .dsr = (wires & MS_DSR_ON) != 0,
                   .dcd = (wires & MS_RLSD_ON) != 0,
                   .ri = (wires & MS_RING_ON) != 0};
}

bool switchLine(asio::serial_port& port, LineSwitch which, bool on) {
  const DWORD orders[][2] = {{CLRDTR, SETDTR}, {CLRRTS, SETRTS}, {CLRBREAK, SETBREAK}};
  return EscapeCommFunction(port.native_handle(), orders[static_cast<int>(which)][on ? 1 : 0]) != 0;
}

std::error_code clearInput(asio::serial_port& port) {
  if (isPipe(port)) {
    const auto there = waiting(port);
    if (!there) return there.error();
    std::vector<std::uint8_t> dropped(there->bytes);
    std::error_code error;
    if (!dropped.empty()) port.read_some(asio::buffer(dropped), error);
    return error;
  }
  return failedIf(PurgeComm(port.native_handle(), PURGE_RXCLEAR) == 0);
}

std::error_code clearOutput(asio::serial_port& port) {
  if (isPipe(port)) return {};  // what it has taken is on its way
  return failedIf(PurgeComm(port.native_handle(), PURGE_TXCLEAR) == 0);
}

std::string explainRefusal(const std::error_code& error, const std::string& device, int number) {
  const std::string option = "--com " + std::to_string(number) + "=DEVICE";
  switch (static_cast<DWORD>(error.value())) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return filled(say("ports",
                        "there is no such device. Connect it, or say which device it is with %1. "
                        "'touchctl doctor' lists those that are there."),
                    {option});
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_PIPE_BUSY:
      return inUseText(portHolders(device));
    case ERROR_INVALID_FUNCTION:
    case ERROR_INVALID_PARAMETER:
      return filled(say("ports", "it is not a serial port. Please say which device it is with %1."),
                    {option});
    default:
      return error.message() + ". " + say("ports", "Check the connection, then try again.");
  }
}

std::string explainNoSimulatedPort() {
  return say("ports",
             "the simulated controller has no serial port while its driver holds it. Choose that "
             "controller first.");
}

}  // namespace touch::serial_device
