#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "ports/port_holders.h"
#include "support/result.h"

namespace touch {

/// The lock file of a serial device, by which programs that talk over modems tell each other who
/// has it: named "LCK..ttyS0" after the device, with the number of the process in ten characters.
/// It goes with this.
class PortLock {
 public:
  static constexpr const char* usualFolder = "/var/lock";

  /// Makes it; one whose program is gone is taken away first, and one that names none when it has
  /// lain there for a while. The error is the program that has the
  /// device. Where no file can be made there is none, and that is no error.
  static Result<PortLock, PortHolder> take(const std::string& device,
                                           const std::filesystem::path& folder = usualFolder);
  PortLock(PortLock&& other) noexcept : made_(std::exchange(other.made_, std::nullopt)) {}
  PortLock& operator=(PortLock&&) = delete;
  ~PortLock();

 private:
  struct Made {
    std::filesystem::path file;
    dev_t disk;
    ino_t number;
  };
  explicit PortLock(std::optional<Made> made) : made_(std::move(made)) {}
  static std::optional<Made> make(const std::filesystem::path& file);

  std::optional<Made> made_;
};

/// The program that has a device by its lock file, unless it is this one or has gone.
std::optional<PortHolder> lockHolder(const std::string& device,
                                     const std::filesystem::path& folder = PortLock::usualFolder);

}  // namespace touch
