#pragma once

#include <string>
#include <string_view>

#include "support/handle-win32.h"

namespace touch {

/// Whether a device is a named pipe of this machine, as a simulated controller has in place of a
/// serial port.
inline bool isPipeName(std::string_view device) {
  return device.starts_with(R"(\\.\pipe\)");
}

inline bool pipeExists(const std::string& name) {
  constexpr DWORD atOnce = 1;  // millisecond
  return WaitNamedPipeA(name.c_str(), atOnce) != 0 || GetLastError() == ERROR_SEM_TIMEOUT;
}

/// Opens a pipe for overlapped transfers. Who serves it learns who calls, and may do nothing in
/// their name. Null when it cannot be had; GetLastError says why.
inline Handle openPipe(const std::string& name) {
  constexpr DWORD longest = 1000;  // milliseconds
  Handle pipe;
  do {
    pipe = owned(CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                             FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION,
                             nullptr));
    // Its end takes a moment to see that the last caller has gone, or to let one more in.
  } while (!pipe && GetLastError() == ERROR_PIPE_BUSY && WaitNamedPipeA(name.c_str(), longest));
  return pipe;
}

}  // namespace touch
