#include <io.h>

#include <cstdio>

#include "app/touchctl/terminal.h"

namespace touch {

bool isTerminalInput() {
  return _isatty(_fileno(stdin)) != 0;
}

}  // namespace touch
