#include "console/panels/simulated_faults.h"

namespace touch {

void switchFault(const Simulation& simulation, const SimulatedFault& fault, bool on,
                 std::span<const std::string> controllers) {
  for (const std::string& controller : controllers)
    simulation.changePanel(std::string(fault.trait), on ? std::string(fault.value) : "new",
                           controller);
}

}  // namespace touch
