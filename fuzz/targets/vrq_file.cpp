// Parameter files, ".vrq".

#include "console/parameters/vrq_file.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  requireRoundTrip(
      textOf(bytes), [](auto text) { return parseVrq(text, "fuzz"); }, vrqText);
}

}  // namespace touch::fuzz
