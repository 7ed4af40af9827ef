#pragma once

#include "drawing/surface.h"
#include "linetest/linearity/linearity_procedure.h"

namespace touch {

inline constexpr Colour guideColour = palette[15];
inline constexpr Colour tracedColour = palette[14];

/// What is seen while lines are drawn: the line to follow, those still open and the results so far,
/// and what has been drawn of the current one.
void drawLinearityGuide(Surface& surface, const LinearityProcedure& procedure);

}  // namespace touch
