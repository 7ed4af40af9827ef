#pragma once

#include "ui/style/colours.h"

namespace touch {

/// Of words that say whether something passed.
inline QColor verdictColour(bool passed, const QPalette& window) {
  const Colours& colours = coloursOf(window);
  return passed ? colours.good : colours.problem;
}

}  // namespace touch
