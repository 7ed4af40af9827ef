#include "app/parsing.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string_view>

#include "app/declarations.h"
#include "support/text/text_encoding.h"

namespace touch {

std::optional<int> parseCommandLine(CLI::App& app, const Manual& manual, const KnownValues& known,
                                    int argc, char** argv,
                                    const std::function<void()>& declareAll) {
  constexpr int exitWrongUse = 2;
  const std::string_view first = argc > 1 ? argv[1] : "";
  if (first == "--man") {
    declareAll();
    std::fputs(manPage(app, manual).c_str(), stdout);
    return 0;
  }
  if (first == "--complete") {
    declareAll();
    const std::vector<std::string> words(argv + 2, argv + argc);
    std::fputs(completions(app, known, words).c_str(), stdout);
    return 0;
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    // What is refused is quoted there.
    std::ostringstream output;
    std::ostringstream errors;
    const int status = app.exit(error, output, errors);
    std::cout << printableLines(asShown(output.str())) << std::flush;
    std::cerr << printableLines(asShown(errors.str())) << std::flush;
    return status == 0 ? 0 : exitWrongUse;
  }
  return std::nullopt;
}

}  // namespace touch
