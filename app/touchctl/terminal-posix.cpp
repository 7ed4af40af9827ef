#include <unistd.h>

#include "app/touchctl/terminal.h"

namespace touch {

bool isTerminalInput() {
  return isatty(STDIN_FILENO) == 1;
}

}  // namespace touch
