#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/app/child_process.h"

namespace touch::test {

namespace {

using testing::HasSubstr;
using Words = std::vector<std::string>;

Words joined(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

std::string printed(const std::string& program, const Words& words) {
  const Ended ended = runProgram(program, words);
  EXPECT_EQ(ended.status, 0) << ended.errors;
  return ended.output;
}

/// What --help lists, in the parser's own format.
struct Listed {
  Words options;
  Words commands;
};

Listed listed(const std::string& help) {
  Listed found;
  Words* list = nullptr;
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(' ')) {
      list = line == "Options:"       ? &found.options
             : line == "Subcommands:" ? &found.commands
                                      : nullptr;
    } else if (list != nullptr && line.find_first_not_of(' ') == 2) {
      std::istringstream names(line.substr(2, line.find(' ', 2) - 2));
      for (std::string name; std::getline(names, name, ',');)
        list->push_back(name);
    }
  }
  return found;
}

std::string marked(const std::string& text) {
  std::string dashes;
  for (const char c : text)
    dashes += c == '-' ? "\\-" : std::string(1, c);
  return dashes;
}

std::string between(const std::string& text, const std::string& begin, const std::string& end) {
  const auto from = text.find(begin);
  if (from == text.npos) return {};
  return text.substr(from, text.find(end, from + 1) - from);
}

/// Compares what `program` with the commands `path` lists with its manual page and what completion offers; returns how
/// many commands there are below it.
std::size_t compare(const std::string& program, const std::string& manual,
                    const std::string& heading, const Words& path) {
  SCOPED_TRACE(heading);
  const auto [options, commands] = listed(printed(program, joined(path, {"--help"})));
  EXPECT_THAT(options, testing::Contains("--help"));
  const std::string part = path.empty() ? between(manual, ".SH \"OPTIONS\"", ".SH")
                                        : between(manual, ".SS \"" + marked(heading), ".S");
  EXPECT_NE(part, "");
  const std::string offered = printed(program, joined(joined({"--complete"}, path), {"-"}));
  for (const std::string& option : options) {
    EXPECT_THAT(offered, HasSubstr("\n" + option + "\t"));
    const bool saidOnce = !path.empty() && (option == "--help" || option == "-h");
    if (!saidOnce) {
      EXPECT_THAT(part, HasSubstr("\\fB" + marked(option) + "\\fR"));
    }
  }
  const std::string offeredCommands = printed(program, joined(joined({"--complete"}, path), {""}));
  std::size_t count = commands.size();
  for (const std::string& command : commands) {
    EXPECT_THAT(offeredCommands, HasSubstr("\n" + command + "\t"));
    count += compare(program, manual, heading + " " + command, joined(path, {command}));
  }
  return count;
}

TEST(ManualAndCompletion, CoverAllThatTheHelpLists) {
  EXPECT_GE(compare(TOUCHCTL, printed(TOUCHCTL, {"--man"}), "touchctl", {}), 25U);
  compare(TOUCHSIM, printed(TOUCHSIM, {"--man"}), "touchsim", {});
  compare(TOUCHUTILITY, printed(TOUCHUTILITY, {"--man"}), "touchutility", {});
}

TEST(Completion, IsWhatBashOffers) {
  const TemporaryFolder folder;
  folder.write("my panel.vrq", "");
  const std::string file = (folder.path() / "my").string();
  // As bash cuts the line into words, the program first.
  const struct {
    Words line;
    std::string offered;
  } cases[] = {
      {{TOUCHCTL, "se"}, "set serial"},
      {{TOUCHCTL, "get", "rot"}, "rotation"},
      {{TOUCHCTL, "set", "touch-mode", "d"}, "desktop drawing"},
      {{TOUCHCTL, "set", "rotation", ""}, "0 90 180 270"},
      {{TOUCHCTL, "serial", "send", "--set", "=", "m"}, "m01"},
      {{TOUCHCTL, "--simulate", "--com", "1", "=", "/dev/x", "pins", ""}, "show set"},
      {{TOUCHCTL, "info", "--js"}, "--json"},
      {{TOUCHCTL, "params", "load", file}, file + " panel.vrq"},
      {{TOUCHCTL, "--work-dir", file}, ""},
      {{TOUCHCTL, "doctor", "--save", file}, file + " panel.vrq"},
      {{TOUCHCTL, "--com", "2", "=", file}, file + " panel.vrq"},
      {{TOUCHCTL, "no-such-command", ""}, ""},
      {{TOUCHSIM, "--controller", "RS232\\ DEVICE\\ 1"}, "RS232\\ DEVICE\\ 1"},
      {{TOUCHUTILITY, "--sim"}, "--simulate"},
      {{TOUCHUTILITY, "--lang", ""}, "en de"},
  };
  for (const auto& [line, offered] : cases) {
    const Words words{"--norc", "-c",
                      "source \"$1\"; shift; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); "
                      "_touchutility \"$1\"; echo \"${COMPREPLY[*]}\"",
                      "bash", COMPLETION};
    EXPECT_EQ(printed("/bin/bash", joined(words, line)), offered + "\n") << line.back();
  }
}

TEST(Installed, ProgramsFindTheirSimulatedDriverWhereverTheyAre) {
  const TemporaryFolder folder;
  const std::string prefix = (folder.path() / "any place").string();
  printed(CMAKE, {"--install", BUILD_FOLDER, "--prefix", prefix});
  EXPECT_THAT(printed(prefix + "/bin/touchctl", {"--simulate", "list"}), HasSubstr("(answers)"));
  EXPECT_THAT(folder.read("any place/share/man/man1/touchctl.1"), HasSubstr(".TH TOUCHCTL 1"));
}

}  // namespace

}  // namespace touch::test
