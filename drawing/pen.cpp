#include "drawing/pen.h"

namespace touch {

namespace {

constexpr int lastColour = 15;
constexpr int firstDark = 1;
constexpr int firstBright = 9;

}  // namespace

int nextColour(int index, Colour paper) {
  int next = index + 1;
  if (next > lastColour) next = 0;
  if (next == firstDark) next = firstBright;
  if (paletteColour(next) == paper) ++next;
  return next > lastColour ? 0 : next;
}

}  // namespace touch
