#include "app/orderly_process.h"

namespace touch {

void ignoreWriteSignals() {}

}  // namespace touch
