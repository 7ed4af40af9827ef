// touchctl's command line, one word a line. Nothing of what it asks for is done.

#include <sstream>

#include "app/touchctl/arguments.h"
#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  std::vector<std::string> words;
  std::istringstream lines{std::string(textOf(bytes))};
  for (std::string word; std::getline(lines, word);)
    words.push_back(word);

  Arguments arguments;
  try {
    arguments.parse(words);
  } catch (const CLI::ParseError& error) {
    require(!std::string_view(error.what()).empty(), "an error says what is wrong");
    return;
  }
  require(!(arguments.command() && arguments.fileCommand()), "a line asks for one command");
  require(!arguments.options().workFolder.empty(), "there is a working folder");
  if (const auto& screen = arguments.options().screen) {
    require(screen->width > 0 && screen->height > 0, "a screen has a size");
  }
}

}  // namespace touch::fuzz
