#include "app/manual.h"

#include <cctype>

#include "app/declarations.h"
#include "app/options.h"

namespace touch {

namespace {

/// `text` for man(7). Dashes stay what they are when copied, and no line becomes a request.
std::string plain(std::string_view text) {
  std::string escaped;
  bool startsLine = true;
  for (const char c : text) {
    if (startsLine && (c == '.' || c == '\'')) escaped += "\\&";
    if (c == '\\') {
      escaped += "\\e";
    } else if (c == '-') {
      escaped += "\\-";
    } else {
      escaped += c;
    }
    startsLine = c == '\n';
  }
  return escaped;
}

std::string bold(std::string_view text) {
  return "\\fB" + plain(text) + "\\fR";
}
std::string italic(std::string_view text) {
  return "\\fI" + plain(text) + "\\fR";
}

std::string capitals(std::string text) {
  for (char& c : text)
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

std::string section(std::string_view title) {
  return ".SH \"" + std::string(title) + "\"\n";
}

std::string entry(const std::string& term, const std::string& text) {
  return ".TP\n" + term + "\n" + text + "\n";
}

/// "Print the version and exit" as a sentence, with what else its declaration says.
std::string describe(const CLI::Option& option) {
  std::string text = option.get_description();
  if (!text.empty() && text.back() != '.') text += '.';
  if (const auto words = choices(option); !words.empty()) {
    text += " One of ";
    for (std::size_t i = 0; i < words.size(); ++i)
      text += (i == 0 ? "" : i + 1 == words.size() ? " and " : ", ") + words[i];
    text += '.';
  }
  if (const std::string& value = option.get_default_str(); !value.empty())
    text += " Without it " + value + ".";
  return plain(text);
}

std::string optionTerm(const CLI::Option& option) {
  std::string term;
  for (const std::string& name : spellings(option))
    term += (term.empty() ? "" : ", ") + bold(name);
  if (takesValue(option)) term += " " + italic(valueName(option));
  return term;
}

std::string argumentTerm(const CLI::Option& argument) {
  const bool repeats = argument.get_items_expected_max() > 1;
  std::string term = italic(asShown(argument.get_name()));
  if (repeats) term += " ...";
  return argument.get_required() ? term : "[" + term + "]";
}

bool isHelp(const CLI::App& app, const CLI::Option* option) {
  return option == app.get_help_ptr();
}

/// What stands behind the program's or the command's name.
std::string usage(const CLI::App& app) {
  std::string line;
  for (const CLI::Option* option : shownOptions(app)) {
    if (!isHelp(app, option)) {
      line += " [\\fIOPTIONS\\fR]";
      break;
    }
  }
  for (const CLI::Option* argument : shownArguments(app))
    line += " " + argumentTerm(*argument);
  if (!shownCommands(app).empty()) line += " \\fICOMMAND\\fR ...";
  return line;
}

std::string optionEntries(const CLI::App& app) {
  std::string text;
  for (const CLI::Option* argument : shownArguments(app))
    text += entry(italic(asShown(argument->get_name())), describe(*argument));
  for (const CLI::Option* option : shownOptions(app)) {
    const bool ofProgram = app.get_parent() == nullptr;
    if (ofProgram || !isHelp(app, option)) text += entry(optionTerm(*option), describe(*option));
  }
  return text;
}

/// A sentence, or lines that stand as they are.
std::string footer(std::string_view text) {
  if (text.find('\n') == text.npos) return ".PP\n" + plain(text) + "\n";
  return ".PP\n.nf\n" + plain(text) + "\n.fi\n";
}

std::string commandEntries(const CLI::App& app, const std::string& path) {
  std::string text;
  for (const CLI::App* command : shownCommands(app)) {
    const std::string whole = path + " " + command->get_name();
    text += ".SS \"" + plain(whole) + usage(*command) + "\"\n" + plain(command->get_description()) +
            ".\n" + optionEntries(*command);
    const std::string last = command->get_footer();
    const bool takenOver = last == app.get_footer();
    if (!takenOver && !last.empty()) text += footer(last);
    text += commandEntries(*command, whole);
  }
  return text;
}

std::string entries(std::string_view title, std::span<const Manual::Entry> list) {
  if (list.empty()) return {};
  std::string text = section(title);
  for (const auto& [term, meaning] : list)
    text += entry(bold(term), plain(meaning));
  return text;
}

/// "Finds and sets up controllers. And more." as "finds and sets up controllers".
std::string summary(const CLI::App& app) {
  std::string text = app.get_description();
  text.resize(std::min(text.find('.'), text.size()));
  if (!text.empty()) text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
  return text;
}

}  // namespace

std::string exitStatusLine(const Manual& manual) {
  std::string line = "Exit status:";
  for (const auto& [status, meaning] : manual.exitStatus) {
    line += line.back() == ':' ? " " : ", ";
    line += std::string(status) + " " + std::string(meaning);
  }
  return line + ".";
}

std::string manPage(const CLI::App& app, const Manual& manual) {
  const std::string& name = app.get_name();
  std::string page = ".TH " + capitals(name) + " 1 \"\" \"" + programVersion() +
                     "\" \"User Commands\"\n" + section("NAME") + name + " \\- " +
                     plain(summary(app)) + "\n" + section("SYNOPSIS") + bold(name) + usage(app) +
                     "\n" + section("DESCRIPTION") + plain(app.get_description()) + "\n";
  for (const std::string_view paragraph : manual.description)
    page += ".PP\n" + plain(paragraph) + "\n";
  page += section("OPTIONS") + optionEntries(app);
  if (!shownCommands(app).empty())
    page += section("COMMANDS") + "Each has \\fB\\-\\-help\\fR.\n" + commandEntries(app, name);
  page += entries("EXIT STATUS", manual.exitStatus);
  page += entries("FILES", manual.files);
  page += entries("EXAMPLES", manual.examples);
  page += section("SEE ALSO") + std::string(manual.seeAlso) + "\n";
  return page;
}

}  // namespace touch
