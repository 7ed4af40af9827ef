#include "serial/receiving/receive_mode.h"

#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

using enum CommandSet;

const Bytes touchPacket = {0xD8, 0x10, 0x20, 0x30, 0x01};
const Bytes liftPacket = {0x98, 0x10, 0x20, 0x30, 0x01};
const Bytes e02Touch = Bytes{'U', 'T', 0x82} + bytesOf("1234abS");
const Bytes e02Lift = Bytes{'U', 'T', 0x84} + bytesOf("1234abS");

class ReceiveModeTest : public DebuggerBench {
 protected:
  ReceiveMode& modeHearing(const Incoming& incoming) {
    mode.reset();
    log.clear();
    mode = std::make_unique<ReceiveMode>(ReceiveMode::Parts{session, clock, prompt, log, formats},
                                         hearing(incoming));
    return *mode;
  }
  /// What the console shows after some time: the bytes, and what they are when they are a report.
  Lines consoleAfter(std::chrono::milliseconds duration) {
    mode->receive();
    clock.delay(duration);
    Lines lines;
    for (const ConsoleLine& line : log.lines())
      lines.push_back(line.text + (line.text.empty() ? "" : " | ") + hexText(line.bytes));
    return lines;
  }

  /// That these strokes, and no others, are measured.
  void expectStrokes(const char* what, CommandSet set, const Incoming& incoming,
                     const std::string& strokes, double ceiling) {
    SCOPED_TRACE(what);
    session.commandSet = set;
    modeHearing(incoming).measureRate(true);
    mode->receive();
    clock.delay(900ms);
    EXPECT_EQ(log.text(), "======== Report Rate Mode ==============\n" + strokes);
    EXPECT_DOUBLE_EQ(mode->ceiling(), ceiling);
  }
  static std::string stroke(int time, int points, const char* rate) {
    return "Total Time : " + std::to_string(time) +
           " ms\nTotal Points : " + std::to_string(points) + "\nReport rate : " + rate +
           "\n=============================\n";
  }

  std::vector<ReportFormat> formats;
  std::unique_ptr<ReceiveMode> mode;
};

TEST_F(ReceiveModeTest, ShowsALineAReportAndWhatBelongsToNone) {
  session.commandSet = m01;
  modeHearing({{10ms, {'T', 0x0D, 0xD8, 0x10, 0x20}},
               {150ms, {0x30, 0x01, 0xFF}},
               {300ms, liftPacket},
               {500ms, {0xD8, 0x01}},
               {900ms, {0x02}},
               {1500ms, liftPacket}});
  EXPECT_EQ(consoleAfter(1400ms), (Lines{"54 0D", "touch X  4112 Y   176 | D8 10 20 30 01", "FF",
                                         "lift  X  4112 Y   176 | 98 10 20 30 01", "D8 01", "02"}));
  mode->setReplyFormat(false);
  EXPECT_EQ(consoleAfter(400ms).back(), "lift  raw X  4112 Y   176 | 98 10 20 30 01");

  modeHearing({{10ms, {0xD8, 1}}, {210ms, bytesOf("UT")}}).receive();
  clock.delay(200ms);
  session.commandSet = e02;
  clock.delay(200ms);
  mode->debug();
  EXPECT_THAT(log.text(), ContainsRegex("< D8 01 .*\n.*< 55 54 "))
      << "what waits for the end of its packet is shown all the same";
}

TEST_F(ReceiveModeTest, ShowsAnE02PacketWholeAlthoughItsPointIsKnownEarlier) {
  session.commandSet = e02;
  for (std::ptrdiff_t cut = 1; cut < std::ssize(e02Lift); ++cut) {
    const auto middle = e02Lift.begin() + cut;
    modeHearing({{10ms, {e02Lift.begin(), middle}}, {210ms, {middle, e02Lift.end()}}});
    EXPECT_EQ(consoleAfter(600ms), Lines{"lift  X 12849 Y 13363 | 55 54 84 31 32 33 34 61 62 53"})
        << cut;
  }
}

TEST_F(ReceiveModeTest, MeasuresTheRateOfOneStrokeAfterTheOther) {
  expectStrokes(
      "the first tick throws away", m01,
      {{10ms, times(9, touchPacket)}, {210ms, times(3, touchPacket)}, {410ms, liftPacket}},
      stroke(400, 4, "10.00"), 192);
  expectStrokes("88 ends, 99 does not", quorvane,
                {{210ms, {0x99, 1, 2, 3, 4, 0x88, 1, 2, 3, 4, 0xC8}}}, stroke(200, 2, "10.00"),
                192);
  expectStrokes("what follows the end in the same tick is not counted, nor in the next", m01,
                {{210ms, liftPacket},
                 {250ms, times(5, touchPacket)},
                 {500ms, times(5, touchPacket)},
                 {610ms, {0x98}}},
                stroke(200, 1, "5.00") + stroke(200, 1, "5.00"), 192);
  expectStrokes(
      "E02 in pieces", e02,
      {{210ms, bytesOf("U")}, {390ms, bytesOf("UxTU")}, {410ms, bytesOf("T")}, {610ms, {0x84}}},
      stroke(600, 1, "1.67"), 96);
  expectStrokes("an E02 end byte elsewhere, and half a start before the first tick", e02,
                {{190ms, bytesOf("U")},
                 {210ms, Bytes{'T', 0x84, 'U', 'T', 0x82, 0x84, 1, 2, 3, 4, 5, 6, 'S'}},
                 {390ms, e02Lift}},
                stroke(200, 2, "10.00"), 96);
}

TEST_F(ReceiveModeTest, MeasuresTheFormatsThatAFileAdds) {
  formats = {{"six", 6, {0xE8}, {0xA8}, {CoordinateEncoding::sevenBitHighFirst, 1, 3}},
             {"eight", 8, {0x5A}, {0x5B}, {CoordinateEncoding::sixteenBitLittleEndian, 2, 4}}};
  // Data bytes that would be reports of their own, or end the stroke.
  const Bytes sixTouch = {0xE8, 1, 2, 3, 4, 0xD8};
  const Bytes sixLift = {0xA8, 1, 2, 3, 4, 0xD8};
  const Bytes eightLift = {0x5B, 0x98, 'U', 'T', 0x84, 0x88, 0xD8, 0x5B};
  expectStrokes("beside E02", e02, {{210ms, e02Touch}, {250ms, eightLift}}, stroke(200, 2, "10.00"),
                120);
  expectStrokes(
      "cut by reads and ticks", quorvane,
      {{210ms, {0x5A, 0x98, 'U'}}, {401ms, {'T', 0x84, 0x88, 0xD8, 0x5B}}, {450ms, sixLift}},
      stroke(400, 2, "5.00"), 160);
  expectStrokes("a lift cut short", m01, {{210ms, sixTouch}, {250ms, {0x98, 1}}},
                stroke(400, 2, "5.00"), 192);
}

TEST_F(ReceiveModeTest, ShowsWhenTheBytesCameAndNotWhenTheyWereShown) {
  session.commandSet = m01;
  const auto timesAfter = [this](std::chrono::milliseconds duration) {
    mode->receive();
    clock.delay(duration);
    Lines lines;
    for (const ConsoleLine& line : log.lines())
      lines.push_back(shown(line).substr(0, 8));
    return lines;
  };
  // Of two that were read together the first came before by what the second takes on the line.
  modeHearing({{10ms, touchPacket},
               {50ms, times(2, touchPacket)},
               {90ms, {0xD8, 0x10}},
               {150ms, {0x20, 0x30, 0x01, 0x41}},
               {190ms, liftPacket}});
  EXPECT_EQ(timesAfter(250ms),
            (Lines{"0.0100 =", "0.0448 =", "0.0500 =", "0.1490 =", "0.1500 <", "0.1900 ="}));

  RecordedPort recorded(serial, clock);
  ConsoleLog console(clock);
  recorded.keepTimes(true);
  ReceiveMode live({session, clock, prompt, console, {}}, {recorded, port.gate(), {}});
  live.receive();
  for (const int at : {13, 55, 131})
    clock.after(std::chrono::milliseconds(at), [this] { serial.received = touchPacket; });
  recorded.readAll();
  clock.delay(250ms);
  DebuggerPort debugger(access(), prompt, recorded, console);
  recorded.open();
  debugger.send(bytesOf("Z"));
  clock.after(41ms, [this] { serial.received = bytesOf("OK\r"); });
  clock.delay(100ms);
  debugger.receive();
  EXPECT_THAT(console.text(),
              MatchesRegex("0[.]0140 = [^\n]+\n0[.]0560 = [^\n]+\n0[.]1320 = [^\n]+\n"
                           "0[.]2500 > 5A [^\n]+\n0[.]2920 < 4F 4B 0D [^\n]+\n"));
}

TEST_F(ReceiveModeTest, BeginsWithWhatComesFromThenOn) {
  modeHearing({{10ms, touchPacket}, {310ms, liftPacket}});
  clock.delay(300ms);
  EXPECT_EQ(consoleAfter(100ms).size(), 0u);
  EXPECT_EQ(consoleAfter(200ms).size(), 1u) << "pressed again, it goes on";
}

TEST_F(ReceiveModeTest, LeavesTheAnswerToAnExchangeAlone) {
  ASSERT_EQ(whyNot(port.take()), "");
  ReceiveMode besides({session, clock, prompt, log, {}},
                      {serial, port.gate(), [this] { port.tellLoss(); }});
  besides.receive();
  clock.delay(150ms);
  session.commandSet = m01;
  serial.answers = {replyOf("12")};
  EXPECT_TRUE(exchange.send({"UT=Unit Type[w]"})) << "a tick is due during the wait";
}

TEST_F(ReceiveModeTest, SaysTooLongOnceAlthoughTimersRunMeanwhile) {
  modeHearing({});
  prompt.onMessage = [this] { clock.delay(1000ms); };
  int lastTold = 0;
  int round = 0;
  for (const int told : {1, 1, 2}) {
    if (std::exchange(lastTold, told) != told) mode->receive();
    log.note(std::string(4000, 'x'));
    clock.delay(300ms);
    EXPECT_EQ(std::ranges::count(journal, "message Text too long !!"), told);
    EXPECT_EQ(mode->takeRemark().has_value(), round == 1) << "then it is said beside";
    EXPECT_FALSE(log.isTooLong());
    ++round;
  }
}

TEST(Intervals, AreReckonedFromWhatTheBytesTakeOnTheLine) {
  const Clock::TimePoint start{};
  ReportRate rate(ReportFamily::tablet);
  EXPECT_FALSE(rate.tick(start));
  // Three packets back to back, read in one go; then one after a gap, and the end.
  rate.collect(start + 50ms, times(3, touchPacket));
  rate.collect(start + 100ms, touchPacket);
  rate.collect(start + 106ms, liftPacket);
  const StrokeRate stroke = rate.tick(start + 200ms).value();
  EXPECT_THAT(evidenceLines(stroke, rateCeiling({9600, Parity::even, 8, 2}, 5)),
              ElementsAre(StartsWith("While touched : 178."),
                          "Intervals : shortest 5.2, median 5.6, longest 50.0 ms",
                          "Gaps : 50.0 ms at 10.4 ms", "Line limit: 160 reports per second"));
  EXPECT_EQ(stroke.evidence->histogram[2], 2u);
  EXPECT_EQ(stroke.evidence->histogram[3], 1u);
  EXPECT_FALSE(evidenceOf(std::vector{start})) << "one report has no intervals";
  EXPECT_EQ(rateLines({0ms, 3, 5, {}})[2], "Report rate : -");

  EXPECT_FALSE(rate.tick(start + 400ms));
  rate.collect(start + 450ms, touchPacket);
  rate.collect(start + 470ms, liftPacket);
  EXPECT_EQ(rate.tick(start + 600ms).value().evidence->longest, 20ms) << "each for itself";
}

}  // namespace
}  // namespace touch::test
