#include "simulator/port/pty_line.h"

namespace touch::simulator {

// Windows has no pseudo-terminals that can be opened as a serial port.
std::unique_ptr<PtyLine> PtyLine::open(SimulatedController&, const SimulatedClock&, std::mutex&) {
  return nullptr;
}
std::vector<int> PtyLine::speeds() {
  return {};
}

}  // namespace touch::simulator
