#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace touch {

// What a declared command line says of itself, for its manual page and for completion.

/// The commands that --help shows, in its order.
std::vector<const CLI::App*> shownCommands(const CLI::App& app);
/// The options that --help shows, with or without the arguments that have a place of their own.
std::vector<const CLI::Option*> shownOptions(const CLI::App& app);
std::vector<const CLI::Option*> shownArguments(const CLI::App& app);

/// `name`, which may hold "=" and ":", as the parser takes it for an argument's: its newer releases
/// allow neither.
std::string argumentName(std::string name);
/// `text` of the parser's, or an argument's name, as users are to see it.
std::string asShown(std::string text);

/// All spellings of an option, dashes included: "-h", "--help".
std::vector<std::string> spellings(const CLI::Option& option);
bool takesValue(const CLI::Option& option);
/// What kind of value it takes, as --help names it and without its limits: "FILE", "WxH", "INT".
std::string valueName(const CLI::Option& option);
/// The words that its value must be one of; none when it is free.
std::vector<std::string> choices(const CLI::Option& option);

}  // namespace touch
