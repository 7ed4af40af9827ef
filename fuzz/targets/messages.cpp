// The message file, "errmsg.txt".

#include "core/messages/messages.h"

#include <sstream>

#include "fuzz/target.h"
#include "support/text/text_encoding.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  std::istringstream file{std::string(textOf(bytes))};
  const auto table = parseMessages(file, "errmsg.txt");
  if (!table) {
    require(!table.error().describe().empty(), "an error says what is wrong");
    return;
  }
  constexpr std::size_t longestLine = 4096;
  std::string text;
  bool fits = true;
  for (std::size_t number = 0; number < 100; ++number) {
    require(isUtf8(table->at(number)), "texts are UTF-8");
    fits = fits && table->at(number).size() <= longestLine;
    text += table->at(number) + '\n';
  }
  require(table->at(100).empty(), "the last text is empty");
  // In a file the first text could begin like a mark of the byte order, and any text end like a
  // line. A text that came in an older encoding may have grown beyond a line.
  if (!fits || text.starts_with("\xEF\xBB\xBF") || text.find("\r\n") != text.npos) return;
  std::istringstream written(text);
  const auto again = parseMessages(written, "again.txt");
  require(again.has_value(), "a table that is written is read");
  for (std::size_t number = 0; number < 100; ++number)
    require(again->at(number) == table->at(number), "texts that are written are read as they were");
}

}  // namespace touch::fuzz
