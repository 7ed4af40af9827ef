#pragma once

#if defined(_WIN32)
#include <asio/windows/stream_handle.hpp>
#else
#include <asio/local/stream_protocol.hpp>
#endif
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/result.h"

namespace touch::simulator {

// How another process of this user reaches a running simulated controller: by a socket in the
// folder XDG_RUNTIME_DIR, named after the device: "touchsim-pts-5". On Windows by a named pipe:
// "touchsim-1-requests".

#if defined(_WIN32)
using Call = asio::windows::stream_handle;
#else
using Call = asio::local::stream_protocol::socket;
#endif

/// What a door needs, to be said where there is none.
extern const std::string_view doorNeeds;

/// Where calls come in while its context runs. What it is named by goes with it.
class Door {
 public:
  using OnCall = std::function<void(Call)>;

  /// Null where none can be had.
  static std::unique_ptr<Door> open(asio::io_context& context, const std::string& device,
                                    OnCall onCall);
  Door() = default;
  Door(const Door&) = delete;
  Door& operator=(const Door&) = delete;
  virtual ~Door() = default;
};

/// Whether this user can have doors at all, and call at any.
bool hasDoors();
/// What the door of a device is named by.
std::string doorOf(std::string device);
/// Those behind which a simulated controller runs.
std::vector<std::string> doorsThere();
/// The error says why nobody answers.
Result<Call, std::string> callAt(asio::io_context& context, const std::string& door);

}  // namespace touch::simulator
