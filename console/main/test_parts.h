#pragma once

#include "console/main/panel_screens.h"
#include "drawing/drawing_switches.h"
#include "linetest/files/working_files.h"
#include "measure/windows/measure_setup.h"

namespace touch {

/// What the screens for tests keep between their openings. It is made once in main() and outlives
/// the windows.
struct TestParts {
  DrawingSwitches& switches;
  const WorkingFiles& files;
  measure::MeasureSetup& measuring;
  MakeCommission commission{};
};

}  // namespace touch
