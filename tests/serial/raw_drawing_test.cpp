#include "serial/raw_drawing.h"

#include "serial/recording_ports.h"
#include "tests/serial/debugger_bench.h"

namespace touch {
namespace {

using namespace std::chrono_literals;
using test::Bytes;
using test::bytesOf;
using test::Lines;

class RecordedSurface final : public Surface {
 public:
  Lines drawn;

  void clear() override { drawn.push_back("clear"); }
  void line(TwipsPoint from, TwipsPoint to, Colour, int width) override {
    note("line " + text(from) + ' ' + text(to), width);
  }
  void point(TwipsPoint at, Colour, int width) override { note("point " + text(at), width); }
  void circle(TwipsPoint, float, Colour, int) override { drawn.push_back("circle"); }

 private:
  static std::string text(TwipsPoint point) {
    return std::to_string(std::lround(point.x)) + ',' + std::to_string(std::lround(point.y));
  }
  void note(std::string line, int width) {
    if (width != 1) line += " wide";
    drawn.push_back(std::move(line));
  }
};

Bytes tablet(std::uint8_t status, int x, int y) {
  const auto low = [](int value) { return static_cast<std::uint8_t>(value & 0x7F); };
  return {status, low(x), low(x >> 7), low(y), low(y >> 7)};
}
Bytes operator+(Bytes first, const Bytes& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}
Transfer at(std::chrono::milliseconds time, Bytes bytes) {
  return {time, Direction::fromController, std::move(bytes)};
}

// One count is one twip.
constexpr TwipsSize area{16383, 16383};

class RawDrawingTest : public test::DebuggerBench {
 protected:
  void play(std::vector<Transfer> incoming, ReportFamily family = ReportFamily::tablet) {
    replay = std::make_unique<ReplayPort>(std::move(incoming), clock);
    replay->open();
    drawing = std::make_unique<RawDrawing>(
        clock, ReceivingPort{*replay, {}, {}},
        RawDrawing::Canvas{surface, area, [this](PixelPoint to) { cursor.push_back(to); }},
        ReportDecoder(family));
    drawing->start();
  }

  RecordedSurface surface;
  std::vector<PixelPoint> cursor;
  std::unique_ptr<ReplayPort> replay;
  std::unique_ptr<RawDrawing> drawing;
};

TEST_F(RawDrawingTest, JoinsTheReportsOfAStrokeAndEndsItAtPenUpOrWhenTheLineIsIdle) {
  play({at(10ms, tablet(0xD8, 100, 200) + tablet(0xD8, 110, 210)),
        at(60ms, tablet(0xD8, 120, 220) + tablet(0x98, 130, 230) + tablet(0xD8, 140, 240)),
        at(160ms, tablet(0xD8, 150, 250))});
  clock.delay(300ms);
  EXPECT_EQ(surface.drawn, (Lines{"point 100,200", "line 100,200 110,210", "line 110,210 120,220",
                                  "line 120,220 130,230", "point 140,240", "point 150,250"}));
  EXPECT_EQ(drawing->reports(), 6u);
}

TEST_F(RawDrawingTest, DrawsWithThePenAndFollowsWithTheCursorInsideTheScreen) {
  play({at(10ms, tablet(0xD8, 0, 30)), at(40ms, tablet(0xD8, 16383, 16383)),
        at(60ms, tablet(0xD8, 45, 60))});
  drawing->pen.mode = PenMode::points;
  drawing->pen.width = 2;
  drawing->options.followCursor = true;
  clock.delay(100ms);
  EXPECT_EQ(surface.drawn,
            (Lines{"point 0,30 wide", "point 16383,16383 wide", "point 45,60 wide"}));
  EXPECT_EQ(cursor, (std::vector<PixelPoint>{{0, 2}, {1091, 1091}, {3, 4}}));
}

TEST_F(RawDrawingTest, ScalesTheFullRangeOfEitherFamilyOntoTheArea) {
  play({at(10ms, bytesOf("UT\x82\xFF\xFF") + Bytes{0, 0, 0, 0, 'S'})}, ReportFamily::e02);
  clock.delay(100ms);
  EXPECT_EQ(surface.drawn, Lines{"point 16383,0"});
}

TEST_F(RawDrawingTest, FitsTheObservedRange) {
  play({at(10ms, tablet(0xD8, 4000, 8000) + tablet(0x98, 8000, 8000)),
        at(210ms, tablet(0xD8, 4000, 8000) + tablet(0x98, 8000, 16383)),
        at(410ms, tablet(0xD8, 4000, 8000))});
  clock.delay(200ms);
  drawing->fit(true);
  clock.delay(200ms);
  drawing->fit(false);
  clock.delay(200ms);
  EXPECT_EQ(surface.drawn, (Lines{"point 4000,8000", "line 4000,8000 8000,8000", "point 0,8000",
                                  "line 0,8000 16383,16383", "point 4000,8000"}))
      << "a direction without any range keeps the full one";
}

TEST_F(RawDrawingTest, ReadsNothingWhilePausedAndDecodesNothingWhileOnlyMonitoring) {
  play(
      {at(10ms, tablet(0xD8, 1, 2)), at(160ms, tablet(0xD8, 3, 4)), at(310ms, tablet(0xD8, 5, 6))});
  drawing->options.paused = true;
  clock.delay(100ms);
  EXPECT_EQ(drawing->monitor().text(), "");
  EXPECT_GT(replay->inBufferCount(), 0u);
  drawing->options = {.monitorOnly = true};
  clock.delay(200ms);
  EXPECT_EQ(surface.drawn, Lines{});
  EXPECT_EQ(drawing->monitor().text(), "\n  --- D8 01 00 02 00   --- D8 03 00 04 00 ");
  drawing->options = {};
  clock.delay(100ms);
  EXPECT_EQ(surface.drawn, Lines{"point 5,6"});
  EXPECT_EQ(drawing->dotOfTextAt(drawing->monitor().text().size() - 3), (TwipsPoint{5, 6}));
}

TEST_F(RawDrawingTest, ShowsTheNoticeForSevenTicks) {
  play({});
  clock.delay(349ms);
  EXPECT_TRUE(drawing->noticeIsUp());
  clock.delay(1ms);
  EXPECT_FALSE(drawing->noticeIsUp());
}

TEST_F(RawDrawingTest, FindsBytesAndDotsFromEachOtherAndWhatBelongsToNone) {
  play({at(10ms, Bytes{0x41, 0x42} + tablet(0xD8, 1000, 2000) + Bytes{0x43} +
                     tablet(0x98, 9000, 9000) + Bytes{0xD8, 0x01})});
  clock.delay(50ms);
  const std::string& text = drawing->monitor().text();
  ASSERT_EQ(text, "41 42 \n  --- D8 68 07 50 0F 43   --- 98 28 46 28 46   --- D8 01 ");
  const auto part = [&](TextRange range) {
    return text.substr(range.begin, range.end - range.begin);
  };
  EXPECT_EQ(part(drawing->bytesOfDotAt({1050, 2000}).value()), "D8 68 07 50 0F");
  EXPECT_EQ(part(drawing->bytesOfDotAt({9000, 9100}).value()), "98 28 46 28 46");
  EXPECT_FALSE(drawing->bytesOfDotAt({5000, 5000}));
  EXPECT_EQ(drawing->dotOfTextAt(text.find("50")), (TwipsPoint{1000, 2000}));
  EXPECT_FALSE(drawing->dotOfTextAt(text.find("43")));
  EXPECT_FALSE(drawing->dotOfTextAt(0));
  EXPECT_FALSE(drawing->dotOfTextAt(text.size()));
  const auto stray = drawing->strayText();
  ASSERT_EQ(stray.size(), 2u) << "the last two may become a packet";
  EXPECT_EQ(part(stray[0]), "41 42");
  EXPECT_EQ(part(stray[1]), "43");
  clock.delay(50ms);
  EXPECT_EQ(part(drawing->strayText().at(2)), "D8 01");
  drawing->clearMonitor();
  EXPECT_TRUE(drawing->strayText().empty());
}

TEST(HexMonitorText, BreaksTheLineBeforeEveryFifthStatusByteAndStopsGrowing) {
  HexMonitor monitor;
  monitor.add(Bytes{0x0A, 0x80, 0xFF, 0x7F, 0x81, 0x82, 0x83, 0x84}, 0);
  EXPECT_EQ(monitor.text(), "0A \n  --- 80   --- FF 7F   --- 81   --- 82   --- 83 \n  --- 84 ");
  monitor.clear();
  monitor.add(Bytes(3000, 0x41), 7);
  EXPECT_EQ(monitor.text().size(), 8001u) << "2667 bytes: the text was not yet longer than 8000";
  EXPECT_EQ(monitor.endOffset(), 7u + 2667);
  monitor.add(Bytes{0x42}, 3007);
  EXPECT_EQ(monitor.text().size(), 8001u);
  EXPECT_EQ(monitor.rangeOf(7, 2), (TextRange{0, 5}));
  EXPECT_FALSE(monitor.rangeOf(3007, 1));
  EXPECT_FALSE(monitor.rangeOf(6, 1));
}

}  // namespace
}  // namespace touch
