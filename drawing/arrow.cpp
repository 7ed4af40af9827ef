#include "drawing/arrow.h"

#include <cmath>

namespace touch {

void drawArrow(Surface& surface, TwipsPoint from, TwipsPoint to, Colour colour, int width) {
  constexpr float head = 70;
  surface.line(from, to, colour, width);
  const float x = to.x - from.x;
  const float y = to.y - from.y;
  const float length = std::hypot(x, y);
  if (length < head) return;
  const float ux = x / length * head;
  const float uy = y / length * head;
  surface.line(to, {to.x - ux - uy / 2, to.y - uy + ux / 2}, colour, width);
  surface.line(to, {to.x - ux + uy / 2, to.y - uy - ux / 2}, colour, width);
}

}  // namespace touch
