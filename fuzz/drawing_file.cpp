// Drawings, ".fdw".

#include "linetest/files/drawing_file.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const auto drawing = parseDrawing(textOf(bytes), "fuzz.fdw");
  if (!drawing) {
    require(!drawing.error().describe().empty(), "an error says what is wrong");
    return;
  }
  const auto again = parseDrawing(drawingText(*drawing), "again.fdw");
  require(again && *again == *drawing, "a drawing that is written is read as it was");
}

}  // namespace touch::fuzz
