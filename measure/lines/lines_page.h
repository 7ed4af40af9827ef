#pragma once

#include <string>

#include "drawing/surface.h"
#include "measure/judging/verdict.h"

namespace touch::measure {

/// A4, landscape.
inline constexpr TwipsSize linesPage{16838, 11906};

/// The page of the lines: verdict and conditions; the deviation along each line in a chart of its
/// own with its limits; a map of the panel on which arrows show, enlarged, where and which way it
/// errs; a table of the figures with their limits. What fails is red, what lacks evidence orange.
/// It is drawn the same on a screen, on paper, and into an SVG picture.
void drawLinesPage(ChartSurface& surface, const Measurement& measurement, const Analysis& analysis,
                   const Verdict& verdict);

/// That page as an SVG document.
std::string linesSvg(const Measurement& measurement, const Analysis& analysis,
                     const Verdict& verdict);

}  // namespace touch::measure
