#include "measure/lines/guide_picture.h"

#include <span>

namespace touch::measure {

namespace {

constexpr Colour openColour = {64, 64, 64};
constexpr Colour keptColour = palette[2];

void drawLine(Surface& surface, const Guide& guide, TwipsSize screen, Colour colour, int width) {
  const auto at = [&](Place place) {
    return TwipsPoint{static_cast<float>(place.x) * screen.width,
                      static_cast<float>(place.y) * screen.height};
  };
  surface.line(at(guide.from), at(guide.to), colour, width);
}

void drawSamples(Surface& surface, std::span<const TwipsPoint> samples, Colour colour, int width) {
  for (const TwipsPoint sample : samples)
    surface.point(sample, colour, width);
}

}  // namespace

void drawGuides(Surface& surface, const LineProcedure& procedure) {
  const TwipsSize screen = procedure.screen();
  const Guide* const current = procedure.current();
  surface.clear();
  for (const Guide* guide : procedure.guides()) {
    // The lines of other directions would only be in the way.
    if (current != nullptr && current->name.front() != guide->name.front()) continue;
    drawLine(surface, *guide, screen, openColour, 1);
    drawSamples(surface, procedure.kept(*guide), keptColour, 1);
  }
  if (current == nullptr) return;
  drawLine(surface, *current, screen, guideColour, 2);
  drawSamples(surface, procedure.drawn(), tracedColour, 3);
}

}  // namespace touch::measure
