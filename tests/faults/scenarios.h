#pragma once

#include <span>
#include <string>

#include "tests/faults/fault_world.h"

namespace touch::test {

struct Outcome {
  bool done = false;
  std::string told;  ///< what the user sees of it
};

/// Something that a user does from beginning to end, as often as he likes in one world.
struct Scenario {
  const char* name;
  Outcome (*run)(FaultWorld&);
};

std::span<const Scenario> scenarios();

}  // namespace touch::test
