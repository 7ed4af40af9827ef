#pragma once

#include <asio/local/stream_protocol.hpp>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "support/result.h"

namespace touch::simulator {

// How a finger from outside reaches a running simulated controller: by a socket of this user's in
// the folder XDG_RUNTIME_DIR, named after the device: "touchsim-pts-5". A request is a line, and
// so is the answer, "ok" or what is wrong:
//
//   touch X Y    the finger is down there, or moves there; fractions of the panel from 0 to 1
//   lift         the finger is up

struct FingerRequest {
  bool down = false;
  double x = 0;
  double y = 0;
};
/// Nothing when it has another form.
std::optional<FingerRequest> parseFingerRequest(std::string_view line);

/// Hears requests while its context runs. Its socket goes with it.
class OutsideFinger {
 public:
  /// `onRequest` is told of each. Nothing where there is no folder for a socket.
  static std::unique_ptr<OutsideFinger> open(asio::io_context& context, const std::string& device,
                                             std::function<void(const FingerRequest&)> onRequest);
  OutsideFinger(asio::io_context& context, std::filesystem::path path,
                std::function<void(const FingerRequest&)> onRequest);
  OutsideFinger(const OutsideFinger&) = delete;
  OutsideFinger& operator=(const OutsideFinger&) = delete;
  ~OutsideFinger();

 private:
  class Caller;
  bool listen();
  void acceptNext();

  std::filesystem::path path_;
  std::function<void(const FingerRequest&)> onRequest_;
  asio::local::stream_protocol::acceptor acceptor_;
  bool isThere_ = false;
};

/// Has the simulated controller on `device` carry out a request; without a device the only one that
/// runs. The error says why it did not.
Result<void, std::string> sendRequest(const std::string& request,
                                      const std::optional<std::string>& device);

}  // namespace touch::simulator
