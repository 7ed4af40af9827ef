#include "app/process/orderly_process.h"

namespace touch {

void ignoreWriteSignals() {}

}  // namespace touch
