#pragma once

#include <string>

#include "drawing/surface.h"
#include "measure/judging/field.h"
#include "measure/measurement.h"

namespace touch::measure {

/// A4, landscape, in twips.
inline constexpr TwipsSize mapPage{16838, 11906};

/// The map of errors: how far touches miss as colours with a bar that explains them, axes in mm,
/// arrows in the direction of the error, enlarged, and a ring around the worst place. It is drawn
/// the same on a screen, on paper, and into an SVG picture. `letters` is how high they are, in
/// twips of the page.
void drawMap(ChartSurface& surface, const ErrorMap& map, const Measurement& measurement,
             float letters = 240);
/// For a page that is shown as half of a portrait one.
inline constexpr float lettersOnHalfAPage = 340;

/// That page as an SVG document.
std::string mapSvg(const ErrorMap& map, const Measurement& measurement, float letters = 240);

}  // namespace touch::measure
