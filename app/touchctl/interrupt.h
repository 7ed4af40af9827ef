#pragma once

namespace touch {

/// Lets the running command end in an orderly way when the user presses Ctrl+C, the system wants
/// the program to end, the terminal is closed, or nobody reads the output any more. Whoever presses
/// it again means it: then the program ends at once.
void catchInterrupt();
/// True once that has happened.
bool interrupted();

}  // namespace touch
