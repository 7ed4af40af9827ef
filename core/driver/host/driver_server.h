#pragma once

#include <functional>
#include <memory>

#include "core/driver/bound_driver.h"
#include "core/driver/host/host_message.h"

namespace touch {

/// The host's end: binds one driver library when it is told to, and does with it what it is asked.
class DriverServer {
 public:
  using Bind = std::function<BoundDriverOrError(const std::optional<std::filesystem::path>&)>;
  /// `bind` binds the library; usually as NexapiDriver does.
  explicit DriverServer(Bind bind);

  /// The answer to one message; nothing when it is none that a host is sent, and all that can be
  /// done is to end.
  std::optional<HostMessage> answer(const HostMessage& message);

 private:
  std::optional<HostMessage> bind(const HostMessage& message);
  std::optional<HostMessage> simulate(const HostMessage& message);

  Bind bind_;
  std::unique_ptr<BoundDriver> driver_;
};

}  // namespace touch
