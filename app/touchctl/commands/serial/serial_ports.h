#pragma once

#include "app/touchctl/command_line.h"

namespace touch {

/// "serial ports": what ports there are, and whether they can be opened.
void addPortList(const CommandLine& line, CLI::App& group);

}  // namespace touch
