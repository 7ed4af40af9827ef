#include "serial/rawdrawing/raw_drawing.h"

#include "tests/linetest/canvas/recording_surface.h"
#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

Bytes tablet(std::uint8_t status, int x, int y) {
  const auto low = [](int value) { return static_cast<std::uint8_t>(value & 0x7F); };
  return {status, low(x), low(x >> 7), low(y), low(y >> 7)};
}

class RawDrawingTest : public DebuggerBench {
 protected:
  /// It comes when the notice has gone.
  void play(const Incoming& incoming, ReportFamily family = ReportFamily::tablet) {
    // One count of a tablet is one twip.
    drawing = std::make_unique<RawDrawing>(
        clock, hearing(incoming),
        RawDrawing::Canvas{
            surface, {16383, 16383}, [this](PixelPoint to) { cursor.push_back(to); }},
        ReportDecoder(family));
    replay->close();
    drawing->start();
    clock.delay(2450ms);
    replay->open();
  }

  RecordingSurface surface;
  std::vector<PixelPoint> cursor;
  std::unique_ptr<RawDrawing> drawing;
};

TEST_F(RawDrawingTest, JoinsTheReportsOfAStrokeAndEndsItAtPenUpOrWhenTheLineIsIdle) {
  play({{10ms, tablet(0xD8, 100, 200) + tablet(0xD8, 110, 210)},
        {60ms, tablet(0xD8, 120, 220) + tablet(0x98, 130, 230) + tablet(0xD8, 140, 240)},
        {160ms, tablet(0xD8, 150, 250)}});
  clock.delay(300ms);
  EXPECT_EQ(surface.drawn, (Lines{"point 100,200 #12 1", "line 100,200 110,210 #12 1",
                                  "line 110,210 120,220 #12 1", "line 120,220 130,230 #12 1",
                                  "point 140,240 #12 1", "point 150,250 #12 1"}));
  EXPECT_EQ(drawing->reports(), 6u);
}

TEST_F(RawDrawingTest, DrawsWithThePenTheFullRangeAndFollowsWithTheCursorInsideTheScreen) {
  play({{10ms, bytesOf("UT\x82\xFF\xFF") + Bytes{0, 0, 0, 0, 'S'}},
        {60ms, bytesOf("UT\x82") + Bytes(4, 0xFF) + bytesOf("00S")}},
       ReportFamily::e02);
  drawing->pen.mode = PenMode::points;
  drawing->pen.width = 2;
  drawing->options.followCursor = true;
  clock.delay(100ms);
  EXPECT_EQ(surface.drawn, (Lines{"point 16383,0 #12 2", "point 16383,16383 #12 2"}));
  EXPECT_EQ(cursor, (std::vector<PixelPoint>{{1091, 0}, {1091, 1091}}));
}

TEST_F(RawDrawingTest, FollowsTheRangeOfTheDrawingWhereItFitsIt) {
  const Lines full = {"clear", "grid", "point 4000,8000 #12 1", "line 4000,8000 8000,8000 #12 1"};
  play({{10ms, tablet(0xD8, 4000, 8000) + tablet(0x98, 8000, 8000)},
        {210ms, tablet(0xD8, 4000, 8000)},
        {240ms, tablet(0xD8, 4000, 16383)},
        {290ms, tablet(0xD8, 2000, 16383)},
        {550ms, tablet(0xD8, 4000, 8000)}});
  drawing->onCleared = [this] { surface.drawn.push_back("grid"); };
  clock.delay(200ms);
  drawing->fit(true);
  Lines expected = {"clear", "grid", "point 0,8000 #12 1", "line 0,8000 16383,8000 #12 1"};
  EXPECT_EQ(surface.drawn, expected) << "a line spans no range in the other direction";
  drawing->fit(false);
  EXPECT_EQ(surface.drawn, full);
  drawing->fit(true);
  clock.delay(100ms);
  EXPECT_EQ(surface.drawn.back(), "line 0,16383 -8192,16383 #12 1") << "not at once";
  clock.delay(50ms);
  expected = {"clear",
              "grid",
              "point 5461,0 #12 1",
              "line 5461,0 16383,0 #12 1",
              "point 5461,0 #12 1",
              "line 5461,0 5461,16383 #12 1",
              "line 5461,16383 0,16383 #12 1"};
  EXPECT_EQ(surface.drawn, expected);
  drawing->resize({300, 16383});
  EXPECT_EQ(surface.drawn.back(), "line 100,16383 0,16383 #12 1");
  drawing->clearDrawing();
  EXPECT_EQ(surface.drawn, (Lines{"clear", "grid"}));
  clock.delay(250ms);
  EXPECT_EQ(surface.drawn.back(), "point 73,8000 #12 1") << "the range of what was cleared is gone";
}

TEST_F(RawDrawingTest, ShowsItsNoticeForSevenTicksThatAreSlowUntilSomethingIsDrawn) {
  const std::tuple<const char*, Bytes, std::chrono::milliseconds> cases[] = {
      {"an idle line", {}, 2450ms},
      {"one stray byte", {0x41}, 2150ms},
      {"a stroke", times(100, tablet(0xD8, 1, 1)), 650ms}};
  for (const auto& [what, received, up] : cases) {
    SCOPED_TRACE(what);
    Incoming incoming;
    for (std::size_t i = 0; i < received.size(); ++i)
      incoming.emplace_back(i * 2, Bytes{received[i]});
    RawDrawing noticed(clock, hearing(incoming), {surface, {16383, 16383}, {}},
                       ReportDecoder(ReportFamily::tablet));
    noticed.start();
    clock.delay(up - 1ms);
    EXPECT_TRUE(noticed.noticeIsUp());
    clock.delay(1ms);
    EXPECT_FALSE(noticed.noticeIsUp());
  }
}

TEST_F(RawDrawingTest, StopsTheMonitorBehindTheByteThatMakesItTooLong) {
  HexMonitor monitor;
  monitor.add(Bytes(6, 0xD8) + Bytes(2648, 0x01), 0);
  EXPECT_EQ(monitor.text().size(), HexMonitor::limit);
  EXPECT_FALSE(monitor.isFull());
  monitor.add({{0x02, 0x03}}, 2654);
  EXPECT_TRUE(monitor.text().ends_with(" 01 02 "));
  EXPECT_TRUE(monitor.isFull());
}

TEST_F(RawDrawingTest, RollsInPlaceOfFillingUpAndFindsWhatItStillHolds) {
  const Bytes packet = tablet(0xD8, 1000, 2000);
  const struct {
    const char* what;
    Bytes piece;
    int pieces;
    const char* begins;
    std::size_t least;  ///< that it holds
  } cases[] = {
      {"packets", packet, 2000, "\n  --- D8 68 07 50 0F   --- D8", 7890},
      {"bytes of none", {0x41}, 5000, "41 41 ", 7990},
      {"packets behind a flood of bytes", Bytes(2600, 0x41) + times(30, packet), 3, "41 41 ", 7990},
      {"status bytes alone", {0xFF}, 5000, "\n  --- FF   --- FF", 7950},
      {"little", packet, 3, "\n  --- D8 68 07 50 0F   --- D8", 60},
  };
  for (const auto& [what, piece, pieces, begins, least] : cases) {
    SCOPED_TRACE(what);
    HexMonitor monitor;
    monitor.roll(true);
    std::uint64_t offset = 700;
    std::uint64_t characters = 0;
    for (int i = 0; i < pieces; ++i, offset += piece.size()) {
      const std::uint64_t before = monitor.dropped() + monitor.text().size();
      monitor.add(piece, offset);
      characters = monitor.dropped() + monitor.text().size();
      ASSERT_GT(characters, before);
    }
    EXPECT_THAT(monitor.text(), StartsWith(begins));
    EXPECT_GE(monitor.text().size(), least);
    EXPECT_LE(monitor.text().size(), HexMonitor::limit);
    EXPECT_EQ(monitor.endOffset(), offset);
    for (std::uint64_t place = monitor.firstOffset(); place < offset; ++place) {
      const TextRange range = monitor.rangeOf(place, 1).value();
      ASSERT_EQ(monitor.text().substr(range.begin, 2),
                hexByte(piece[(place - 700) % piece.size()]));
      ASSERT_EQ(monitor.offsetAt(range.begin), place);
    }
    EXPECT_FALSE(monitor.rangeOf(monitor.firstOffset() - 1, 1));

    monitor.roll(false);
    for (; !monitor.isFull(); ++offset)
      monitor.add({{0x02}}, offset);
    EXPECT_TRUE(monitor.text().ends_with("02 "));
    monitor.add({{0x03}}, offset);
    EXPECT_EQ(monitor.endOffset(), offset) << "it stops again";
    monitor.roll(true);
    monitor.add({{0x04}}, offset + 1);
    EXPECT_EQ(monitor.text(), "04 ") << "none is missing between";
    EXPECT_EQ(monitor.firstOffset(), offset + 1);
  }
}

TEST_F(RawDrawingTest, FindsBytesAndDotsFromEachOtherAndWhatBelongsToNone) {
  play({{10ms, {0x80, 0xFF, 0xD8, 0x05}},
        {60ms, Bytes{0x41} + tablet(0xD8, 1000, 2000) + Bytes{0x43} + tablet(0x98, 9000, 9000) +
                   Bytes{0xD8, 0x01}}});
  drawing->options.monitorOnly = true;
  clock.delay(50ms);
  drawing->options.monitorOnly = false;
  clock.delay(50ms);
  const std::string& text = drawing->monitor().text();
  ASSERT_EQ(text,
            "\n  --- 80   --- FF   --- D8 05 41   --- D8 68 07 50 0F 43   --- 98 28 46 28 46 \n  "
            "--- D8 01 ");
  const auto part = [&](TextRange range) {
    return text.substr(range.begin, range.end - range.begin);
  };
  const auto stray = [&] {
    std::string parts;
    for (const TextRange range : drawing->strayText())
      parts += part(range) + ';';
    return parts;
  };
  EXPECT_EQ(part(drawing->bytesOfDotAt({1050, 2000}).value()), "D8 68 07 50 0F");
  EXPECT_EQ(part(drawing->bytesOfDotAt({9000, 9100}).value()), "98 28 46 28 46");
  EXPECT_FALSE(drawing->bytesOfDotAt({5000, 5000}));
  EXPECT_EQ(drawing->dotOfTextAt(text.find("50")), (TwipsPoint{1000, 2000}));
  EXPECT_EQ(drawing->fieldOfTextAt(text.find("50")),
            "Byte 4 of 5: Y, low bits. Touched, X 1000, Y 2000.");
  for (const std::size_t nowhere : {text.find("43"), std::size_t{0}, text.size()})
    EXPECT_FALSE(drawing->dotOfTextAt(nowhere)) << nowhere;
  EXPECT_EQ(stray(), "41;43;") << "the first two were not decoded, the last may become a packet";
  clock.delay(50ms);
  EXPECT_EQ(stray(), "41;43;D8 01;");
  drawing->clearDrawing();
  EXPECT_EQ(stray(), "41;43;D8 01;") << "the monitor stays";
  EXPECT_FALSE(drawing->dotOfTextAt(text.find("50")) || drawing->bytesOfDotAt({1000, 2000}));
  drawing->clearMonitor();
  EXPECT_EQ(stray(), "");
}

}  // namespace
}  // namespace touch::test
