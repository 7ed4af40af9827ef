#include "app/declarations.h"

#include <algorithm>

namespace touch {

namespace {

// Bytes that no text in UTF-8 has, each as wide as what it stands for.
constexpr char equals = '\xFE';
constexpr char colon = '\xFF';

}  // namespace

std::vector<const CLI::App*> shownCommands(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<const CLI::Option*> shownOptions(const CLI::App& app) {
  return app.get_options([](const CLI::Option* option) {
    return option->nonpositional() && !option->get_group().empty();
  });
}

std::vector<const CLI::Option*> shownArguments(const CLI::App& app) {
  return app.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::string argumentName(std::string name) {
  std::ranges::replace(name, '=', equals);
  std::ranges::replace(name, ':', colon);
  return name;
}

std::string asShown(std::string text) {
  std::ranges::replace(text, equals, '=');
  std::ranges::replace(text, colon, ':');
  return text;
}

std::vector<std::string> spellings(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames())
    names.push_back("-" + name);
  for (const std::string& name : option.get_lnames())
    names.push_back("--" + name);
  return names;
}

bool takesValue(const CLI::Option& option) {
  return option.get_items_expected_max() > 0;
}

std::string valueName(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::string name = type.substr(0, type.find(':'));
  return name.empty() ? "VALUE" : name;
}

std::vector<std::string> choices(const CLI::Option& option) {
  // The check for membership describes itself as "{one,other}" behind the type.
  const std::string type = option.get_type_name();
  const auto open = type.find(":{");
  const auto close = type.find('}');
  if (open == type.npos || close == type.npos) return {};
  return CLI::detail::split(type.substr(open + 2, close - open - 2), ',');
}

}  // namespace touch
