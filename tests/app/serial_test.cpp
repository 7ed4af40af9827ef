#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/app/child_process.h"

namespace touch::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr auto patience = std::chrono::seconds(20);

/// A program that runs beside the test, until it is told to end.
class BackgroundProgram {
 public:
  BackgroundProgram(const std::string& program, Words arguments) {
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
    const int failed = posix_spawn(&child_, program.c_str(), &files, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    close(ends[1]);
    if (failed != 0) throw std::runtime_error(program + " cannot be started");
  }
  BackgroundProgram(const BackgroundProgram&) = delete;
  BackgroundProgram& operator=(const BackgroundProgram&) = delete;
  ~BackgroundProgram() {
    if (child_ > 0) end(SIGKILL);
    close(output_);
  }

  /// The next line that it prints.
  std::string line() const {
    std::string text;
    char character = 0;
    while (read(output_, &character, 1) == 1 && character != '\n')
      text += character;
    return text;
  }
  /// Its exit status; -1 when it did not end by itself.
  int end(int signal) {
    kill(child_, signal);
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
  BackgroundProgram program(TOUCHUTILITY,
                            {"--simulate", "--trace", trace, "--work-dir", folder.path().string()});
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!std::filesystem::exists(trace) ||
         folder.read("trace.jsonl").find("GetRotation") == std::string::npos) {
    ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "it does not start";
    poll(nullptr, 0, 20);
  }
  EXPECT_EQ(program.end(SIGTERM), 0);
  EXPECT_THAT(folder.read("trace.jsonl"), HasSubstr("01 50 4C 0D")) << "the parameters are locked";
}

}  // namespace

}  // namespace touch::test
