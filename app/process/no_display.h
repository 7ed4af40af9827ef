#pragma once

namespace touch {

/// The windows of this program are never to be seen: where it can, it does without a display.
void needNoDisplay();

}  // namespace touch
