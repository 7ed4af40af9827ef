// Result files of the linearity tester, "Tvm-v1.txt", and the figures that are made of their
// samples.

#include "fuzz/target.h"
#include "linetest/linearity/linearity_files.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const auto text = textOf(bytes);
  const TestLine line{text.starts_with('H') ? Orientation::horizontal : Orientation::vertical, 1};
  const auto read = parseResult(text, line, "Tvm.txt");
  if (!read) {
    require(!read.error().describe().empty(), "an error says what is wrong");
    return;
  }
  const auto& [result, panel] = *read;
  const auto again = parseResult(resultText(result, panel), line, "again.txt");
  // Figures of samples from the ends of the numbers' range may be too large to be written.
  if (again) {
    require(again->result.samples == result.samples && again->panel.screen == panel.screen,
            "a result that is written is read as it was");
  }
  require(!csvText(std::span(&result, 1), panel, LinearityLimits{}).empty(),
          "a result has a record");
}

}  // namespace touch::fuzz
