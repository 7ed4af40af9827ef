#pragma once

#include "app/touchctl/shell.h"

namespace touch {

/// The controllers that the driver knows of, and which one answered.
ExitStatus listControllers(Shell& shell);

/// Identity and settings of the chosen controller.
ExitStatus showInformation(Shell& shell);

/// Calibrates with `points` targets (2, 3, 5 or 9) and a simulated finger; needs a simulated driver.
ExitStatus calibrate(Shell& shell, int points);

/// The main job in one go, on the simulated driver: find, identify, read, calibrate, prove.
ExitStatus demonstrate(Shell& shell);

}  // namespace touch
