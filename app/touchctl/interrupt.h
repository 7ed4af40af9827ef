#pragma once

namespace touch {

/// Lets the running command end in an orderly way when the user presses Ctrl+C, or the system wants the program to end.
/// Whoever presses it again means it: then the program ends at once.
void catchInterrupt();
/// True once that has happened.
bool interrupted();

}  // namespace touch
