#pragma once

namespace touch {

/// True when a person at a terminal can answer questions.
bool isTerminalInput();

/// Waits for that person to type something; false when the program is to end instead.
bool awaitInput();

}  // namespace touch
