// Recordings of a serial port.

#include "serial/recording/recording.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const auto transfers = parseRecording(textOf(bytes), "fuzz.rec");
  if (!transfers) {
    require(transfers.error().line >= 1, "an error names its line");
    return;
  }
  std::string text = "touch recording 1\n";
  for (const Transfer& transfer : *transfers)
    text += recordingLine(transfer) + '\n';
  const auto again = parseRecording(text, "again.rec");
  require(again && *again == *transfers, "a recording that is written is read as it was");
}

}  // namespace touch::fuzz
