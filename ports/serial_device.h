#pragma once

#include <asio/serial_port.hpp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
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

/// What a device takes of a line's settings. Without a wire bytes pass as they are.
enum class Takes : std::uint8_t {
  nothing,           ///< a named pipe
  speedAndStopBits,  ///< a pseudo-terminal
  everything,
};
Takes takenBy(asio::serial_port& port);

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
/// Reads at once what is waiting, at most as much as there is room for. May be called by another
/// thread than the other functions here.
Result<std::size_t, std::error_code> read(asio::serial_port& port, std::span<std::uint8_t> room);

/// How many bytes that it was given the device has not sent yet.
Result<std::size_t, std::error_code> waitingOutput(asio::serial_port& port);

/// Looks after a device on a thread of its own, until it is destroyed.
class Watch {
 public:
  enum class Outcome : std::uint8_t { taken, full, gone };
  Watch() = default;
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  virtual ~Watch() = default;

  /// See SerialPort::descriptor.
  virtual int descriptor() const = 0;
  /// To be called before what it has taken is looked at: its descriptor tells of what comes later.
  virtual void settle() = 0;
};
/// Calls `take` as soon as something has arrived. When that says `full`, it is called again a
/// little later; when it says `gone`, never. Null where the platform has no such thing.
std::unique_ptr<Watch> watch(asio::serial_port& port, std::function<Watch::Outcome()> take);

/// See SerialPort::descriptor; of a port that no Watch looks after.
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
std::string explainNoSimulatedPort();

}  // namespace touch::serial_device
