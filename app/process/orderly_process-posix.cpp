#include <csignal>
#include <initializer_list>

#include "app/process/orderly_process.h"

namespace touch {

void ignoreWriteSignals() {
  for (const int number : {SIGPIPE, SIGXFSZ})
    std::signal(number, SIG_IGN);
}

}  // namespace touch
