#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

#include "simulator/controller/simulated_clock.h"
#include "simulator/controller/simulated_controller.h"

namespace touch::simulator {

/// How the program at the other end of a line has set it.
struct UserLine {
  LineFormat format;
  std::optional<int> baud;  ///< nothing for one that no controller has
};

/// What a line has to do next.
struct LineTurn {
  LineFormat format;                                ///< of the controller, from now on
  std::vector<std::uint8_t> output;                 ///< goes out now
  std::optional<std::chrono::milliseconds> wait{};  ///< until more is due; nothing: for a wake
};

/// A controller as the line sees it that ends there.
class ControllerEnd {
 public:
  /// `controller` and `clock` are only used while `guard` is held; all three must outlive the line.
  /// The controller must already be connected to a port.
  ControllerEnd(SimulatedController& controller, const SimulatedClock& clock, std::mutex& guard)
      : controller_(controller), clock_(clock), guard_(guard) {}

  /// Gives the controller what has come in from a line that is set to what `userLine` returns when
  /// it is told the controller's own format. Nothing when the port has been stopped.
  template <typename Set>
  std::optional<LineTurn> takeTurn(const std::stop_token& stopped,
                                   std::span<const std::uint8_t> input, const Set& userLine) {
    const std::lock_guard lock(guard_);
    if (stopped.stop_requested()) return std::nullopt;
    const UserLine line = userLine(controller_.format());
    controller_.setUserFormat(line.format);
    controller_.setUserSpeed(line.baud);
    const TimePoint now = clock_.now();
    if (!input.empty()) controller_.receive(input, now);
    LineTurn turn{.format = controller_.format(),
                  .output = controller_.take(controller_.arrived(now), now)};
    if (const auto due = controller_.nextDue(); due && !clock_.isManual())
      turn.wait = std::chrono::ceil<std::chrono::milliseconds>(*due - now);
    return turn;
  }

 private:
  SimulatedController& controller_;
  const SimulatedClock& clock_;
  std::mutex& guard_;
};

}  // namespace touch::simulator
