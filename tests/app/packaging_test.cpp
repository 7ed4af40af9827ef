#include <regex>

#include "tests/app/child_process.h"

namespace touch::test {
namespace {

std::string printed(const std::string& program, const Lines& words) {
  const Ended ended = runProgram(program, words);
  EXPECT_EQ(ended.status, 0) << ended.errors;
  return ended.output;
}

std::string between(const std::string& text, const std::string& begin, const std::string& end) {
  const auto from = text.find(begin);
  if (from == text.npos) return {};
  return text.substr(from, text.find(end, from + 1) - from);
}

/// The options and commands that --help lists, in the parser's own format.
Lines listed(const std::string& help) {
  const std::regex name("\n  (?:-h,)?([a-z0-9-]+)");
  Lines names;
  for (const char* heading : {"\nOptions:", "\nSubcommands:"}) {
    const std::string list = between(help, heading, "\n\n");
    for (std::sregex_iterator found(list.begin(), list.end(), name), end; found != end; ++found)
      names.push_back((*found)[1]);
  }
  return names;
}

std::string marked(const std::string& text) {
  return std::regex_replace(text, std::regex("-"), "\\-");
}

/// Compares what `program` lists for the command `path` and those below it with its manual page and
/// what completion offers.
void compare(const std::string& program, const std::string& manual, const std::string& heading,
             const Lines& path = {}) {
  SCOPED_TRACE(heading);
  ASSERT_LT(path.size(), 4u) << "a command without a name gets the help of the one above it";
  const std::string part = path.empty() ? between(manual, ".SH \"OPTIONS\"", ".SH")
                                        : between(manual, ".SS \"" + marked(heading), ".S");
  EXPECT_NE(part, "");
  const Lines begun = Lines{"--complete"} + path;
  const std::string offered =
      printed(program, begun + Lines{"-"}) + printed(program, begun + Lines{""});
  const Lines names = listed(printed(program, path + Lines{"--help"}));
  EXPECT_THAT(names, Contains("--help"));
  for (const std::string& name : names) {
    EXPECT_THAT(offered, HasSubstr("\n" + name + "\t"));
    if (!name.starts_with('-')) {
      compare(program, manual, heading + " " + name, path + Lines{name});
    } else if (name != "--help") {
      EXPECT_THAT(part, HasSubstr("\\fB" + marked(name) + "\\fR"));
    }
  }
}

TEST(ManualAndCompletion, CoverAllThatTheHelpLists) {
  EXPECT_THAT(listed(printed(TOUCHCTL, {"serial", "--help"})), Contains("write-word"));
  // What the parser takes in no name of an argument.
  EXPECT_THAT(printed(TOUCHCTL, {"pins", "set", "--help"}), HasSubstr("  WIRE=CHANNEL:BIT "));
  const std::string manual = printed(TOUCHCTL, {"--man"});
  EXPECT_THAT(manual, HasSubstr("\\fIADDRESS=WORD\\fR"));
  compare(TOUCHCTL, manual, "touchctl");
  compare(TOUCHSIM, printed(TOUCHSIM, {"--man"}), "touchsim");
  compare(TOUCHUTILITY, printed(TOUCHUTILITY, {"--man"}), "touchutility");
}

TEST(Completion, IsWhatBashOffers) {
  const TemporaryFolder folder;
  folder.write("my panel.vrq", "");
  const std::string file = (folder.path() / "my").string();
  // As bash cuts the line into words, the program first.
  const std::pair<Lines, std::string> cases[] = {
      {{TOUCHCTL, "se"}, "set serial"},
      {{TOUCHCTL, "set", "touch-mode", "d"}, "desktop drawing"},
      {{TOUCHCTL, "serial", "send", "--set", "=", "m"}, "m01"},
      {{TOUCHCTL, "--simulate", "--com", "1", "=", "/dev/x", "pins", ""}, "show set"},
      {{TOUCHCTL, "params", "load", file}, file + " panel.vrq"},
      {{TOUCHCTL, "--work-dir", file}, ""},
      {{TOUCHCTL, "--com", "2", "=", file}, file + " panel.vrq"},
      {{TOUCHCTL, "no-such-command", ""}, ""},
      {{TOUCHSIM, "--controller", "RS232\\ DEVICE\\ 1"}, "RS232\\ DEVICE\\ 1"},
      {{TOUCHUTILITY, "--lang", ""}, "en de"},
  };
  for (const auto& [line, offered] : cases) {
    const Lines words{"--norc", "-c",
                      "source \"$1\"; shift; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); "
                      "_touchutility \"$1\"; echo \"${COMPREPLY[*]}\"",
                      "bash", COMPLETION};
    EXPECT_EQ(printed("/bin/bash", words + line), offered + "\n") << line.back();
  }
}

TEST(Installed, ProgramsFindTheirSimulatedDriverWhereverTheyAre) {
  const TemporaryFolder folder;
  const std::string prefix = (folder.path() / "any place").string();
  printed(CMAKE, {"--install", BUILD_FOLDER, "--prefix", prefix});
  EXPECT_THAT(printed(prefix + "/bin/touchctl", {"--simulate", "list"}), HasSubstr("(answers)"));
  EXPECT_THAT(folder.read("any place/share/man/man1/touchctl.1"), HasSubstr(".TH TOUCHCTL 1"));
}

/// All files of this kind in a folder of the sources, as one text.
std::string sources(const std::string& folder, const std::string& extension) {
  std::string text;
  for (const auto& entry : fs::recursive_directory_iterator(SOURCE_FOLDER "/" + folder)) {
    if (entry.path().extension() != extension) continue;
    std::ifstream file(entry.path());
    text.append(std::istreambuf_iterator<char>(file), {});
  }
  return text;
}

TEST(Documents, NameTestsThatThereAre) {
  const std::string tests = std::regex_replace(sources("tests", ".cpp"), std::regex("\\s+"), "");
  const std::string documents = sources("docs", ".md");
  const std::regex name("`([A-Z]\\w+)\\.([A-Z]\\w+)`");
  int named = 0;
  for (std::sregex_iterator found(documents.begin(), documents.end(), name), end; found != end;
       ++found, ++named)
    EXPECT_NE(tests.find('(' + found->str(1) + ',' + found->str(2) + ')'), tests.npos)
        << found->str();
  EXPECT_GT(named, 0);
}

}  // namespace
}  // namespace touch::test
