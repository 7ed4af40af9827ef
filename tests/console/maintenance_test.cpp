#include "console/maintenance.h"

#include "console/backup.h"
#include "console/monitors.h"
#include "console/parameter_block.h"
#include "console/vrq_file.h"
#include "tests/console/parameter_controller.h"

namespace touch {
namespace {

using test::acknowledgement;
using test::bytesOf;
using test::Lines;
using test::refusal;

class Maintenance : public test::Desk {};

TEST_F(Maintenance, JudgesTheReplyAndAsksOnceMore) {
  const struct {
    const char* command;
    bool (*run)(const Access&, Prompt&);
    const char* done;
    const char* failed;
  } buttons[] = {
      {"RD", restoreDefaults, "message Controller Restore OK", "message Controller Restore Error"},
      {"R", resetController, "message Controller Reset OK", "message Controll Reset Error"},
  };
  // A reply is three bytes, of which the second tells.
  const struct {
    std::deque<test::Bytes> replies;
    int writes;
    bool done;
  } cases[] = {{{acknowledgement}, 1, true},
               {{refusal, acknowledgement}, 2, true},
               {{refusal, refusal, acknowledgement}, 2, false},
               {{test::Bytes{}}, 2, false},
               {{bytesOf("\00100\r")}, 2, false},
               {{bytesOf("\0010")}, 2, false},
               {{bytesOf("x0y")}, 1, true}};
  for (const auto& button : buttons) {
    for (const auto& c : cases) {
      journal.clear();
      script.replies[button.command] = c.replies;
      SCOPED_TRACE(button.command + testing::PrintToString(c.replies));
      EXPECT_EQ(button.run(access(), prompt), c.done);
      Lines expected = {"OpenController RS232 DEVICE 1", "FlushReadBuffer"};
      for (int i = 0; i < c.writes; ++i) {
        expected.insert(expected.end(), {std::string("WriteBuffer ") + button.command, "delay 300",
                                         "ReadBuffer 10"});
      }
      expected.insert(expected.end(), {c.done ? button.done : button.failed, "CloseController"});
      EXPECT_EQ(journal, expected);
    }
  }
}

class Defaults : public test::ParameterDesk {
 protected:
  const Backup backup{folder.path(), [] { return Backup::TimePoint{}; }};
  bool sent() const {
    return std::find(journal.begin(), journal.end(), "WriteBuffer RD") != journal.end();
  }
};

TEST_F(Defaults, KeepTheBlockWithoutAQuestionAndCanBeUndone) {
  const auto result = defaults(access(), prompt, backup);
  EXPECT_TRUE(result.restored);
  EXPECT_EQ(said(), Lines{"message Controller Restore OK"});
  ASSERT_TRUE(result.before);
  const auto kept = loadVrq(result.kept);
  ASSERT_TRUE(kept) << kept.error().describe();
  EXPECT_EQ(*kept, *result.before);
  EXPECT_EQ(memory[5], (ParameterWord{0x33, 5}));

  const auto undone = undoBlock(access(), prompt, backup, wordsOf(*result.before));
  EXPECT_EQ(undone.end, WriteEnd::done);
  EXPECT_EQ(said().back(), "message Write ok!!");
  for (std::uint8_t address = 0; address < 8; ++address) {
    EXPECT_EQ(memory[address], (ParameterWord{0x10, address}));
  }
}

TEST_F(Defaults, AskWhetherToGoOnWithoutAWayBack) {
  for (const bool goOn : {false, true}) {
    journal.clear();
    prompt.answerYes = goOn;
    callsUntilPowerLoss = 3;
    const auto result = defaults(access(), prompt, backup);
    EXPECT_EQ(
        said().front(),
        "confirm The parameter block cannot be kept. Word 03: the controller does not answer. "
        "Go on without a way back?");
    EXPECT_EQ(sent(), goOn);
    EXPECT_EQ(result.sent, goOn);
    EXPECT_FALSE(result.before);
  }
}

TEST_F(Defaults, TellWhyTheBackupCannotBeWritten) {
  folder.write("backup", "a file where the folder should be");
  prompt.answerYes = false;
  EXPECT_FALSE(defaults(access(), prompt, backup).sent);
  EXPECT_FALSE(sent());
  ASSERT_EQ(said().size(), 1u);
  EXPECT_THAT(said().front(), testing::HasSubstr((folder.path() / "backup").string()));
}

class Monitors : public test::Desk {};

TEST_F(Monitors, AreAskedForUntilTheDriverIsReadyOrTimeIsUp) {
  const struct {
    std::deque<std::int32_t> answers;
    int queries;
    bool assigned;
  } cases[] = {{{1}, 1, true},
               {std::deque<std::int32_t>(14, 0), 15, true},
               {std::deque<std::int32_t>(15, 0), 15, false}};
  for (const auto& c : cases) {
    journal.clear();
    script.sequences["QueryMultiMonitorSetOK"] = c.answers;
    EXPECT_EQ(assignMonitor(access(), prompt, 2), c.assigned);
    Lines expected = {"OpenController RS232 DEVICE 1", "AskToSetMultiMonitor 2"};
    for (int i = 0; i < c.queries; ++i) {
      expected.insert(expected.end(), {"delay 200", "QueryMultiMonitorSetOK"});
    }
    expected.insert(expected.end(), {"CloseController",
                                     c.assigned ? "message Setting OK" : "message Setting Error"});
    EXPECT_EQ(journal, expected) << c.queries << " queries";
  }
}

}  // namespace
}  // namespace touch
