#pragma once

#include <span>
#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace touch {

/// What a program's manual page says beside its options and commands, which are taken from their
/// declarations. All texts are plain: the page's own markup is added when it is written.
struct Manual {
  struct Entry {
    std::string_view term;  ///< an exit status, a file, or a command line
    std::string_view text;
  };
  std::span<const std::string_view>
      description;  ///< paragraphs after the program's own description
  std::span<const Entry> exitStatus;
  std::span<const Entry> files;
  std::span<const Entry> examples;
  std::string_view seeAlso;  ///< the other programs' pages
};

extern const Manual touchutilityManual;
extern const Manual touchctlManual;
extern const Manual touchsimManual;

/// "Exit status: 0 done, 1 ...", for the end of a program's --help.
std::string exitStatusLine(const Manual& manual);

/// The program's page of section 1, in the markup of man(7).
std::string manPage(const CLI::App& app, const Manual& manual);

}  // namespace touch
