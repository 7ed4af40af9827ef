#include <csignal>
#include <cstdlib>
#include <initializer_list>

#include "app/process/orderly_process.h"

namespace touch {

void ignoreWriteSignals() {
  for (const int number : {SIGPIPE, SIGXFSZ})
    std::signal(number, SIG_IGN);
}

bool atQuickExit(void (*handler)()) {
  return std::at_quick_exit(handler) == 0;
}

}  // namespace touch
