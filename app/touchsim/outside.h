#pragma once

#include <asio/local/stream_protocol.hpp>
#include <cstdint>
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
//
// Where a recording is played also:
//
//   pause, go    it is held, and goes on
//   step         its next transfer passes, then it is held
//   seek SECONDS it goes on from there
//   progress     is answered with "ok", where it is and whether it is held

struct FingerRequest {
  bool down = false;
  double x = 0;
  double y = 0;
};
/// Nothing when it has another form.
std::optional<FingerRequest> parseFingerRequest(std::string_view line);

/// In seconds: as long as a recording may be.
inline constexpr double longestSeek = 999'999;

struct ReplayRequest {
  enum class Action : std::uint8_t { pause, go, step, seek, progress };
  Action action = Action::progress;
  double seconds = 0;  ///< of seek
};
/// Nothing when it has another form.
std::optional<ReplayRequest> parseReplayRequest(std::string_view line);

/// What lets a controller be reached from outside.
inline constexpr std::string_view neededFolder =
    "XDG_RUNTIME_DIR names no folder of yours that nobody else may write. Set it for both programs";

/// Hears requests while its context runs. Its socket goes with it.
class OutsideFinger {
 public:
  /// Told of a finger.
  using OnFinger = std::function<void(const FingerRequest&)>;
  /// Told what to do with the recording; returns what there is to tell of it. Null: none is played.
  using OnReplay = std::function<std::string(const ReplayRequest&)>;

  /// Nothing where there is no folder for a socket.
  static std::unique_ptr<OutsideFinger> open(asio::io_context& context, const std::string& device,
                                             OnFinger onFinger, OnReplay onReplay = nullptr);
  OutsideFinger(asio::io_context& context, std::filesystem::path path, OnFinger onFinger,
                OnReplay onReplay);
  OutsideFinger(const OutsideFinger&) = delete;
  OutsideFinger& operator=(const OutsideFinger&) = delete;
  ~OutsideFinger();

 private:
  class Caller;
  bool listen();
  void acceptNext();
  /// What a line is answered.
  std::string carryOut(std::string_view line) const;

  std::filesystem::path path_;
  OnFinger onFinger_;
  OnReplay onReplay_;
  asio::local::stream_protocol::acceptor acceptor_;
  bool isThere_ = false;
};

/// Has the simulated controller on `device` carry out a request; without a device the only one that
/// runs. Returns what it has told. The error says why it did not.
Result<std::string, std::string> sendRequest(const std::string& request,
                                             const std::optional<std::string>& device);

}  // namespace touch::simulator
