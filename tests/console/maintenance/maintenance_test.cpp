#include "console/maintenance/maintenance.h"

#include "console/panels/monitors.h"
#include "tests/console/parameters/parameter_controller.h"

namespace touch::test {
namespace {

class Maintenance : public Desk {};

TEST_F(Maintenance, JudgesTheReplyAndAsksOnceMore) {
  const std::tuple<std::string, bool (*)(const Access&, Prompt&), const char*, const char*>
      buttons[] = {
          {"RD", restoreDefaults, "message Controller Restore OK",
           "message Controller Restore Error"},
          {"R", resetController, "message Controller Reset OK", "message Controll Reset Error"}};
  // A reply is three bytes, of which the second tells.
  const std::tuple<std::deque<Bytes>, int, bool> cases[] = {
      {{acknowledgement}, 1, true},
      {{refusal, acknowledgement}, 2, true},
      {{refusal, refusal, acknowledgement}, 2, false},
      {{Bytes{}}, 2, false},
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

class Defaults : public ParameterDesk {};

TEST_F(Defaults, AreRestoredAlsoWithoutABackup) {
  EXPECT_EQ(defaults(access(), prompt, backup).whyNoBackup, "");
  folder.write("a file", "where the folder should be");
  const Backup nowhere(folder.path() / "a file");
  const std::tuple<const char*, const Backup*, int, bool, std::string> cases[] = {
      {"unreadable", &backup, 3, false, "Word 03: the controller does not answer"},
      {"cannot be kept", &nowhere, -1, true, (folder.path() / "a file" / "backup").string()},
  };
  for (const auto& [what, where, calls, read, why] : cases) {
    journal.clear();
    callsUntilPowerLoss = calls;
    const auto result = defaults(access(), prompt, *where);
    EXPECT_THAT(result.whyNoBackup, StartsWith(why)) << what;
    EXPECT_EQ(result.before.has_value(), read) << what;
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "WriteBuffer RD"), read ? 1 : 2) << what;
    EXPECT_EQ(said(),
              Lines{read ? "message Controller Restore OK" : "message Controller Restore Error"});
  }
}

class Monitors : public Desk {};

TEST_F(Monitors, AreAskedForUntilTheDriverIsReadyOrTimeIsUp) {
  for (const int refusals : {0, 14, 15}) {
    journal.clear();
    script.sequences["QueryMultiMonitorSetOK"].assign(static_cast<std::size_t>(refusals), 0);
    assignMonitor(access(), prompt, 2);
    Lines expected = {"OpenController RS232 DEVICE 1", "AskToSetMultiMonitor 2"};
    for (int i = 0; i < std::min(refusals + 1, 15); ++i)
      expected.insert(expected.end(), {"delay 200", "QueryMultiMonitorSetOK"});
    expected.insert(expected.end(), {"CloseController", refusals < 15 ? "message Setting OK"
                                                                      : "message Setting Error"});
    EXPECT_EQ(journal, expected) << refusals << " refusals";
  }
}

}  // namespace
}  // namespace touch::test
