#include <csignal>

#include "app/process/ending_signals.h"

namespace touch {

// Who asks a program to end is heard on a thread of its own here, and no wait hears of it.
void prepareToEndWaits() {}
void endWaits() {}

std::vector<int> endingSignals() {
  return {SIGINT, SIGTERM};
}

}  // namespace touch
