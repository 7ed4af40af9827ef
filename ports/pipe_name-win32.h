#pragma once

#include <string_view>

namespace touch {

/// Whether a device is a named pipe of this machine, as a simulated controller has in place of a
/// serial port.
inline bool isPipeName(std::string_view device) {
  return device.starts_with(R"(\\.\pipe\)");
}

}  // namespace touch
