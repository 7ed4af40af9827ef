#pragma once

#include "drawing/surface.h"
#include "measure/procedure/procedure.h"

namespace touch::measure {

/// What one does and what is done, on a screen of this size: targets with the current one in white,
/// lines with an arrow, or a dot for each cell. What is done has a tick and is green.
void drawProcedure(Surface& surface, const Procedure& procedure, const Measurement& measurement,
                   TwipsSize screen);
/// The ring around the current target, as full as its time has passed.
void drawRing(Surface& surface, const Procedure& procedure, const Measurement& measurement,
              TwipsSize screen);
void drawCell(Surface& surface, std::size_t cell, const Procedure& procedure, TwipsSize screen);

}  // namespace touch::measure
