// Parameter files, ".vrq".

#include "console/parameters/vrq_file.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const auto block = parseVrq(textOf(bytes), "fuzz.vrq");
  if (!block) {
    require(!block.error().describe().empty(), "an error says what is wrong");
    return;
  }
  const auto again = parseVrq(vrqText(*block), "again.vrq");
  require(again && *again == *block, "a block that is written is read as it was");
}

}  // namespace touch::fuzz
