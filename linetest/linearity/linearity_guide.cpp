#include "linetest/linearity/linearity_guide.h"

#include <span>

namespace touch {

namespace {

constexpr Colour openColour = {64, 64, 64};
constexpr Colour keptColour = palette[2];

void drawLine(Surface& surface, const GuidedLine& guide, TwipsSize screen, Colour colour,
              int width) {
  const float at = guide.position;
  if (guide.orientation == Orientation::vertical) {
    surface.line({at, 0}, {at, screen.height}, colour, width);
  } else {
    surface.line({0, at}, {screen.width, at}, colour, width);
  }
}

void drawSamples(Surface& surface, std::span<const TwipsPoint> samples, Colour colour, int width) {
  for (const TwipsPoint sample : samples)
    surface.point(sample, colour, width);
}

}  // namespace

void drawLinearityGuide(Surface& surface, const LinearityProcedure& procedure) {
  const TwipsSize screen = procedure.panel().screen;
  const auto current = procedure.current();
  surface.clear();
  for (const Orientation orientation : {Orientation::vertical, Orientation::horizontal}) {
    // The lines of the other direction would only be in the way.
    if (current && current->orientation != orientation) continue;
    for (int number = 1; number <= TestLine::perOrientation; ++number) {
      const TestLine line{orientation, number};
      drawLine(surface, guideOf(line, screen), screen, openColour, 1);
      if (const auto& result = procedure.result(line))
        drawSamples(surface, result->samples, keptColour, 1);
    }
  }
  if (!current) return;
  drawLine(surface, guideOf(*current, screen), screen, guideColour, 2);
  if (const auto drawn = procedure.drawn()) drawSamples(surface, drawn->samples, tracedColour, 3);
}

}  // namespace touch
