// Drawings, ".fdw".

#include "linetest/files/drawing_file.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  requireRoundTrip(
      textOf(bytes), [](auto text) { return parseDrawing(text, "fuzz"); },
      [](const Drawing& drawing) { return drawingText(drawing); });
}

}  // namespace touch::fuzz
