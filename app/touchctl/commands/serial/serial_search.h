#pragma once

#include "app/touchctl/commands/serial/serial_work.h"

namespace touch {

/// "serial find-everywhere": asks on all of the machine's ports, at all settings of the line.
ExitStatus findEverywhere(const SerialWork& work);

}  // namespace touch
