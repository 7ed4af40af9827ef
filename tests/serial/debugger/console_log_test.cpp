#include "serial/debugger/console_view.h"

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
  EXPECT_EQ(log.text(),
            "0.0050 > 01 55 54 0D                                     .UT.\n"
            "1.1050 < 72 73 74 75 76 77 78 79 7A 7B 7C 7D 7E 7F 80 81 rstuvwxyz{|}~...\n"
            "1.1050 < 82                                              .\n"
            "1.1050 = touch X  D8 01\n"
            "Total Points : 3\n");
  EXPECT_THAT(
      log.text({}, {ConsoleTimes::sinceLast, {}}),
      testing::AllOf(testing::StartsWith("+0.0000 > "), testing::HasSubstr("\n+1.1000 < 72"),
                     testing::HasSubstr("\n+0.0000 = ")));
  EXPECT_THAT(log.text({}, {ConsoleTimes::ofDay, {}}),
              testing::MatchesRegex("[0-9:]{8}[.]0050 > (.|\n)*\n[0-9:]{8}[.]1050 < 72 (.|\n)*"));
  EXPECT_EQ(findLine(log.lines(), "tou", 1), 3u);
  EXPECT_EQ(findLine(log.lines(), "ut", 2), 0u) << "and around";
  EXPECT_EQ(findLine(log.lines(), "absent", 0), std::nullopt);
  EXPECT_EQ(log.lines({.sent = false, .containing = "55 54"}).size(), 0u);
  EXPECT_EQ(log.lines({.received = false, .notes = false}).size(), 2u);
}

TEST_F(ConsoleLogTest, HasNoTimeThatIsYetToComeOrBeforeTheLineAbove) {
  const auto start = clock.now();
  clock.delay(std::chrono::milliseconds(200));
  log.note("at the time of no line");
  const std::pair<int, const char*> cases[] = {
      {50, "0.0500"}, {40, "0.0500"}, {60, "0.0600"}, {300, "0.2000"}};
  for (const auto& [moment, shownTime] : cases) {
    log.report("", Bytes{1}, start + std::chrono::milliseconds(moment));
    EXPECT_THAT(shown(log.lines().back()), testing::StartsWith(shownTime));
  }
}

TEST_F(ConsoleLogTest, SaysWhenItIsTooLongToBeReadAndKeepsAllUntilItIsCleared) {
  const auto fill = [this](int lines, char character) {
    for (int i = 0; i < lines; ++i)
      log.note(std::string(39, character));
  };
  fill(100, 'a');
  EXPECT_FALSE(log.isTooLong());
  fill(1, 'b');
  EXPECT_TRUE(log.isTooLong());
  log.tooLongWasSaid();
  EXPECT_FALSE(log.isTooLong());
  EXPECT_EQ(log.lines().size(), 101u);
  log.pause(true);
  fill(3000, 'c');
  EXPECT_EQ(log.lines().size(), 101u);
  EXPECT_EQ(log.lines().back().text[0], 'b') << "what was there when the pause began";
  log.pause(false);
  EXPECT_EQ(log.lines().size(), 3101u);
  log.clear();
  EXPECT_TRUE(log.lines().empty());
}

TEST_F(ConsoleLogTest, KeepsTheLastMillionLinesInLessThan200Megabytes) {
  const Bytes packet = {0xD8, 0x10, 0x20, 0x30, 0x01};
  constexpr std::uint64_t count = KeptLines::most + 5000;
  for (std::uint64_t i = 0; i < count; ++i)
    log.report(std::to_string(i), packet);
  log.pause(true);
  // The worst: what was paused has nothing in common with what came since.
  for (std::uint64_t i = 0; i < count; ++i)
    log.report("touch X 16383 Y 16383", packet);
  const KeptLines paused = log.kept();
  log.pause(false);
  EXPECT_LT(paused.bytes() + log.kept().bytes(), 200u << 20U);
  for (const KeptLines& kept : {paused, log.kept()}) {
    EXPECT_GE(kept.size(), KeptLines::most);
    EXPECT_LT(kept.size(), count);
  }
  EXPECT_EQ(paused.at(count - 1).text, std::to_string(count - 1));
  EXPECT_EQ(paused.at(paused.begin()).text, std::to_string(paused.begin()));
  EXPECT_EQ(paused.at(paused.begin()).bytes, packet);

  KeptLines few;
  const std::string large(3 * KeptLines::mostText, 'x');
  for (int i = 0; i < 30'000; ++i)
    few.add({ConsoleLineKind::note, {}, {}, large});
  EXPECT_LT(few.bytes(), KeptLines::mostBytes + (8u << 20U)) << "however long its lines are";
  EXPECT_EQ(few.at(few.end() - 1).text.size(), KeptLines::mostText);
}

class ConsoleViewTest : public ConsoleLogTest {
 protected:
  /// Adds so many lines, numbered on.
  void add(int count) {
    for (int i = 0; i < count; ++i)
      log.report(std::to_string(number_++), Bytes{0x41});
  }
  /// The numbers of the first and the last line that it shows, after so many looks.
  std::pair<int, int> shownAfter(int looks) {
    for (int i = 0; i < looks; ++i)
      view.renew();
    const auto& lines = view.lines();
    for (std::size_t i = 1; i < lines.size(); ++i)
      EXPECT_EQ(std::stoi(lines[i].text), std::stoi(lines[i - 1].text) + 1) << "none is left out";
    return lines.empty() ? std::pair(-1, -1)
                         : std::pair(std::stoi(lines.front().text), std::stoi(lines.back().text));
  }

  ConsoleView view{log};

 private:
  int number_ = 0;
};

TEST_F(ConsoleViewTest, ShowsTheEndOfAFloodAndMoreWhenItHasEbbed) {
  add(150);
  EXPECT_EQ(shownAfter(1), std::pair(0, 149));
  EXPECT_EQ(view.takeChange().added, 150u);
  add(10);
  EXPECT_EQ(shownAfter(1), std::pair(0, 159));
  const auto change = view.takeChange();
  EXPECT_FALSE(change.anew);
  EXPECT_EQ(change.added, 10u);
  for (int i = 1; i <= 10; ++i) {
    add(5000);
    EXPECT_EQ(shownAfter(1), std::pair(i * 5000 - 40, i * 5000 + 159));
    EXPECT_TRUE(view.takeChange().anew);
  }
  EXPECT_TRUE(view.isLooking());
  EXPECT_EQ(shownAfter(ConsoleView::ebb), std::pair(48160, 50159));
  EXPECT_FALSE(view.isLooking());
  add(100);
  EXPECT_EQ(shownAfter(1), std::pair(48260, 50259)) << "no more than it shows at most";
  log.clear();
  EXPECT_EQ(shownAfter(1), std::pair(-1, -1));
  EXPECT_TRUE(view.takeChange().anew);
}

TEST_F(ConsoleViewTest, FindsBitByBitWhatMatchesHoweverFarBackItIs) {
  log.note("needle");
  add(static_cast<int>(4 * ConsoleView::mostSearched));
  view.choose({.containing = "NEEDLE"});
  view.renew();
  EXPECT_TRUE(view.isLooking());
  EXPECT_TRUE(view.lines().empty());
  int looks = 0;
  for (; view.isLooking(); ++looks)
    view.renew();
  EXPECT_GE(looks, 3);
  EXPECT_LE(looks, 4);
  ASSERT_EQ(view.lines().size(), 1u);
  log.note("another needle");
  view.renew();
  EXPECT_EQ(view.lines().size(), 2u);
  view.choose({.reports = false});
  view.renew();
  EXPECT_EQ(view.lines().size(), 2u);
}

}  // namespace
}  // namespace touch::test
