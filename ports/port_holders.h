#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace touch {

// What stands between a program and a serial device. Nothing here opens the device: opening one can
// reset what is behind it, and may be another program's surprise.

/// A program that has a device open.
struct PortHolder {
  std::string program;
  std::int64_t process = 0;    ///< 0: not known yet, as it is just writing its lock file
  bool isThisProgram = false;  ///< the touch driver runs in this program and may have it
  bool isOtherEnd = false;     ///< of a pseudo-terminal: it is what is talked to
  std::filesystem::path
      lockFile{};  ///< by which it is known; empty when it was seen to have the device open
};

struct PortHolders {
  std::vector<PortHolder> known;
  bool complete =
      false;  ///< false: some programs belong to others, and this user may not look into them

  /// "minicom (process 1234), this program"; empty when none is known.
  std::string names() const;
};

PortHolders portHolders(const std::string& device);

/// That others have a device open which this program has opened, and take bytes that are for it, as
/// a sentence; empty when none is known.
std::string sharingText(const PortHolders& holders);

/// Why a device that is in use cannot be opened, and the way out, as a clause that ends with a full
/// stop.
std::string inUseText(const PortHolders& holders);

/// Whether this user may read and write a device, and what would let them.
struct PortPermission {
  bool granted = false;
  std::string group{};  ///< whose members may; empty when no group may
  bool joined = false;  ///< the user is in that group, but not yet in this session

  /// What to do about a refusal, as a sentence.
  std::string wayOut() const;
};

PortPermission portPermission(const std::string& device);

bool portExists(const std::string& device);

/// What serves the device: the kernel driver's name on Linux, the kernel's own name of the device
/// on Windows. Empty when there is none, as for a pseudo-terminal. `devices` is where the system
/// lists its devices.
std::string portDriver(const std::string& device,
                       const std::filesystem::path& devices = "/sys/class/tty");

/// What the maker calls the hardware behind the device, as far as it tells: "FTDI FT232R USB UART".
std::string portMaker(const std::string& device,
                      const std::filesystem::path& devices = "/sys/class/tty");

/// What tells the hardware behind the device from other hardware, whatever name it has: its driver,
/// its maker's text, its serial number as far as it has one, and which of its ports it is. Empty
/// where that is not known.
std::string portHardware(const std::string& device,
                         const std::filesystem::path& devices = "/sys/class/tty");

/// The serial devices of this machine that have hardware behind them, sorted by name.
std::vector<std::string> serialDevices(const std::filesystem::path& devices = "/sys/class/tty");

}  // namespace touch
