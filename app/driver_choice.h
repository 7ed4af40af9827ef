#pragma once

#include <memory>

#include "app/options.h"
#include "core/driver/nexapi.h"

namespace touch {

/// Binds the library that the options ask for: the bundled simulator, a library by path, or the
/// system's nexapi.
Result<std::unique_ptr<NexapiDriver>, BindError> bindChosenDriver(const Options& options);

/// In a simulated run COM1 is the simulated serial controller's, unless the user has said what COM1
/// is.
void addSimulatedPort(Driver& driver, ComPorts& ports);

}  // namespace touch
