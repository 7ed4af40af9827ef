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
                       .isPaused = [this] { return clock.now() < pauseUntil; }},
                      {}, family);
    const auto done = running.run();
    return done ? "passed" : done.error().describe();
  }
  /// What went out.
  Lines sent() const {
    Lines frames;
    for (const std::string& entry : journal)
      if (!entry.starts_with("delay") && !entry.starts_with("settings") && entry != "clear output")
        frames.push_back(entry);
    return frames;
  }

  FakePort port{journal};
  Lines notes;
  int line = 0;
  ReportFamily family = ReportFamily::tablet;
  int stopAt = 0;  ///< the line at which the user stops it; 0: never
  Clock::TimePoint pauseUntil{};
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

TEST_F(Scripts, LoseNoTimeWhileTheyArePaused) {
  port.answers = {parseBytes("01 30 0D").value()};
  const auto begin = clock.now();
  clock.after(std::chrono::milliseconds(4),
              [this] { pauseUntil = clock.now() + std::chrono::hours(1); });
  EXPECT_EQ(run("wait 10 ms\ncommand Z\nexpect 01 30"), "passed");
  EXPECT_GE(clock.now() - begin, std::chrono::hours(1) + std::chrono::milliseconds(10));
}

TEST_F(Scripts, BeginWithTheFamilyOfTheChosenSet) {
  family = ReportFamily::e02;
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"", "55 54 81 10 20 30 01 00 00 00", true},
      {"", "D8 10 20 30 01", false},
      {"reports quorvane\n", "D8 10 20 30 01", true},
  };
  for (const auto& [first, answer, isFound] : cases) {
    port.answers = {parseBytes(answer).value()};
    const std::string ending = run(std::string(first) + "send 00\nexpect report within 4 ms");
    EXPECT_EQ(ending == "passed", isFound) << first << answer << ": " << ending;
  }
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
    EXPECT_EQ(journal.back(), "clear output") << "nothing waits for its turn";
  }
  stopAt = 0;
  port.blocked = true;
  EXPECT_EQ(run("send 01"), "line 2: the bytes did not go out");
  port.close();
  EXPECT_EQ(run("wait 1 s"), "line 2: the port is closed");
}

TEST_F(Scripts, TellWhichStepChangesTheController) {
  const std::pair<std::string, int> cases[] = {
      // lines behind the heading, the line to ask about; 0: none
      {"command OI\nsend 01 \"RD\\r\"", 3},
      {"command iR", 2},
      {"command SP201A2B", 2},
      {"send \"UR2345678S\"", 2},
      {"command GP20\non 01 send 01 \"RF\" 0D", 3},
      // Put together from several steps.
      {"send 01 \"S\"\nwait 1 s\nsend \"P201234\" 0D", 4},
      {"send 01\nsend \"i\"\nsend \"W\"\nrepeat NN 20 to 21\nsend \"{NN}\"\nend\nsend 0D", 8},
      {"send 01\nrepeat 3\nsend \"R\" 0D 01\nend", 4},
      {"repeat 2\nsend \"D\" 0D\nsend 01 \"R\"\nend", 3},
      {"repeat 2\nrepeat 1\nsend \"F\" 0D\nend\nsend 01\nrepeat 1\nsend \"i\"\nend\nend", 4},
      {"on 05 send \"R\" 0D\nsend 01\nexpect 06", 2},
      {"on 05 send \"R\"\non 06 send 01\non 07 send 0D\nexpect 08", 4},
      {"send \"UR\"\nsend \"2345678S\"", 3},
      // What begins a frame anew, or follows its end, is no part of it.
      {"send 01 \"R\" 01 \"OI\" 0D \"R\" 0D", 0},
      {"send 01 \"OI\"\nsend \"R\" 0D\ncommand SE3\nsend 01 \"Uu23456\\rS\"", 0},
      {"on 05 send 06\nrepeat NN 00 to 3F\ncommand GP{NN}\nsend \"Ui2345678S\"\nend", 0},
  };
  for (const auto& [lines, expected] : cases) {
    const auto parsed = parseScript(heading + lines, "s");
    ASSERT_EQ(whyNot(parsed), "") << lines;
    const ScriptStep* const change = parsed->firstChange();
    EXPECT_EQ(change == nullptr ? 0 : change->line, expected) << lines;
  }
}

}  // namespace
}  // namespace touch::test
