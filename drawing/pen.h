#pragma once

#include <cstdint>

#include "drawing/surface.h"

namespace touch {

enum class PenMode : std::uint8_t { points = 0, lines = 1 };

struct Pen {
  int colour = 12;  ///< palette index, 0 to 15
  int width = 1;    ///< pixels: 1 is thin, 2 is thick
  PenMode mode = PenMode::lines;
};

/// The colour index after `index`. The dark colours 1 to 8 are passed over, being hard to see; so
/// is the colour of `paper`, by one step more.
int nextColour(int index, Colour paper);

/// The palette colour; 0 to 15.
inline Colour paletteColour(int index) {
  return palette.at(static_cast<std::size_t>(index));
}

}  // namespace touch
