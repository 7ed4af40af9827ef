#pragma once

#include <chrono>
#include <functional>
#include <utility>
#include <vector>

#include "ports/port_list.h"
#include "support/clock.h"

namespace touch {

class DebuggerPort;

/// Takes a port up again whose device had gone: by its own name, or, as an adapter that is plugged
/// in again may be called otherwise, at the one new port that has the same hardware behind it.
class ReturningPort {
 public:
  using List = std::function<std::vector<KnownHardware>()>;

  /// All of them outlive it. `list` says what hardware is there.
  ReturningPort(DebuggerPort& port, const Clock& clock, List list)
      : port_(port), clock_(clock), list_(std::move(list)) {}

  /// To be called now and then while the port is open: sees what is there.
  void remember();
  /// Returns whether the port was taken up. To be asked now and then.
  bool takeUpAgain();

 private:
  bool isTooSoon(std::chrono::milliseconds betweenLooks);

  DebuggerPort& port_;
  const Clock& clock_;
  List list_;
  int remembered_ = 0;  ///< the port that was open then
  std::vector<KnownHardware> known_;
  Clock::TimePoint looked_{};
};

}  // namespace touch
