// Measurements and limits, and everything that is computed from them.

#include "measure/files/measurement_file.h"
#include "fuzz/target.h"
#include "measure/judging/verdict.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  using namespace measure;
  const auto text = textOf(bytes);
  if (const auto limits = parseLimits(text, "limits.json"))
    require(parseLimits(limitsText(*limits), "again.json") == *limits,
            "limits that are written are read as they were");
  const auto read = parseMeasurement(text, "measurement.json");
  if (!read) {
    require(!read.error().describe().empty(), "an error says what is wrong");
    return;
  }
  const Analysis analysis = analyse(*read);
  const Verdict verdict = judge(*read, analysis);
  const auto again =
      parseMeasurement(measurementText(*read, jsonOf(*read, analysis, verdict)), "again.json");
  require(again && *again == *read, "a measurement that is written is read as it was");
}

}  // namespace touch::fuzz
