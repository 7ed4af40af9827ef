#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <ratio>

#include "core/session.h"

namespace touch {

/// What the driver counts the double-click speed in.
using Deciseconds = std::chrono::duration<int, std::deci>;

/// How long a touch may have to last to be a right click.
inline constexpr std::chrono::milliseconds shortestRightClick{300};
inline constexpr std::chrono::milliseconds longestRightClick{1200};

/// The touch behaviour as the driver reports it. Numbers without a unit are the driver's own.
struct DriverSettings {
  int touchMode = 0;  ///< the touch-mode option to show: 1 to 3, or what else the driver says
  std::chrono::milliseconds rightClickTime{1000};  ///< in the range above as a rule
  bool rightClick = false;
  bool doubleClick = false;
  Deciseconds doubleClickSpeed{0};  ///< 0 to 255
  int doubleClickArea = 0;          ///< 0 to 255
  bool reporting = false;           ///< touches are reported at all
  bool upSound = false;
  bool downSound = false;
  int rotation = -1;  ///< quarter turns, 0 to 3 as a rule; -1: not read
  /// The three numbers of the click timing are what an open controller's driver said.
  bool timingRead = false;

  friend bool operator==(const DriverSettings&, const DriverSettings&) = default;
};

/// Makes the driver take the controller's port back, then reads every setting into `settings`,
/// which keeps what was read before an operation that the driver library lacks. A touch mode or a
/// right-click time out of range is put right in the driver.
void readset(const Access& access, DriverSettings& settings);

/// Every setting as the driver reports it, for whoever only wants to know: nothing is put right.
/// Nothing when the controller cannot be opened.
std::optional<DriverSettings> reportedSettings(const Access& access);

}  // namespace touch
