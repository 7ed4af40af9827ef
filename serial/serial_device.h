#pragma once

#include <asio/serial_port.hpp>
#include <cstddef>
#include <memory>
#include <string>
#include <system_error>

#include "core/result.h"

/// What serial ports need of the platform and Asio does not offer. The ports handed in are open,
/// but for `open`.
namespace touch::serial_device {

/// The device of COM port `number` where nobody said otherwise.
std::string defaultName(int number);

/// What a device was before it was opened. Destroyed, which must be before the port is closed, it makes the device that
/// again: with its own settings, and open to other programs.
class Before {
 public:
  Before() = default;
  Before(const Before&) = delete;
  Before& operator=(const Before&) = delete;
  virtual ~Before() = default;
};

/// Opens `device` for this program alone, raw and with empty buffers. After an error the device is as it was found; the
/// port may be left open.
Result<std::unique_ptr<Before>, std::error_code> open(asio::serial_port& port,
                                                      const std::string& device);

/// True when bytes pass through the device without a wire: it then knows neither parity nor data
/// bits.
bool isPseudoTerminal(asio::serial_port& port);

/// The bytes that have arrived and not been read; an error when the device is gone.
Result<std::size_t, std::error_code> bytesWaiting(asio::serial_port& port);
std::error_code clearInput(asio::serial_port& port);
std::error_code clearOutput(asio::serial_port& port);

/// Why `device`, which is COM port `number`, could not be opened and the way out, e.g. "permission
/// denied. Add yourself ...".
std::string explainRefusal(const std::error_code& error, const std::string& device, int number);
/// The same for a simulated controller that has no device.
std::string explainNoSimulatedPort(int number);

}  // namespace touch::serial_device
