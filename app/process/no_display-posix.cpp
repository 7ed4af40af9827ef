#include <cstdlib>

#include "app/process/no_display.h"

namespace touch {

void needNoDisplay() {
  constexpr int replace = 1;
  ::setenv("QT_QPA_PLATFORM", "offscreen", replace);
}

}  // namespace touch
