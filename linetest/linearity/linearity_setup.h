#pragma once

#include <optional>

#include "linetest/linearity/linearity.h"

namespace touch {

/// What the linearity tester is told once and keeps as long as the program runs: made once in
/// main() and passed by reference.
struct LinearitySetup {
  struct PanelSize {
    double widthMm = 0;
    double heightMm = 0;
  };
  std::optional<PanelSize> panelSize;  ///< nothing until the user was asked
  LinearityLimits limits;
};

}  // namespace touch
