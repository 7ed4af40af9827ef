#include "serial/scripts/script.h"

#include <utility>

#include "serial/scripts/script_run.h"
#include "support/text/hex.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/fake_port.h"

namespace touch::test {
namespace {

const std::string heading = "touch script 1\n";

class Scripts : public Desk {
 protected:
  Scripts() { EXPECT_TRUE(port.open()); }

  /// Runs the lines on the port; how it ended.
  std::string run(const std::string& lines) {
    const auto parsed = parseScript(heading + lines, "s");
    if (!parsed) return parsed.error().describe();
    journal.clear();
    notes.clear();
    ScriptRun running(*parsed, port, clock,
                      {.onStep = [this](const ScriptStep& step) { line = step.line; },
                       .onNote = [this](const std::string& note) { notes.push_back(note); },
                       .onSent = nullptr,
                       .onReceived = nullptr,
                       .isStopped = [this] { return stopAt > 0 && line >= stopAt; },
                       .isPaused = nullptr});
    const auto done = running.run();
    return done ? "passed" : done.error().describe();
  }
  /// What went out.
  Lines sent() const {
    Lines frames;
    for (const std::string& entry : journal)
      if (!entry.starts_with("delay") && !entry.starts_with("settings")) frames.push_back(entry);
    return frames;
  }

  FakePort port{journal};
  Lines notes;
  int line = 0;
  int stopAt = 0;  ///< the line at which the user stops it; 0: never
};

TEST_F(Scripts, AreRefusedWithLineAndWhatWasExpected) {
  const std::pair<std::string, std::string> cases[] = {
      {"jump 3", "s, line 2: expected command, send, expect, wait"},
      {"\n send 0", "s, line 3: expected two hexadecimal digits or text in quotes, found 0"},
      {R"(send "\q")", "s, line 2: expected text in quotes with"},
      {R"(send "UT)", "s, line 2: expected text in quotes with"},
      {"send", "s, line 2: expected at least one byte"},
      {"expect *", "s, line 2: expected at least one byte"},
      {"expect 01 within 5", "s, line 2: expected a time up to a day"},
      {"wait 90000000 ms", "s, line 2: expected a time up to a day"},
      {"command U T", "s, line 2: expected a command without blanks"},
      {"line 9600,n,9,1", "s, line 2: expected line settings such as 9600,n,8,1"},
      {"on 01 tell 02", "s, line 2: expected on BYTES send BYTES"},
      {"repeat 0\nend", "s, line 2: expected a number of times"},
      {"repeat NN 10 to 0F\nend", "s, line 2: expected repeat 10, or repeat NN 00 to 3F"},
      {"repeat 2\nrepeat 3\nend", "s, line 2: expected its \"end\", found none"},
      {"end", "s, line 2: expected its \"repeat\", found none"},
  };
  for (const auto& [lines, expected] : cases)
    EXPECT_THAT(run(lines), testing::StartsWith(expected)) << lines;
  EXPECT_THAT(parseScript("#\n", "s").error().describe(), testing::HasSubstr("\"touch script 1\""));
}

TEST_F(Scripts, SendAndExpect) {
  const std::tuple<std::string, std::string, std::string> cases[] = {
      // lines, what the controller answers to the first frame, how it ends
      {"command UT\nexpect 01 \"QR\" 0D", "FF 01 51 52 0D 33", "passed"},
      {"send 55 \"\\x01\\\"#\\r\" # out", "", "passed"},
      {"command Z\nexpect 01 ?? 0D", "01 01 31 0D", "passed"},
      {"command Z\nexpect 01 * 0D 33", "01 30 0D 0D 33", "passed"},
      {"command Z\nexpect 01 30 within 20 ms", "01 31 0D",
       "line 3: expected 01 30 within 20 ms, received 01 31 0D"},
      {"command Z\nexpect 30 31\nexpect 30 31 within 2 ms", "30 30 31",
       "line 4: expected 30 31 within 2 ms, received 30 30 31"},
      {"command Z\nexpect report", "D8 10 20 30 01", "passed"},
      {"reports e02\ncommand Z\nexpect report within 4 ms", "D8 10 20 30 01",
       "line 4: expected a touch report within 4 ms, received D8 10 20 30 01"},
      {"command Z\nwait 10 ms\nexpect 01 30", "01 30 0D", "passed"},
      {"command Z\nexpect nothing for 10 ms", "01", "passed"},
  };
  for (const auto& [lines, answer, expected] : cases) {
    port.answers = {parseBytes(answer.empty() ? "00" : answer).value()};
    EXPECT_EQ(run(lines), expected) << lines;
    port.readAll();
  }
  run("send 55 \"\\x01\\\"#\\r\"");
  EXPECT_EQ(sent(), Lines{"55 01 22 23 0D"});
}

TEST_F(Scripts, NoticeWhatComesInASilence) {
  clock.after(std::chrono::milliseconds(5), [this] { port.received = {0x41}; });
  EXPECT_EQ(run("expect nothing for 10 ms"), "line 2: expected nothing for 10 ms, received 41");
}

TEST_F(Scripts, RepeatWithNumbersInTheirPlaces) {
  EXPECT_EQ(run("repeat NN 0E to 10\nrepeat 2\ncommand GP{NN}\nend\nnote \"{NN}\"\nend\nsend 00"),
            "passed");
  EXPECT_EQ(notes, (Lines{"0E", "0F", "10"}));
  EXPECT_EQ(sent().size(), 7U);
  EXPECT_EQ(sent().at(2), "01 47 50 30 46 0D");
}

TEST_F(Scripts, AnswerWhatComesUntilTheEnd) {
  port.answers = {{0x05, 0x3F}, {0x05, 0x3F}, {0x06}};
  EXPECT_EQ(run("on 05 \"?\" send 06\nsend 01\nexpect 06"), "passed");
  EXPECT_EQ(sent(), (Lines{"01", "06", "06"}));
}

TEST_F(Scripts, SendNothingOnceTheyAreStoppedOrThePortIsGone) {
  for (stopAt = 2; stopAt <= 4; ++stopAt) {
    EXPECT_EQ(run("send 01\nwait 1 s\nsend 02"), "line " + std::to_string(stopAt) + ": stopped");
    EXPECT_EQ(sent(), stopAt == 2 ? Lines{} : Lines{"01"});
  }
  stopAt = 0;
  port.blocked = true;
  EXPECT_EQ(run("send 01"), "line 2: the bytes did not go out");
  port.close();
  EXPECT_EQ(run("wait 1 s"), "line 2: the port is closed");
}

TEST_F(Scripts, TellWhichStepChangesTheController) {
  for (const char* const change :
       {"send 01 \"RD\\r\"", "command iR", "command SP201A2B", "on 01 send 01 \"RF\" 0D"}) {
    const auto parsed = parseScript(heading + "command GP20\n" + change, "s").value();
    ASSERT_NE(parsed.firstChange(), nullptr) << change;
    EXPECT_EQ(parsed.firstChange()->line, 3) << change;
  }
  EXPECT_EQ(parseScript(heading + "command OI", "s")->firstChange(), nullptr);
}

}  // namespace
}  // namespace touch::test
