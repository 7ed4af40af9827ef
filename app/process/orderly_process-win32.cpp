#include "app/process/orderly_process.h"

namespace touch {

void ignoreWriteSignals() {}

// The C runtime that the program is built with has no `quick_exit`, and a library that brings
// another one tells only that one.
bool atQuickExit(void (*)()) {
  return true;
}

}  // namespace touch
