#pragma once

namespace touch {

/// True when a person at a terminal can answer questions.
bool isTerminalInput();

/// Waits for that person to type something; false when the program is to end instead.
bool awaitInput();

/// Whatever is still to be printed goes nowhere: the program waits for nobody who might read it.
void dropOutput();

}  // namespace touch
