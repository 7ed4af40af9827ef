#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "core/driver/simulation.h"
#include "support/text/language.h"

namespace touch {

/// A fault of a simulated panel that a user can switch on, to see what it looks like.
struct SimulatedFault {
  std::string_view trait;  ///< of the simulator's panel
  std::string_view value;
  std::string_view caption;  ///< the ampersand marks the key
  std::string_view effect;
};

inline constexpr std::array<SimulatedFault, 5> simulatedFaults = {{
    {"offset-x", "0.1", marked("main", "&Offset"),
     marked("main", "Touches land too far right; calibration fixes this.")},
    {"skew", "0.06", marked("main", "S&kew"),
     marked("main", "Vertical lines lean; calibration with 3 or more points fixes this.")},
    {"bow", "0.03", marked("main", "Bo&w"),
     marked("main", "Lines near the edges bend inwards; calibration cannot correct this.")},
    {"noise", "0.004", marked("main", "Noi&se"),
     marked("main", "Lines tremble; calibration cannot correct this.")},
    {"dead-strip", "0.06", marked("main", "Dead st&rip"),
     marked("main", "A strip of the panel doesn't respond: the sensor is broken there.")},
}};

/// Switches the fault of all these controllers' panels. Off is what the panel was like when new.
void switchFault(const Simulation& simulation, const SimulatedFault& fault, bool on,
                 std::span<const std::string> controllers);

}  // namespace touch
