#pragma once

namespace touch {

/// True when a person at a terminal can answer questions.
bool isTerminalInput();

}  // namespace touch
