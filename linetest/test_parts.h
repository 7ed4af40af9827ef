#pragma once

#include "linetest/drawing_switches.h"
#include "linetest/linearity_setup.h"
#include "linetest/working_files.h"

namespace touch {

/// What the screens for tests keep between their openings. It is made once in main() and outlives the windows.
struct TestParts {
  DrawingSwitches& switches;
  const WorkingFiles& files;
  LinearitySetup& linearity;
};

}  // namespace touch
