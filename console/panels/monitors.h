#pragma once

#include "core/session.h"

namespace touch {

class Prompt;

/// Tells the driver that the panel covers `monitor`, counted from 1, and waits at most 3 s for it
/// to say that this is done. Message 32 or 33 tells how it ended.
bool assignMonitor(const Access& access, Prompt& prompt, int monitor);

}  // namespace touch
