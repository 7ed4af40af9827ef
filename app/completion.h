#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace touch {

/// The values that arguments are known to take although nothing on the command line checks them.
class KnownValues {
 public:
  /// `argument` takes `values`; if `after` is given, only when that word stands somewhere before
  /// it.
  void add(const CLI::Option& argument, std::vector<std::string> values,
           std::optional<std::string> after = std::nullopt);
  std::vector<std::string> of(const CLI::Option& argument,
                              std::span<const std::string> before) const;

 private:
  struct Known {
    const CLI::Option* argument;
    std::vector<std::string> values;
    std::optional<std::string> after;
  };
  std::vector<Known> known_;
};

/// What may stand in place of the last of `words`, which are a command line without the program's
/// name; the last may be empty or the beginning of a word. The first line is "words", and each
/// other line one of them with a tab and its meaning behind it, or the only line is "files" or
/// "folders": the shell knows those.
std::string completions(const CLI::App& app, const KnownValues& known,
                        std::span<const std::string> words);

}  // namespace touch
