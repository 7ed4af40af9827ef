// Numbers in the files of the drawing screens: the first four bytes are a number to write, the rest a text to read.

#include "linetest/number_layout.h"

#include <bit>
#include <cmath>

#include "fuzz/target.h"

namespace touch::fuzz {

namespace {

void checkWriting(float value) {
  if (!std::isfinite(value)) return;
  const std::string digits = shortestText(value);
  NumberReader shortest(digits, "shortest");
  require(shortest.number("a number") == value && shortest.atEnd() && !shortest.failed(),
          "the shortest text is read as the same number");
  std::string text;
  appendZones(text, {value, -value, value});
  NumberReader zones(text, "zones");
  for (const float written : {value, -value, value})
    require(zones.number("a number") == written, "zones are read as the same numbers");
  require(zones.atEnd() && !zones.failed(), "zones hold nothing else");
  for (const int decimals : {0, 3})
    require(!fixedText(static_cast<double>(value), decimals).empty(), "a number has a text");
}

void checkReading(std::string_view text) {
  NumberReader reader(text, "fuzz");
  for (std::size_t i = 0; !reader.atEnd(); ++i) {
    require(i <= text.size(), "reading ends");
    if (i % 5 == 3) {
      reader.integer(0, 15, "an index");
    } else if (i % 5 == 4) {
      reader.label();
    } else {
      require(std::isfinite(reader.number("a number")), "numbers are finite");
    }
  }
  if (reader.failed()) require(reader.error().line >= 1, "an error names its line");
}

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  Input input(bytes);
  checkWriting(std::bit_cast<float>(input.number()));
  checkReading(textOf(input.rest()));
}

}  // namespace touch::fuzz
