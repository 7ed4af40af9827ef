#pragma once

#include "drawing/drawing_switches.h"
#include "linetest/files/working_files.h"
#include "linetest/linearity/linearity_setup.h"

namespace touch {

/// What the screens for tests keep between their openings. It is made once in main() and outlives
/// the windows.
struct TestParts {
  DrawingSwitches& switches;
  const WorkingFiles& files;
  LinearitySetup& linearity;
};

}  // namespace touch
