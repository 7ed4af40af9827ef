// Notes of calibrations that are not checked yet, "backup/unchecked-NAME.txt".

#include "console/parameters/kept_calibration.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  requireRoundTrip(
      textOf(bytes), [](auto text) { return parseUnchecked(text, "fuzz"); }, uncheckedText);
}

}  // namespace touch::fuzz
