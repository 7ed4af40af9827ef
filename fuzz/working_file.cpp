// Working files: strokes kept while they are drawn, "tmp000.tmp".

#include "fuzz/target.h"
#include "linetest/files/working_files.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const auto stroke = parseWorkingText(textOf(bytes), "tmp000.tmp");
  if (!stroke) {
    require(!stroke.error().describe().empty(), "an error says what is wrong");
    return;
  }
  const auto again = parseWorkingText(workingText(*stroke), "tmp001.tmp");
  require(again && *again == *stroke, "a stroke that is written is read as it was");
}

}  // namespace touch::fuzz
