#include "app/process/no_display.h"

namespace touch {

// Every session has one.
void needNoDisplay() {}

}  // namespace touch
