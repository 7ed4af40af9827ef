#pragma once

#include "app/touchctl/commands/serial/serial_work.h"

namespace touch {

/// "serial terminal": sends each key as it is pressed, and prints what comes.
void declareTerminal(const CommandLine& line, CLI::App& command);

}  // namespace touch
