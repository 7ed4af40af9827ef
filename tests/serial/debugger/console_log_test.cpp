#include "serial/debugger/console_log.h"

#include <numeric>

#include "tests/doubles/desk.h"

namespace touch::test {
namespace {

class ConsoleLogTest : public Desk {
 protected:
  ConsoleLog log{clock};
};

TEST_F(ConsoleLogTest, ShowsTimeDirectionHexAndText) {
  clock.delay(std::chrono::milliseconds(5));
  log.sent(bytesOf("\x01UT\r"));
  clock.delay(std::chrono::milliseconds(1100));
  Bytes bytes(17);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0x72});
  log.received(bytes);
  log.report("touch X", Bytes{0xD8, 0x01});
  log.note("Total Points : 3");
  log.received({});
  EXPECT_EQ(shown(log.lines()),
            "0.0050 > 01 55 54 0D                                     .UT.\n"
            "1.1050 < 72 73 74 75 76 77 78 79 7A 7B 7C 7D 7E 7F 80 81 rstuvwxyz{|}~...\n"
            "1.1050 < 82                                              .\n"
            "1.1050 = touch X  D8 01\n"
            "Total Points : 3\n");
  EXPECT_THAT(
      shown(log.lines(), {ConsoleTimes::sinceLast, {}}),
      testing::AllOf(testing::StartsWith("+0.0000 > "), testing::HasSubstr("\n+1.1000 < 72"),
                     testing::HasSubstr("\n+0.0000 = ")));
  EXPECT_THAT(shown(log.lines(), {ConsoleTimes::ofDay, {}}),
              testing::MatchesRegex("[0-9:]{8}[.]0050 > (.|\n)*\n[0-9:]{8}[.]1050 < 72 (.|\n)*"));
  EXPECT_EQ(log.characters(), shown(log.lines()).size());
  EXPECT_EQ(findLine(log.lines(), "tou", 1), 3u);
  EXPECT_EQ(findLine(log.lines(), "ut", 2), 0u) << "and around";
  EXPECT_EQ(findLine(log.lines(), "absent", 0), std::nullopt);
  EXPECT_EQ(log.lines({.sent = false, .containing = "55 54"}).size(), 0u);
  EXPECT_EQ(log.lines({.received = false, .notes = false}).size(), 2u);
}

TEST_F(ConsoleLogTest, DropsItsOldestHalfWhenTooLongAndAllWhenClearedAlsoWhilePaused) {
  const auto fill = [this](int lines, char character) {
    for (int i = 0; i < lines; ++i)
      log.note(std::string(39, character));
  };
  fill(100, 'a');
  EXPECT_FALSE(log.isTooLong());
  fill(1, 'b');
  EXPECT_TRUE(log.isTooLong());
  log.dropOldestHalf();
  EXPECT_EQ(log.lines().size(), 50u);
  EXPECT_EQ(log.lines().back().text[0], 'b') << "the newest stay";
  log.pause(true);
  fill(1000, 'c');
  EXPECT_EQ(log.lines().size(), 50u);
  log.dropOldestHalf();
  EXPECT_EQ(log.characters(), 2600u) << "halved again and again";
  log.clear();
  EXPECT_TRUE(log.lines().empty());
}

}  // namespace
}  // namespace touch::test
