#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/touchsim/door.h"
#include "support/result.h"

namespace touch::simulator {

// What a running simulated controller is asked from outside. A request is a line, and so is the
// answer, "ok" or what is wrong:
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

/// Carries out requests while its context runs.
class OutsideFinger {
 public:
  /// Told of a finger.
  using OnFinger = std::function<void(const FingerRequest&)>;
  /// Told what to do with the recording; returns what there is to tell of it. Null: none is played.
  using OnReplay = std::function<std::string(const ReplayRequest&)>;

  /// Null where nobody can reach it.
  static std::unique_ptr<OutsideFinger> open(asio::io_context& context, const std::string& device,
                                             OnFinger onFinger, OnReplay onReplay = nullptr);
  OutsideFinger(OnFinger onFinger, OnReplay onReplay);

 private:
  class Caller;
  /// What a line is answered.
  std::string carryOut(std::string_view line) const;

  OnFinger onFinger_;
  OnReplay onReplay_;
  std::unique_ptr<Door> door_;
};

/// Has the simulated controller on `device` carry out a request; without a device the only one that
/// runs. Returns what it has told. The error says why it did not.
Result<std::string, std::string> sendRequest(const std::string& request,
                                             const std::optional<std::string>& device);

}  // namespace touch::simulator
