// Files of single lines, "Tvm-v1.txt".

#include "fuzz/target.h"
#include "measure/lines/line_files.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const auto text = textOf(bytes);
  const auto& guide = *measure::findGuide(text.starts_with('H') ? "H-1" : "V-1");
  const auto read = measure::parseLineFile(text, guide, "Tvm.txt");
  if (!read) {
    require(!read.error().describe().empty(), "an error says what is wrong");
    return;
  }
  const auto again = measure::parseLineFile(measure::lineFileText(*read), guide, "again.txt");
  // Figures of samples from the ends of the numbers' range may be too large to be written.
  if (again) {
    require(again->samples == read->samples && again->screen == read->screen,
            "a line that is written is read as it was");
  }
  // The program takes up only lines of its own screen and panel.
  const auto fits = [](double length) { return length >= 1 && length <= 1e6; };
  if (!fits(static_cast<double>(read->screen.width)) ||
      !fits(static_cast<double>(read->screen.height)) || !fits(read->widthMm) ||
      !fits(read->heightMm))
    return;
  measure::Measurement measurement;
  measurement.size = {{read->widthMm}, {read->heightMm}, measure::SizeSource::user};
  measure::LineProcedure procedure(measurement, read->screen);
  procedure.restore(guide, read->samples, "Tvm.txt");
  require(procedure.keptFigures(guide).samples == read->samples.size(), "all samples count");
}

}  // namespace touch::fuzz
