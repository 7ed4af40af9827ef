#include <io.h>

#include <cstdio>

#include "app/touchctl/interrupt.h"
#include "app/touchctl/terminal.h"

namespace touch {

bool isTerminalInput() {
  return _isatty(_fileno(stdin)) != 0;
}

// Ctrl+C ends reading there.
bool awaitInput() {
  return !interrupted();
}

// A write that nobody waits for fails there.
void dropOutput() {}

}  // namespace touch
