#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "support/result.h"

namespace touch {

/// A driver host that runs, and the way to it and back. Destroying it ends the host.
class HostLink {
 public:
  enum class Arrival : std::uint8_t { bytes, nothing, end };

  HostLink() = default;
  HostLink(const HostLink&) = delete;
  HostLink& operator=(const HostLink&) = delete;
  virtual ~HostLink() = default;

  /// False when the host has ended.
  virtual bool send(std::string_view bytes) = 0;
  /// Adds to `bytes` what has come, and waits for it at most for `longest`. A signal cuts the wait
  /// short.
  virtual Arrival receive(std::string& bytes, std::chrono::milliseconds longest) = 0;
  /// Ends the host if it has not ended by itself, and says in the system's words how it ended:
  /// "segmentation fault (SIGSEGV)".
  virtual std::string end() = 0;
  /// What is shown of it: the program's name.
  virtual std::string name() const = 0;
};

/// Starts a driver host; the error says why that cannot be.
using HostStart = std::function<Result<std::unique_ptr<HostLink>, std::string>()>;

/// Starts `program` in a process of its own. It has this program's rights, folder and environment,
/// the error output for what its driver says, and nothing else that is open here; it ends when this
/// program does.
Result<std::unique_ptr<HostLink>, std::string> startHostProcess(
    const std::filesystem::path& program);

/// What the host for libraries of `bits` is called on this system.
std::string hostProgramName(int bits);

}  // namespace touch
