#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "simulator/controller/faults.h"

namespace touch::simulator {

/// A fault and when it is there, in seconds since the controller was switched on:
///
///   no-answer             always
///   no-answer@5-10        from 5 to 10
///   no-answer@5-10/60     so in every minute
struct FaultTimes {
  Fault fault{};
  double from = 0;
  double to = 0;     ///< 0: it does not end
  double every = 0;  ///< 0: once

  bool isTimed() const { return to > 0; }
  bool isThere(std::chrono::duration<double> since) const;
};

/// Nothing when `text` has another form, or names no fault.
std::optional<FaultTimes> parseFaultTimes(std::string_view text);

}  // namespace touch::simulator
