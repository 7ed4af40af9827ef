#pragma once

#include <string>

#include "support/handle-win32.h"

namespace touch::simulator {

/// Which end of a named pipe is made: the only one, or the first of several, either of which fails
/// when somebody has the name already; or one more for another caller.
enum class PipeEnd { only, first, further };

/// Makes a server's end of the pipe `name`: for bytes both ways and overlapped transfers. Only this
/// user may open it, and only on this machine. Null when it cannot be had.
Handle createOwnPipe(const std::string& name, PipeEnd end);

}  // namespace touch::simulator
