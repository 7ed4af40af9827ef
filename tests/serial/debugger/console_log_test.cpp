#include "serial/debugger/console_view.h"

#include <numeric>

#include "serial/receiving/packet_field.h"
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
  EXPECT_EQ(log.lines({.sent = false, .containing = "55 54"}).size(), 0u);
  EXPECT_EQ(log.lines({.received = false, .notes = false}).size(), 2u);
  log.setDataBits(7);
  log.sent(Bytes{0x58});
  log.received(Bytes{0x58, 0x10});
  log.setDataBits(8);
  log.received(Bytes{0x58});
  const std::string text = log.text();
  EXPECT_THAT(text, testing::HasSubstr("8th bit set: D8 90\n"));
  EXPECT_EQ(text.find("8th bit"), text.rfind("8th bit")) << "only of what came with 7 data bits";
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

TEST_F(ConsoleLogTest, TellsThePacketAndTheFieldOfAnyByte) {
  const ReportDecoder decoder(ReportFamily::tablet);
  // The packet begins in one line and ends in the next.
  Bytes answer = bytesOf(
      "\x01"
      "0\r");
  answer.resize(14, 0x41);
  for (const std::uint8_t byte : Bytes{0xD8, 0x10, 0x20, 0x30, 0x01})
    answer.push_back(byte);
  log.sent(bytesOf("\x01UT\r"));
  log.received(answer);
  log.report("touch X  1 Y  2", Bytes{0xD8, 0x01, 0x00, 0x02, 0x00});
  log.received(Bytes{0xD8, 0x10});
  const struct {
    std::uint64_t line;
    std::size_t place;
    const char* said;
  } cases[] = {
      {0, 0, "Byte 1 of 4: begin of message. Decimal 1."},
      {0, 2, "Byte 3 of 4: command. Decimal 84."},
      {1, 1, "Byte 2 of 3: data. Decimal 48."},
      {1, 2, "Byte 3 of 3: end of message. Decimal 13."},
      {1, 3, "Byte 4 of 16: decimal 65."},
      {1, 14, "Byte 1 of 5: touched or lifted. touch X  4112 Y   176"},
      {2, 0, "Byte 3 of 5: X, high bits. touch X  4112 Y   176"},
      {2, 1, "Byte 4 of 5: Y, low bits. touch X  4112 Y   176"},
      {3, 1, "Byte 2 of 5: X, low bits. touch X  1 Y  2"},
      {4, 1, "Byte 2 of 2: decimal 16."},
  };
  for (const auto& [line, place, said] : cases)
    EXPECT_EQ(byteText(decoder, log.kept(), line, place), said);
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

TEST_F(ConsoleViewTest, StandsWhereTheUserIsAndSlidesOverAllThatIsKept) {
  add(30'000);
  shownAfter(ConsoleView::ebb + 1);
  const auto standAt = [this](std::uint64_t place) {
    view.standAt(place);
    view.slide();
    return shownAfter(1);
  };
  const std::tuple<const char*, std::uint64_t, std::pair<int, int>, bool> cases[] = {
      {"within what is there", 28'500, {28'000, 29'999}, true},
      {"near its front", 28'100, {27'100, 29'099}, false},
      {"far away", 10'000, {9'000, 10'999}, false},
      {"a little on", 10'500, {9'000, 10'999}, false},
      {"near its back", 10'700, {9'700, 11'699}, false},
      {"the first", 0, {0, 999}, false},
      {"near the end", 29'900, {28'900, 29'999}, true},
  };
  for (const auto& [name, place, lines, reachesEnd] : cases) {
    EXPECT_EQ(standAt(place), lines) << name;
    EXPECT_EQ(view.reachesEnd(), reachesEnd) << name;
    EXPECT_FALSE(view.isLooking()) << name;
  }
  add(5000);
  log.pause(true);
  log.pause(false);
  EXPECT_EQ(shownAfter(3), std::pair(28'900, 29'999)) << "whatever comes";
  view.choose({.sent = false});
  EXPECT_EQ(shownAfter(1), std::pair(28'900, 30'899)) << "another choice is shown there";
  view.follow();
  EXPECT_EQ(shownAfter(1).second, 34'999);
  EXPECT_EQ(shownAfter(ConsoleView::ebb), std::pair(33'000, 34'999));
  standAt(100);
  log.clear();
  EXPECT_EQ(shownAfter(1), std::pair(-1, -1));
  EXPECT_TRUE(view.isFollowing());
}

TEST_F(ConsoleViewTest, SearchesAllThatIsKeptInPiecesAndAround) {
  log.note("early Tou");
  for (int i = 0; i < 30'000; ++i)
    log.report("touch X", Bytes{0xD8, 0x01});
  log.note("late");
  const std::tuple<std::string, std::uint64_t, std::optional<std::uint64_t>, int> cases[] = {
      // text, from, found, in so many pieces
      {"tou", 1, 1, 1},
      {"EARLY", 1, 0, 4},
      {"late", 0, 30'001, 4},
      {"late", 99'999, 30'001, 4},
      {"absent", 5, std::nullopt, 4}};
  for (const auto& [text, from, found, pieces] : cases) {
    ConsoleSearch search(log, {.containing = text}, from);
    int looks = 0;
    for (; search.isLooking(); ++looks)
      search.look();
    EXPECT_EQ(search.found(), found) << text;
    EXPECT_EQ(looks, pieces) << text;
  }
  log.clear();
  EXPECT_FALSE(ConsoleSearch(log, {.containing = "late"}, 3).isLooking());
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
