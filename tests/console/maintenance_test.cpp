#include "console/maintenance.h"

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
    std::string command;
    bool (*run)(const Access&, Prompt&);
    const char* done;
    const char* failed;
  } buttons[] = {
      {"RD", restoreDefaults, "message Controller Restore OK", "message Controller Restore Error"},
      {"R", resetController, "message Controller Reset OK", "message Controll Reset Error"},
  };
  // A reply is three bytes, of which the second tells.
  const std::tuple<std::deque<test::Bytes>, int, bool> cases[] = {
      {{acknowledgement}, 1, true},
      {{refusal, acknowledgement}, 2, true},
      {{refusal, refusal, acknowledgement}, 2, false},
      {{test::Bytes{}}, 2, false},
      {{bytesOf("\00100\r")}, 2, false},
      {{bytesOf("\0010")}, 2, false},
      {{bytesOf("x0y")}, 1, true}};
  for (const auto& [command, run, done, failed] : buttons) {
    for (const auto& [replies, writes, good] : cases) {
      SCOPED_TRACE(command + testing::PrintToString(replies));
      journal.clear();
      script.replies[command] = replies;
      EXPECT_EQ(run(access(), prompt), good);
      Lines expected = {"OpenController RS232 DEVICE 1", "FlushReadBuffer"};
      for (int i = 0; i < writes; ++i)
        expected.insert(expected.end(), {"WriteBuffer " + command, "delay 300", "ReadBuffer 10"});
      expected.insert(expected.end(), {good ? done : failed, "CloseController"});
      EXPECT_EQ(journal, expected);
    }
  }
}

class Defaults : public test::ParameterDesk {};

TEST_F(Defaults, KeepTheBlockWithoutAQuestionAndCanBeUndone) {
  const auto before = memory;
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
  EXPECT_EQ(memory, before);
}

TEST_F(Defaults, AskWhetherToGoOnWithoutAWayBack) {
  const auto isSent = [this](bool answer) {
    journal.clear();
    prompt.answerYes = answer;
    const auto result = defaults(access(), prompt, backup);
    EXPECT_EQ(result.sent, testing::Value(journal, testing::Contains("WriteBuffer RD")));
    EXPECT_FALSE(result.before);
    return result.sent;
  };
  folder.write("backup", "a file where the folder should be");
  EXPECT_FALSE(isSent(false));
  EXPECT_THAT(said(),
              testing::ElementsAre(testing::HasSubstr((folder.path() / "backup").string())));
  for (const bool goOn : {false, true}) {
    callsUntilPowerLoss = 3;
    EXPECT_EQ(isSent(goOn), goOn);
    EXPECT_EQ(
        said().front(),
        "confirm The parameter block cannot be kept. Word 03: the controller does not answer. "
        "Go on without a way back?");
  }
}

class Monitors : public test::Desk {};

TEST_F(Monitors, AreAskedForUntilTheDriverIsReadyOrTimeIsUp) {
  const std::tuple<int, int, const char*> cases[] = {{0, 1, "message Setting OK"},
                                                     {14, 15, "message Setting OK"},
                                                     {15, 15, "message Setting Error"}};
  for (const auto& [refusals, queries, told] : cases) {
    journal.clear();
    script.sequences["QueryMultiMonitorSetOK"].assign(static_cast<std::size_t>(refusals), 0);
    assignMonitor(access(), prompt, 2);
    Lines expected = {"OpenController RS232 DEVICE 1", "AskToSetMultiMonitor 2"};
    for (int i = 0; i < queries; ++i)
      expected.insert(expected.end(), {"delay 200", "QueryMultiMonitorSetOK"});
    expected.insert(expected.end(), {"CloseController", told});
    EXPECT_EQ(journal, expected) << refusals << " refusals";
  }
}

}  // namespace
}  // namespace touch
