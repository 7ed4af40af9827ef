// Recordings of a serial port.

#include "serial/recording/recording.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const auto written = [](const auto& transfers) {
    std::string text = "touch recording 1\n";
    for (const Transfer& transfer : transfers)
      text += recordingLine(transfer) + '\n';
    return text;
  };
  requireRoundTrip(
      textOf(bytes), [](auto text) { return parseRecording(text, "fuzz"); }, written);
}

}  // namespace touch::fuzz
