#include <unistd.h>

#include <csignal>

#include "app/process/ending_signals.h"

namespace touch {

namespace {

void onEndOfWait(int) {
  endWaits();
}

}  // namespace

// Without SA_RESTART, by which the wait would begin anew.
void prepareToEndWaits() {
  struct sigaction action {};
  action.sa_handler = onEndOfWait;
  sigemptyset(&action.sa_mask);
  sigaction(SIGALRM, &action, nullptr);
}

void endWaits() {
  alarm(1);
}

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
