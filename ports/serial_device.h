#pragma once

#include <asio/serial_port.hpp>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

#include "core/serial_port.h"
#include "support/result.h"

/// What serial ports need of the platform and Asio does not offer. The ports handed in are open,
/// but for `open`.
namespace touch::serial_device {

/// The device of COM port `number` where nobody said otherwise.
std::string defaultName(int number);

/// What a device was before it was opened. Destroyed, which must be before the port is closed, it
/// makes the device that again: with its own settings, and open to other programs.
class Before {
 public:
  Before() = default;
  Before(const Before&) = delete;
  Before& operator=(const Before&) = delete;
  virtual ~Before() = default;
};

/// Opens `device` for this program alone, raw and with empty buffers. After an error the device is
/// as it was found; the port may be left open.
Result<std::unique_ptr<Before>, std::error_code> open(asio::serial_port& port,
                                                      const std::string& device);

/// True when bytes pass through the device without a wire: it then knows neither parity nor data
/// bits.
bool isPseudoTerminal(asio::serial_port& port);

/// Makes a damaged byte arrive like any other, and be told. To be called after each change of the
/// line's settings.
std::error_code reportDamage(asio::serial_port& port);
/// Whether that is told in the stream itself, as DamageMarks reads it, or beside it by `waiting`.
#if defined(_WIN32)
inline constexpr bool marksDamage = false;
#else
inline constexpr bool marksDamage = true;
#endif

/// What has arrived and not been read.
struct Waiting {
  std::size_t bytes = 0;
  std::size_t damaged = 0;  ///< at least so many more than when it was asked last
};
/// An error when the device is gone.
Result<Waiting, std::error_code> waiting(asio::serial_port& port);
/// See SerialPort::descriptor.
std::optional<int> descriptor(asio::serial_port& port);
/// See SerialPort::lineState; counted since the driver has the device.
std::optional<LineState> lineState(asio::serial_port& port);
bool switchLine(asio::serial_port& port, LineSwitch which, bool on);
std::error_code clearInput(asio::serial_port& port);
std::error_code clearOutput(asio::serial_port& port);

/// Why `device`, which is COM port `number`, could not be opened and the way out, e.g. "permission
/// denied. Add yourself ...".
std::string explainRefusal(const std::error_code& error, const std::string& device, int number);
/// The same for a simulated controller that has no device.
std::string explainNoSimulatedPort(int number);

}  // namespace touch::serial_device
