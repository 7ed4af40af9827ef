#include "app/parsing.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string_view>

#include "app/declarations.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

/// `status`, unless what was printed has not reached whoever reads it.
int endedWith(int status, const CLI::App& app) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  std::cerr << app.get_name() << ": " << lostOutput << std::endl;
  return status == EXIT_SUCCESS ? EXIT_FAILURE : status;
}

}  // namespace

std::optional<int> parseCommandLine(CLI::App& app, const Manual& manual, const KnownValues& known,
                                    int argc, char** argv,
                                    const std::function<void()>& declareAll) {
  constexpr int exitWrongUse = 2;
  const std::string_view first = argc > 1 ? argv[1] : "";
  if (first == "--man") {
    declareAll();
    std::fputs(manPage(app, manual).c_str(), stdout);
    return endedWith(EXIT_SUCCESS, app);
  }
  if (first == "--complete") {
    declareAll();
    const std::vector<std::string> words(argv + 2, argv + argc);
    std::fputs(completions(app, known, words).c_str(), stdout);
    return endedWith(EXIT_SUCCESS, app);
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
    return endedWith(status == 0 ? EXIT_SUCCESS : exitWrongUse, app);
  }
  return std::nullopt;
}

}  // namespace touch
