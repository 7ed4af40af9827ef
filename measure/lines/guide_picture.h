#pragma once

#include "drawing/surface.h"
#include "measure/lines/line_procedure.h"

namespace touch::measure {

inline constexpr Colour guideColour = palette[15];
inline constexpr Colour tracedColour = palette[14];

/// What is seen while lines are drawn: the line to follow, those still open and the results so far,
/// and what has been drawn of the current one.
void drawGuides(Surface& surface, const LineProcedure& procedure);

}  // namespace touch::measure
