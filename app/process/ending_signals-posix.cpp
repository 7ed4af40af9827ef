#include <csignal>

#include "app/process/ending_signals.h"

namespace touch {

std::vector<int> endingSignals() {
  std::vector<int> signals = {SIGINT, SIGTERM};
  // A terminal that is closed ends what was started in it, unless that was wanted to stay.
  struct sigaction hangUp {};
  if (sigaction(SIGHUP, nullptr, &hangUp) == 0 && hangUp.sa_handler != SIG_IGN) {
    signals.push_back(SIGHUP);
  }
  return signals;
}

}  // namespace touch
