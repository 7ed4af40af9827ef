#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/app/child_process.h"
#include "tests/serial/pseudo_terminal.h"

namespace touch::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr auto patience = std::chrono::seconds(20);

/// A program that runs beside the test, until it is told to end.
class BackgroundProgram {
 public:
  /// With a `terminal` to read from, the next line may also be one of its error output.
  BackgroundProgram(const std::string& program, Words arguments, const std::string& terminal = {}) {
    arguments.insert(arguments.begin(), program);
    std::vector<char*> argv;
    for (std::string& argument : arguments)
      argv.push_back(argument.data());
    argv.push_back(nullptr);
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    output_ = ends[0];
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&files, ends[0]);
    if (!terminal.empty()) {
      posix_spawn_file_actions_addopen(&files, STDIN_FILENO, terminal.c_str(), O_RDWR | O_NOCTTY,
                                       0);
      posix_spawn_file_actions_adddup2(&files, ends[1], STDERR_FILENO);
    }
    const int failed = posix_spawn(&child_, program.c_str(), &files, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    close(ends[1]);
    if (failed != 0) throw std::runtime_error(program + " cannot be started");
  }
  BackgroundProgram(const BackgroundProgram&) = delete;
  BackgroundProgram& operator=(const BackgroundProgram&) = delete;
  ~BackgroundProgram() {
    if (child_ > 0) end(SIGKILL);
    if (output_ >= 0) close(output_);
  }

  /// The next line that it prints.
  std::string line() const {
    std::string text;
    char character = 0;
    while (read(output_, &character, 1) == 1 && character != '\n')
      text += character;
    return text;
  }
  /// Everything up to `end`, or all when that does not come.
  std::string textUntil(const std::string& end) const {
    std::string text;
    char character = 0;
    while (!text.ends_with(end) && read(output_, &character, 1) == 1)
      text += character;
    return text;
  }
  void stopReading() { close(std::exchange(output_, -1)); }
  /// Its exit status; -1 when it did not end by itself.
  int end(int signal) {
    kill(child_, signal);
    return waitForEnd();
  }
  int waitForEnd() {
    int status = 0;
    waitpid(std::exchange(child_, 0), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t child_ = 0;
  int output_ = -1;
};

class Serial : public testing::Test {
 protected:
  Ended run(Words words) const {
    for (std::string& word : words) {
      if (const auto at = word.find('@'); at != word.npos) {
        word.replace(at, 1, folder.path().string());
      }
    }
    words.insert(words.begin(), {"--work-dir", folder.path().string()});
    return runProgram(TOUCHCTL, words);
  }
  /// On a simulated controller that draws without end.
  Ended runOnLine(const BackgroundProgram& sim, Words words) const {
    words.insert(words.begin(), {"--com", "1=" + device(sim), "serial"});
    words.push_back("--no-driver");
    return run(words);
  }
  const std::string& device(const BackgroundProgram& sim) const {
    if (device_.empty()) device_ = sim.line();
    return device_;
  }
  /// Until the trace file is there and has `text` in it.
  bool awaitInTrace(std::string_view text) const {
    const auto trace = folder.path() / "trace.jsonl";
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!std::filesystem::exists(trace) ||
           folder.read("trace.jsonl").find(text) == std::string::npos) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      poll(nullptr, 0, 10);
    }
    return true;
  }

  TemporaryFolder folder;

 private:
  mutable std::string device_;
};

const std::string recording =
    "touch recording 1\n"
    "0.000000 > 01 4D 53 0D\n"
    "0.010000 < D8 10 20 30 01 41\n"
    "0.020000 < 98 10 20\n"
    "0.030000 < 30 01\n";

TEST_F(Serial, TalksPastTheDriver) {
  const struct {
    Words words;
    int status;
    const char* output;
    const char* errors;
  } cases[] = {
      {{"send", "iO"}, 0, "M0130100\n01 4D 30 31", ""},
      {{"send", "OI", "--set", "m01", "--json"}, 0, "\"text\": \"M0130100\"", ""},
      {{"send", "M", "--set", "e02", "--setting", "1"}, 0, "UIL", ""},
      {{"send", "M", "--set", "e02"}, 1, "", "Select Setting Mode First!!"},
      {{"send", "OI"}, 2, "", "there is no command \"OI\" in this set"},
      {{"send", "iG"}, 2, "", "read-word"},
      {{"read-word", "20"}, 0, "20  2580\n", ""},
      {{"read-word", "20", "--json"}, 0, "\"word\": \"2580\"", ""},
      {{"read-word", "45"}, 2, "", "00 to 3F or 80 to FF"},
      {{"write-word", "20=1234"}, 0, "20  2580 -> 1234\n", ""},
      {{"write-word", "20=12x4"}, 2, "", "4 hexadecimal digits"},
      {{"find-port"}, 0, "COM1\n", ""},
      {{"find-port", "--json"}, 0, "\"port\": 1", ""},
      {{"to-8n1"}, 1, "", "9600,N,7,2 Change to 9600,N,8,1"},
      {{"monitor", "--port", "9", "--com", "9=/dev/none"}, 1, "", "COM9 (/dev/none)"},
  };
  for (const auto& tested : cases) {
    Words words = tested.words;
    words.insert(words.begin(), {"--simulate", "serial"});
    const Ended ended = run(words);
    EXPECT_EQ(ended.status, tested.status) << tested.words[0] << ended.errors;
    EXPECT_THAT(ended.output, HasSubstr(tested.output));
    EXPECT_THAT(ended.errors, HasSubstr(tested.errors));
  }
}

TEST_F(Serial, GivesThePortBack) {
  ASSERT_EQ(run({"--simulate", "--trace", "@/trace.jsonl", "serial", "send", "iO"}).status, 0);
  const std::string trace = folder.read("trace.jsonl");
  const auto released = trace.find("CloseCOMPort");
  const auto back = trace.find("ReopenCOMPort");
  ASSERT_NE(released, trace.npos);
  ASSERT_NE(back, trace.npos);
  EXPECT_LT(released, back);
  EXPECT_LT(back, trace.rfind("CloseController"));
}

TEST_F(Serial, EndsInOrderAndSaysSoWhenItsOutputGoesNowhere) {
  const struct {
    const char* command;
    const char* errors;
    bool takesThePort;
  } cases[] = {{"serial send iO > /dev/full", "the output could not be written", true},
               {"serial send iO >&-", "the output could not be written", true},
               {"--yes serial record /dev/full --seconds 1", "room for the recording", true},
               {"list > /dev/full", "the output could not be written", false},
               {"serial send iO 2> /dev/full", "", true}};
  const auto trace = folder.path() / "trace.jsonl";
  for (const auto& [command, errors, takesThePort] : cases) {
    const Ended ended =
        runProgram("/bin/sh", {"-c", std::string(TOUCHCTL) + " --simulate --work-dir " +
                                         folder.path().string() + " --trace " + trace.string() +
                                         ' ' + command});
    EXPECT_EQ(ended.status, *errors == '\0' ? 0 : 1) << command;
    EXPECT_THAT(ended.errors, HasSubstr(errors)) << command;
    EXPECT_EQ(folder.read("trace.jsonl").find("ReopenCOMPort") != std::string::npos, takesThePort)
        << command;
  }

  // The driver's port is a line that stays, and somebody else is to open it afterwards.
  BackgroundProgram sim(TOUCHSIM, {"--strokes", "lines"});
  BackgroundProgram monitor(TOUCHCTL,
                            {"--com", "1=" + device(sim), "serial", "monitor", "--no-driver"});
  EXPECT_NE(monitor.line(), "");
  monitor.stopReading();
  EXPECT_EQ(monitor.waitForEnd(), 1) << "it ends by itself";
  const int line = open(device(sim).c_str(), O_RDWR | O_NOCTTY);
  ASSERT_GE(line, 0);
  int exclusive = -1;
  EXPECT_EQ(ioctl(line, TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
  close(line);
}

TEST_F(Serial, GivesThePortBackWhenItIsEndedFromOutside) {
  const auto trace = (folder.path() / "trace.jsonl").string();
  const Words common = {"--simulate", "--work-dir", folder.path().string(), "--trace", trace};
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    std::filesystem::remove(trace);
    Words words = common;
    words.insert(words.end(), {"serial", "monitor"});
    BackgroundProgram program(TOUCHCTL, words);
    ASSERT_TRUE(awaitInTrace("\"serial\":\"open\""));
    EXPECT_EQ(program.end(signal), 0) << signal;
    EXPECT_THAT(folder.read("trace.jsonl"), HasSubstr("ReopenCOMPort")) << signal;
  }

  // A question that is left unanswered is a no, and keeps nobody waiting.
  folder.write("kept.txt", "");
  const struct {
    Words words;
    const char* answered;
    const char* question;
    const char* never;  ///< in the trace
    bool takesThePort;
  } cases[] = {
      {{"serial", "to-8n1"}, nullptr, "[y/N] ", "9600,n,7,2", true},
      {{"serial", "record", (folder.path() / "kept.txt").string()},
       nullptr,
       "[y/N] ",
       "\"read\"",
       true},
      {{"pins", "set", "4", "X+=7:7", "X-=1:1", "Y+=2:2", "Y-=3:3"},
       "[y/N] ",
       "Press Enter when that is done.",
       "53 50",
       false},
  };
  for (const auto& [asking, answered, question, never, takesThePort] : cases) {
    PseudoTerminal terminal;
    std::filesystem::remove(trace);
    Words words = common;
    words.insert(words.end(), asking.begin(), asking.end());
    BackgroundProgram program(TOUCHCTL, words, terminal.path());
    if (answered != nullptr) {
      program.textUntil(answered);
      const std::vector<std::uint8_t> yes = {'y', '\n'};
      terminal.flood(yes);
    }
    EXPECT_THAT(program.textUntil(question), HasSubstr(question)) << asking[1];
    EXPECT_EQ(program.end(SIGINT), 1) << asking[1];
    const std::string said = folder.read("trace.jsonl");
    EXPECT_EQ(said.find(never), said.npos) << asking[1];
    EXPECT_EQ(said.find("ReopenCOMPort") != said.npos, takesThePort) << asking[1];
  }
}

TEST_F(Serial, DecodesAndReplaysARecordingWithoutADriver) {
  folder.write("r.txt", recording);
  folder.write("bad.txt", "touch recording 1\n0.01 < D8\n");
  const std::string lines =
      "0.010 = touch X  4112 Y   176  D8 10 20 30 01\n"
      "0.010 < 41";
  const Ended decoded = run({"--driver", "@/none.so", "serial", "decode", "@/r.txt"});
  EXPECT_EQ(decoded.status, 0);
  EXPECT_THAT(decoded.output, HasSubstr(lines));
  EXPECT_THAT(decoded.errors, HasSubstr("2 reports, 1 bytes in no report"));

  const Ended asJson = run({"serial", "decode", "@/r.txt", "--json"});
  std::istringstream output(asJson.output);
  std::string line;
  std::getline(output, line);
  EXPECT_EQ(json::parse(line).at("x"), 4112);
  EXPECT_EQ(json::parse(line).at("bytes"), "D8 10 20 30 01");

  EXPECT_THAT(run({"serial", "replay", "@/r.txt"}).output, HasSubstr("touch X  4112 Y   176"));
  const Ended bad = run({"serial", "decode", "@/bad.txt"});
  EXPECT_EQ(bad.status, 1);
  EXPECT_THAT(bad.errors, HasSubstr("bad.txt, line 2: expected a time"));
}

TEST_F(Serial, ListensToAController) {
  const BackgroundProgram sim(TOUCHSIM, {"--strokes", "lines"});
  EXPECT_THAT(runOnLine(sim, {"monitor", "--seconds", "1.5"}).output, HasSubstr("= touch X"));

  const Ended rate = runOnLine(sim, {"rate", "--json"});
  ASSERT_EQ(rate.status, 0) << rate.errors;
  const json measured = json::parse(rate.output);
  EXPECT_EQ(measured.at("ceiling"), 192.0);
  EXPECT_GT(measured.at("points"), 0);
  EXPECT_GT(measured.at("intervals").at("median"), 0.0);

  const Ended recorded = runOnLine(sim, {"record", "@/kept.txt", "--seconds", "1.5"});
  EXPECT_EQ(recorded.status, 0) << recorded.errors;
  EXPECT_THAT(run({"serial", "decode", "@/kept.txt"}).output, HasSubstr("touch X"));
  EXPECT_EQ(runOnLine(sim, {"record", "@/kept.txt"}).status, 1) << "it is there already";
}

TEST_F(Serial, FindsAControllerOnCom2AndMeasuresAFormatOfItsOwn) {
  folder.write("zevrik.fmt", "six 6 E8 A8 high7@1,3\nbad 6\n");
  folder.write("six.txt",
               "touch recording 1\n"
               "0.000000 < E8 01 02 03 04 05\n"
               "0.500000 < E8 01 02 03 04 05\n"
               "1.000000 < A8 01 02 03 04 05\n");
  const BackgroundProgram sim(TOUCHSIM, {"--play", (folder.path() / "six.txt").string()});
  const Ended found = run(
      {"--com", "1=/dev/none", "--com", "2=" + device(sim), "serial", "find-port", "--no-driver"});
  EXPECT_EQ(found.output, "COM2\n") << found.errors;

  const Ended rate = runOnLine(sim, {"rate", "--json"});
  ASSERT_EQ(rate.status, 0) << rate.errors;
  EXPECT_EQ(json::parse(rate.output).at("ceiling"), 160.0);
  EXPECT_THAT(rate.errors, HasSubstr("zevrik.fmt, line 2: expected five fields"));
}

TEST_F(Serial, TheWindowRefusesALanguageThatItDoesNotSpeak) {
  const Ended ended = runProgram(TOUCHUTILITY, {"--simulate", "--lang", "xx"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.errors,
              HasSubstr("\"xx\" is not a language of this program: expected one of en, de"));
}

TEST_F(Serial, TheWindowEndsInOrderWhenToldToFromOutside) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  const auto trace = (folder.path() / "trace.jsonl").string();
  for (const std::string_view said : {"", "GetRotation"}) {
    std::filesystem::remove(trace);
    BackgroundProgram program(
        TOUCHUTILITY, {"--simulate", "--trace", trace, "--work-dir", folder.path().string()});
    ASSERT_TRUE(awaitInTrace(said)) << "it does not start";
    EXPECT_EQ(program.end(SIGTERM), 0) << said;
    if (said.empty()) continue;
    EXPECT_THAT(folder.read("trace.jsonl"), HasSubstr("01 50 4C 0D")) << "parameters are locked";
  }
}

}  // namespace

}  // namespace touch::test
