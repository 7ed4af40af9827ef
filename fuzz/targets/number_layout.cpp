// Numbers in the files of the drawing screens: the first four bytes are a number to write, the
// fifth is the size of pieces, the rest a text to read.

#include "support/text/number_layout.h"

#include <algorithm>
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

void checkReading(std::string_view text, std::size_t pieceSize) {
  NumberReader reader(text, "fuzz");
  NumberReader inPieces(
      [left = text, pieceSize](std::span<char> piece) mutable {
        const std::size_t count = left.copy(piece.data(), std::min(piece.size(), pieceSize));
        left.remove_prefix(count);
        return count;
      },
      "fuzz");
  const char* const alike = "a text in pieces is read as the whole is";
  for (std::size_t i = 0; !reader.atEnd(); ++i) {
    require(i <= text.size(), "reading ends");
    require(!inPieces.atEnd(), alike);
    if (i % 5 == 3) {
      const int index = reader.integer(0, 15, "an index");
      require(inPieces.integer(0, 15, "an index") == index, alike);
    } else if (i % 5 == 4) {
      const std::string label(reader.label());
      require(inPieces.label() == label, alike);
    } else {
      const float number = reader.number("a number");
      require(std::isfinite(number), "numbers are finite");
      require(inPieces.number("a number") == number, alike);
    }
  }
  require(inPieces.atEnd() && inPieces.failed() == reader.failed(), alike);
  if (!reader.failed()) return;
  require(reader.error().line >= 1, "an error names its line");
  require(inPieces.error().describe() == reader.error().describe(), alike);
}

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  Input input(bytes);
  checkWriting(std::bit_cast<float>(input.number()));
  const std::size_t pieceSize = input.byte() % 16U + 1;
  checkReading(textOf(input.rest()), pieceSize);
}

}  // namespace touch::fuzz
