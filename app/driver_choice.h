#pragma once

#include <memory>

#include "app/options.h"
#include "core/driver/bound_driver.h"
#include "core/driver/host/driver_patience.h"
#include "support/clock.h"

namespace touch {

/// Binds the library that the options ask for: the bundled simulator, a library by path, or the
/// system's nexapi. A real driver gets a process of its own that fits its bits, the simulated one
/// runs in this one, unless the options say otherwise. Both references outlive the driver.
BoundDriverOrError bindChosenDriver(const Options& options, Clock& clock, DriverPatience& patience);

/// In a simulated run COM1 is the simulated serial controller's, unless the user has said what COM1
/// is.
void addSimulatedPort(Driver& driver, ComPorts& ports);

}  // namespace touch
