// Working files: strokes kept while they are drawn, "tmp000.tmp".

#include "linetest/files/working_files.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  requireRoundTrip(
      textOf(bytes), [](auto text) { return parseWorkingText(text, "fuzz"); }, workingText);
}

}  // namespace touch::fuzz
