#include "serial/receive_mode.h"

#include "serial/recording_ports.h"
#include "tests/serial/debugger_bench.h"

namespace touch {
namespace {

using namespace std::chrono_literals;
using test::Bytes;
using test::bytesOf;
using test::Lines;

Transfer heardAt(std::chrono::milliseconds time, Bytes bytes) {
  return {time, Direction::fromController, std::move(bytes)};
}
Bytes times(std::size_t count, const Bytes& packet) {
  Bytes all;
  for (std::size_t i = 0; i < count; ++i)
    all.insert(all.end(), packet.begin(), packet.end());
  return all;
}
const Bytes touchPacket = {0xD8, 0x10, 0x20, 0x30, 0x01};
const Bytes liftPacket = {0x98, 0x10, 0x20, 0x30, 0x01};
const Bytes e02Touch = bytesOf(
    "UT\x82"
    "abcdefS");
const Bytes e02Lift = bytesOf(
    "UT\x84"
    "abcdefS");

class ReceiveModeTest : public test::DebuggerBench {
 protected:
  /// What the console shows after `duration` in the receive mode with this coming in.
  Lines consoleAfter(std::vector<Transfer> incoming, std::chrono::milliseconds duration,
                     bool rate = false) {
    log.clear();
    ReplayPort replay(std::move(incoming), clock);
    replay.open();
    ReceiveMode mode({session, clock, prompt, log, formats}, {replay, {}, {}});
    mode.setReplyFormat(usualFormat);
    if (rate) mode.measureRate(true);
    mode.receive();
    clock.delay(duration);
    ceiling = mode.ceiling();
    Lines lines;
    for (const ConsoleLine& line : log.lines()) {
      const bool bytesOnly = line.kind == ConsoleLineKind::received;
      lines.push_back(bytesOnly ? hexText(line.bytes) : line.text);
      if (line.kind == ConsoleLineKind::report) lines.back() += " | " + hexText(line.bytes);
    }
    return lines;
  }

  bool usualFormat = true;
  std::vector<ReportFormat> formats;
  double ceiling = 0;
};

TEST_F(ReceiveModeTest, ShowsALineAReportAndWhatBelongsToNone) {
  session.commandSet = CommandSet::m01;
  const std::vector<Transfer> incoming = {
      heardAt(10ms, {'T', 0x0D, 0xD8, 0x10, 0x20}), heardAt(150ms, {0x30, 0x01, 0xFF}),
      heardAt(300ms, liftPacket), heardAt(500ms, {0xD8, 0x01}), heardAt(900ms, {0x02})};
  EXPECT_EQ(consoleAfter(incoming, 1400ms),
            (Lines{"54 0D", "touch X  4112 Y   176 | D8 10 20 30 01", "FF",
                   "lift  X  4112 Y   176 | 98 10 20 30 01", "D8 01", "02"}));
  usualFormat = false;
  EXPECT_EQ(consoleAfter({heardAt(10ms, liftPacket)}, 200ms),
            Lines{"lift  raw X  4112 Y   176 | 98 10 20 30 01"});
}

TEST_F(ReceiveModeTest, ShowsAnE02PacketWholeAlthoughItsPointIsKnownEarlier) {
  session.commandSet = CommandSet::e02;
  const Bytes packet = bytesOf(
      "UT\x84"
      "1234abS");
  for (std::size_t cut = 1; cut < packet.size(); ++cut) {
    const auto middle = packet.begin() + static_cast<std::ptrdiff_t>(cut);
    EXPECT_EQ(consoleAfter(
                  {heardAt(10ms, {packet.begin(), middle}), heardAt(210ms, {middle, packet.end()})},
                  600ms),
              Lines{"lift  X 12849 Y 13363 | 55 54 84 31 32 33 34 61 62 53"})
        << cut;
  }
  EXPECT_EQ(consoleAfter({heardAt(10ms, bytesOf("UT\x82"
                                                "1234a"))},
                         600ms),
            Lines{"touch X 12849 Y 13363 | 55 54 82 31 32 33 34 61"})
      << "its end never came";
}

TEST_F(ReceiveModeTest, MeasuresTheRateOfOneStrokeAfterTheOther) {
  const std::string begin = "======== Report Rate Mode ==============";
  const std::string end = "=============================";
  const struct {
    const char* what;
    CommandSet set;
    std::vector<Transfer> incoming;
    Lines expected;
  } cases[] = {
      {"nothing yet", CommandSet::m01, {heardAt(10ms, liftPacket)}, {begin}},
      {"the first tick throws away",
       CommandSet::m01,
       {heardAt(10ms, times(9, touchPacket)), heardAt(210ms, times(3, touchPacket)),
        heardAt(410ms, liftPacket)},
       {begin, "Total Time : 400 ms", "Total Points : 4", "Report rate : 10.00", end}},
      {"88 ends",
       CommandSet::quorvane,
       {heardAt(210ms, {0xC8, 1, 2, 3, 4, 0x88, 1, 2, 3, 4})},
       {begin, "Total Time : 200 ms", "Total Points : 2", "Report rate : 10.00", end}},
      {"99 counts and does not end",
       CommandSet::m01,
       {heardAt(210ms, {0x99, 1, 2, 3, 4})},
       {begin}},
      {"what follows the end in the same tick is not counted, nor in the next",
       CommandSet::m01,
       {heardAt(210ms, liftPacket), heardAt(250ms, times(5, touchPacket)),
        heardAt(500ms, times(5, touchPacket)), heardAt(610ms, {0x98})},
       {begin, "Total Time : 200 ms", "Total Points : 1", "Report rate : 5.00", end,
        "Total Time : 200 ms", "Total Points : 1", "Report rate : 5.00", end}},
      {"E02",
       CommandSet::e02,
       {heardAt(210ms, times(2, e02Touch)), heardAt(610ms, e02Lift)},
       {begin, "Total Time : 600 ms", "Total Points : 3", "Report rate : 5.00", end}},
      {"E02 in pieces",
       CommandSet::e02,
       {heardAt(210ms, bytesOf("U")), heardAt(390ms, bytesOf("UxTU")), heardAt(410ms, bytesOf("T")),
        heardAt(610ms, bytesOf("\x84"))},
       {begin, "Total Time : 600 ms", "Total Points : 1", "Report rate : 1.67", end}},
      {"E02, cut by the first tick",
       CommandSet::e02,
       {heardAt(190ms, bytesOf("UT")), heardAt(210ms, bytesOf("\x84"))},
       {begin}},
  };
  for (const auto& c : cases) {
    session.commandSet = c.set;
    EXPECT_EQ(consoleAfter(c.incoming, 900ms, true), c.expected) << c.what;
  }
}

TEST_F(ReceiveModeTest, MeasuresTheFormatsThatAFileAdds) {
  formats = {{"six", 6, {0xE8}, {0xA8}, {CoordinateEncoding::sevenBitHighFirst, 1, 3}},
             {"eight", 8, {0x5A}, {0x5B}, {CoordinateEncoding::sixteenBitLittleEndian, 2, 4}}};
  // Data bytes that would be reports of their own, or end the stroke.
  const Bytes six = {0xE8, 1, 2, 3, 4, 0xD8};
  const Bytes eight = {0x5A, 0x98, 'U', 'T', 0x84, 0x88, 0xD8, 0x5B};
  const auto ended = [](Bytes packet) {
    ++packet[0];
    if (packet[0] == 0xE9) packet[0] = 0xA8;
    return packet;
  };
  const struct {
    const char* what;
    CommandSet set;
    std::vector<Transfer> incoming;
    const char* points;
    double ceiling;
  } cases[] = {
      {"six",
       CommandSet::m01,
       {heardAt(210ms, times(3, six)), heardAt(250ms, ended(six))},
       "4",
       160},
      {"eight",
       CommandSet::quorvane,
       {heardAt(210ms, times(3, eight)), heardAt(250ms, ended(eight))},
       "4",
       120},
      {"beside E02",
       CommandSet::e02,
       {heardAt(210ms, e02Touch), heardAt(250ms, ended(eight))},
       "2",
       120},
      {"built in",
       CommandSet::m01,
       {heardAt(210ms, touchPacket), heardAt(250ms, liftPacket)},
       "2",
       192},
      {"cut by reads and ticks",
       CommandSet::quorvane,
       {heardAt(210ms, {0x5A, 0x98, 'U'}), heardAt(401ms, {'T', 0x84, 0x88, 0xD8, 0x5B}),
        heardAt(450ms, ended(six))},
       "2",
       160},
      {"a lift cut short",
       CommandSet::m01,
       {heardAt(210ms, six), heardAt(250ms, {0x98, 1})},
       "2",
       192},
  };
  for (const auto& c : cases) {
    session.commandSet = c.set;
    const Lines lines = consoleAfter(c.incoming, 900ms, true);
    ASSERT_EQ(lines.size(), 5u) << c.what;
    EXPECT_EQ(lines[2], std::string("Total Points : ") + c.points) << c.what;
    EXPECT_DOUBLE_EQ(ceiling, c.ceiling) << c.what;
  }
}

TEST_F(ReceiveModeTest, GoesBackToPlainDisplayWithoutAResult) {
  ReplayPort replay({heardAt(410ms, liftPacket)}, clock);
  replay.open();
  ReceiveMode mode({session, clock, prompt, log, {}}, {replay, {}, {}});
  mode.receive();
  mode.measureRate(true);
  clock.delay(300ms);
  mode.measureRate(false);
  clock.delay(300ms);
  ASSERT_EQ(log.lines().size(), 2u);
  EXPECT_EQ(log.lines()[1].kind, ConsoleLineKind::report);
  mode.debug();
  EXPECT_FALSE(mode.isReceiving());
}

TEST_F(ReceiveModeTest, ShowsWhatWaitsForItsEndWhenTheSetChangesOrReceivingEnds) {
  ReplayPort replay(
      {heardAt(10ms, {0xD8, 1}), heardAt(210ms, bytesOf("UT")), heardAt(450ms, {0x82})}, clock);
  replay.open();
  ReceiveMode mode({session, clock, prompt, log, {}}, {replay, {}, {}});
  mode.receive();
  clock.delay(200ms);
  session.commandSet = CommandSet::e02;
  clock.delay(200ms);
  mode.debug();
  EXPECT_EQ(shown(log.lines()).find("D8 01"), 8U);
  ASSERT_EQ(log.lines().size(), 2u);
  EXPECT_EQ(log.lines()[1].bytes, bytesOf("UT"));
}

TEST_F(ReceiveModeTest, LeavesTheAnswerToAnExchangeAlone) {
  ASSERT_EQ(port.take(), std::nullopt);
  ReceiveMode mode({session, clock, prompt, log, {}},
                   {serial, [this] { return port.isBusy(); }, [this] { port.tellLoss(); }});
  mode.receive();
  clock.delay(150ms);
  session.commandSet = CommandSet::m01;
  answers = {{}, test::replyOf("12")};
  EXPECT_TRUE(exchange.send({"UT=Unit Type[w]"})) << "a tick is due during the wait";
}

TEST_F(ReceiveModeTest, SaysTooLongOnceAlthoughTimersRunMeanwhile) {
  ReplayPort replay({}, clock);
  replay.open();
  ReceiveMode mode({session, clock, prompt, log, {}}, {replay, {}, {}});
  prompt.onMessage = [this] { clock.delay(1000ms); };
  for (const std::size_t told : {1U, 1U, 2U}) {
    log.note(std::string(4000, 'x'));
    if (told != messages()) mode.receive();
    clock.delay(300ms);
    EXPECT_EQ(messages(), told) << "once each time that receiving begins";
    EXPECT_FALSE(log.isTooLong());
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
  const auto stroke = rate.tick(start + 200ms);
  ASSERT_TRUE(stroke);
  EXPECT_EQ(stroke->points, 5u);
  const IntervalEvidence& evidence = stroke->evidence.value();
  EXPECT_NEAR(static_cast<double>(evidence.shortest.count()), 5208, 2);
  EXPECT_NEAR(static_cast<double>(evidence.median.count()), 5604, 2);
  EXPECT_NEAR(static_cast<double>(evidence.longest.count()), 50000 - 0, 1);
  EXPECT_EQ(evidence.histogram[2], 2u);
  EXPECT_EQ(evidence.histogram[3], 1u);
  EXPECT_EQ(evidence.histogram.back() + evidence.histogram[24], 1u);
  ASSERT_EQ(evidence.gaps.size(), 1u);
  EXPECT_NEAR(static_cast<double>(evidence.gaps[0].at.count()), 10416, 2);
}

TEST(Intervals, NeedTwoReportsAndALineHasItsCeiling) {
  const Clock::TimePoint start{};
  EXPECT_FALSE(evidenceOf({}));
  EXPECT_FALSE(evidenceOf(std::vector{start}));
  EXPECT_DOUBLE_EQ(rateCeiling({}, packetLength(ReportFamily::tablet)), 192);
  EXPECT_DOUBLE_EQ(rateCeiling({}, packetLength(ReportFamily::e02)), 96);
  EXPECT_DOUBLE_EQ(rateCeiling({9600, Parity::even, 8, 2}, 5), 160);
  EXPECT_EQ(rateLines({0ms, 3, 5, {}})[2], "Report rate : -");
}

}  // namespace
}  // namespace touch
