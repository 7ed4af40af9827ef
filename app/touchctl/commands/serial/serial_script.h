#pragma once

#include "app/touchctl/commands/serial/serial_work.h"

namespace touch {

/// "serial run": carries out a script on the port.
void declareScript(const CommandLine& line, CLI::App& command);

}  // namespace touch
