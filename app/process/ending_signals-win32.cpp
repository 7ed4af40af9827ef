#include <csignal>

#include "app/process/ending_signals.h"

namespace touch {

std::vector<int> endingSignals() {
  return {SIGINT, SIGTERM};
}

}  // namespace touch
