#pragma once

#include "drawing/surface.h"

namespace touch {

/// One that is shorter than its head has none.
void drawArrow(Surface& surface, TwipsPoint from, TwipsPoint to, Colour colour, int width);

}  // namespace touch
