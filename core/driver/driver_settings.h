#pragma once

#include <cstdint>
#include <optional>

#include "core/session.h"

namespace touch {

/// How long a touch may have to last to be a right click, in milliseconds.
inline constexpr int shortestRightClick = 300;
inline constexpr int longestRightClick = 1200;

/// The touch behaviour as the driver reports it. Numbers without a unit are the driver's own.
struct DriverSettings {
  int touchMode = 0;  ///< the touch-mode option to show: 1 to 3, or what else the driver says
  int rightClickTime = 1000;  ///< milliseconds, in the range above as a rule
  bool rightClick = false;
  bool doubleClick = false;
  int doubleClickSpeed = 0;  ///< hundreds of milliseconds, 0 to 255
  int doubleClickArea = 0;   ///< 0 to 255
  bool reporting = false;    ///< touches are reported at all
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
