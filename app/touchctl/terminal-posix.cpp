#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "app/touchctl/interrupt.h"
#include "app/touchctl/terminal.h"

namespace touch {

bool isTerminalInput() {
  return isatty(STDIN_FILENO) == 1;
}

// Reading would begin anew after a signal that the program catches.
bool awaitInput() {
  constexpr int pause = 100;  // ms: one may come between the look and the wait
  pollfd input{STDIN_FILENO, POLLIN, 0};
  while (!interrupted()) {
    if (poll(&input, 1, pause) > 0) return true;
  }
  return false;
}

void dropOutput() {
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere < 0) return;
  dup2(nowhere, STDOUT_FILENO);
  close(nowhere);
}

}  // namespace touch
