#include "calibration/calibration.h"

#include "tests/calibration/recording_screen.h"
#include "tests/doubles/desk.h"

namespace touch::test {
namespace {

constexpr TwipsSize size{15000, 9000};

class Calibrating : public Desk {
 protected:
  Calibrating() {
    for (const char* command : {"CR", "CX", "R"})
      script.replies[command] = {acknowledgement};
  }

  void begin(int points) {
    session.calibrationPoints = points;
    calibration.reset();
    shown.emplace();
    calibration.emplace(access(), prompt, *shown, size);
    calibration->activate();
  }
  /// Each target is touched at the `atPoll`th poll for it, until `count` are.
  void touchTargets(int count, int atPoll = 1) {
    script.touches.clear();
    for (int i = 0; i < count; ++i) {
      script.touches.insert(script.touches.end(), static_cast<std::size_t>(atPoll - 1),
                            std::nullopt);
      script.touches.emplace_back(std::pair{1000 * i, 0});
    }
    polls = 0;
    script.onCall = [this, count, atPoll](const std::string& line) {
      if (line == "ReadLength" && ++polls % atPoll == 0 && polls <= count * atPoll)
        script.pending = replyOf("1");
    };
  }
  /// Lets the window live for at least `time`: a procedure that begins in it runs to its end. That
  /// wait itself is not one of the procedure's and is dropped from the journal.
  void live(std::chrono::milliseconds time) {
    const std::size_t line = journal.size();
    clock.delay(time);
    journal.erase(journal.begin() + static_cast<std::ptrdiff_t>(line));
  }
  /// Once, with the controller closed, and the main window is back once.
  void expectEnded(CalibrationOutcome how) const {
    EXPECT_THAT(shown->endings, ElementsAre(how));
    EXPECT_EQ(shown->left, 1);
    EXPECT_EQ(journal.back(), "CloseController");
  }

  std::ptrdiff_t times(const std::string& line) const {
    return std::count(journal.begin(), journal.end(), line);
  }

  std::optional<RecordingScreen> shown;
  std::optional<Calibration> calibration;
  int polls = 0;  ///< for a report of the controller's own two points
};

Lines enterLines(const std::string& command) {
  return {"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer " + command, "delay 300",
          "ReadBuffer 10"};
}
Lines pointLines(int point, int count) {
  const std::string place = std::to_string(point) + " 60 " + std::to_string(count);
  return {"delay 800", "SetCalPoint " + place, "delay 600",
          "delay 100", "CalCurrentPointReady", "IsPenUp"};
}

const Lines penUpAtEnd = {"yield 3001", "IsPenUp", "yield 3001"};
const Lines store = {"StoreCalibrationData", "delay 500", "CloseController"};
const Lines reset = {"WriteBuffer R", "delay 300", "ReadBuffer 10"};

TEST(CalibrationTargets, LieOnTheGridInTheOrderOfTouching) {
  using Places = std::vector<TwipsPoint>;
  // 1024 x 768 pixels; the outer lines are 480 and 360 twips in.
  const auto targets = [](int count) { return calibrationTargets(count, {15360, 11520}); };
  EXPECT_EQ(targets(2), (Places{{1920, 10080}, {13440, 1440}}));
  EXPECT_EQ(targets(3), (Places{{14880, 360}, {480, 360}, {480, 11160}}));
  EXPECT_EQ(targets(4), Places{});
  EXPECT_EQ(targets(5),
            (Places{{7680, 5760}, {14880, 360}, {480, 360}, {480, 11160}, {14880, 11160}}));
  const Places nine = {{7680, 5760}, {14880, 5760}, {14880, 360},  {7680, 360},   {480, 360},
                       {480, 5760},  {480, 11160},  {7680, 11160}, {14880, 11160}};
  EXPECT_EQ(targets(9), nine);
}

TEST_F(Calibrating, StartsByItselfAndStoresAfterTheLastTarget) {
  for (const int points : {3, 5, 9}) {
    journal.clear();
    touchTargets(points);
    begin(points);
    EXPECT_EQ(shown->buttons, std::pair(true, true));
    live(599ms);
    EXPECT_EQ(journal, Lines{}) << "nothing may happen before 600 ms";
    live(60s);
    Lines expected = enterLines("CR");
    for (int point = 0; point < points; ++point)
      expected = expected + pointLines(point, points);
    EXPECT_EQ(journal, expected + penUpAtEnd + store) << points << " points";
    expectEnded(CalibrationOutcome::stored);
    EXPECT_EQ(shown->targets, calibrationTargets(points, size));
    EXPECT_EQ(shown->done, shown->targets);
  }
}

TEST_F(Calibrating, LeavesTwoPointsToTheController) {
  begin(2);
  EXPECT_EQ(shown->buttons, std::pair(false, false));
  // Two bytes are too few, a third kind of report is ignored; then each point is accepted.
  const Bytes sent[] = {bytesOf("\0011"), replyOf("3"), replyOf("1"), replyOf("1")};
  script.onCall = [&](const std::string& line) {
    if (line == "ReadLength") script.pending = sent[polls++];
  };
  live(60s);
  const Lines toTarget = {"delay 800"};
  const Lines poll = {"delay 100", "ReadLength"};
  const Lines accepted = poll + Lines{"ReadBuffer 3", "IsPenUp"};
  EXPECT_EQ(journal, enterLines("CX") + toTarget + poll + poll + Lines{"ReadBuffer 3"} + accepted +
                         toTarget + accepted + penUpAtEnd + Lines{"CloseController"});
  expectEnded(CalibrationOutcome::stored);
  EXPECT_TRUE(shown->targets.empty()) << "no grid";
  EXPECT_EQ(shown->done, calibrationTargets(2, size));
}

TEST_F(Calibrating, EndsWhenTheControllerRefusesOrFails) {
  const std::tuple<int, std::string, std::deque<Bytes>, int, const char*> cases[] = {
      {3, "CR", {refusal}, 3, "Set Calibration Row Error"},
      {9, "CR", {}, 3, "Set Calibration Row Error"},
      {2, "CX", {refusal}, 4, "CX command Error"},
      // Obeyed at last; then no target is touched, or the controller fails at the first one.
      {3, "CR", {refusal, {}, acknowledgement}, 3, nullptr},
      {2, "CX", {{}, acknowledgement}, 2, "Calibration ERROR [2 pts calibration Function]"},
  };
  script.onCall = [&](const std::string& line) {
    if (line == "ReadLength") script.pending = replyOf("2");
  };
  for (const auto& [points, command, replies, tries, message] : cases) {
    SCOPED_TRACE(command + ' ' + (message ? message : ""));
    journal.clear();
    script.replies[command] = replies;
    begin(points);
    live(2min);
    EXPECT_EQ(times("WriteBuffer " + command), tries);
    EXPECT_EQ(times("FlushReadBuffer"), tries);
    EXPECT_EQ(matching(journal, "^message"),
              message ? Lines{std::string("message ") + message} : Lines{});
    expectEnded(message ? CalibrationOutcome::failed : CalibrationOutcome::timedOut);
    EXPECT_EQ(session.calibrationPoints, points != 2 && message ? 0 : points);
  }
}

TEST_F(Calibrating, AsksAgainForATargetThatWasNotMovedTo) {
  // Readings that no panel gives; then one within 200 of the one before either way, and one that is
  // 201 from it.
  script.touches = {std::pair{INT32_MIN, INT32_MAX}, std::pair{INT32_MAX, INT32_MIN},
                    std::pair{5000, 5000},           std::pair{5200, 4800},
                    std::pair{5201, 5000},           std::pair{5201, 5201}};
  begin(5);
  live(60s);
  EXPECT_EQ(matching(journal, "^SetCalPoint"),
            (Lines{"SetCalPoint 0 60 5", "SetCalPoint 1 60 5", "SetCalPoint 2 60 5",
                   "SetCalPoint 3 60 5", "SetCalPoint 3 60 5", "SetCalPoint 4 60 5"}));
  EXPECT_EQ(matching(journal, "^message"), Lines{"message Wrong Position, Trial again please"});
  expectEnded(CalibrationOutcome::stored);
}

TEST_F(Calibrating, WaitsOnlySoLongForTheFingerToLift) {
  touchTargets(3);
  script.results["IsPenUp"] = 0;
  begin(3);
  live(10min);
  // 101 polls for each target, and the last target's count goes on to 270.
  EXPECT_EQ(times("IsPenUp"), 101 * 3 + (270 - 101));
  expectEnded(CalibrationOutcome::stored);
}

TEST_F(Calibrating, GivesUpAtWhicheverTargetIsNotTouched) {
  for (const int points : {2, 3, 5, 9}) {
    for (int touched = 0; touched < points; ++touched) {
      SCOPED_TRACE(std::to_string(touched) + " of " + std::to_string(points));
      journal.clear();
      touchTargets(touched);
      begin(points);
      live(20min);
      expectEnded(CalibrationOutcome::timedOut);
      EXPECT_EQ(times("StoreCalibrationData"), 0);
      // The bar crosses 15000 twips at 50 each 200 ms: in a minute, but while the driver settles on
      // the first target.
      EXPECT_EQ(shown->barWidth, 14950);
      const auto target = std::find(journal.rbegin(), journal.rend(), "delay 800");
      const auto asked = std::count(journal.rbegin(), target, "delay 100");
      EXPECT_TRUE(asked > 590 && asked <= 600) << asked;
    }
  }
}

TEST_F(Calibrating, EndsOnceWhateverErrorPassesThrough) {
  for (const auto how : {CalibrationOutcome::failed, CalibrationOutcome::stored}) {
    journal.clear();
    touchTargets(3);
    begin(3);
    shown->failsToLeave = how == CalibrationOutcome::stored;
    if (!shown->failsToLeave) clock.after(3s, [] { throw std::bad_alloc(); });
    EXPECT_THROW(live(1min), std::bad_alloc);
    expectEnded(how);
    live(1min);
    EXPECT_EQ(shown->endings.size(), 1U);
  }
}

TEST_F(Calibrating, StartButtonChecksThatTheControllerCanBeOpened) {
  script.results["OpenController"] = 1;
  begin(3);
  calibration->start();
  live(5s);
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "message Open Controller Error!!"}))
      << "it does not start by itself after that";
  EXPECT_EQ(shown->buttons, std::pair(true, true)) << "the user can try again";

  journal.clear();
  script.results.clear();
  touchTargets(3);
  calibration->start();
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "CloseController"} + enterLines("CR") +
                      pointLines(0, 3) + pointLines(1, 3) + pointLines(2, 3) + penUpAtEnd + store));
}

/// With a point count, by Cancel and by Esc.
class Abandoning : public Calibrating, public testing::WithParamInterface<std::tuple<int, bool>> {};

TEST_P(Abandoning, LeavesNothingBehindAtAnyMoment) {
  const int points = std::get<0>(GetParam());
  const bool byEscape = std::get<1>(GetParam());
  bool ended = false;
  for (auto moment = 25ms; !ended && !HasFailure(); moment += 50ms) {
    SCOPED_TRACE(std::to_string(moment.count()) + " ms");
    ASSERT_LT(moment, 1min) << "the procedure never ended";
    journal.clear();
    touchTargets(points, 3);
    script.sequences["IsPenUp"].clear();
    for (int poll = 0; poll < 4 * points; ++poll)
      script.sequences["IsPenUp"].push_back(poll % 4 == 3);
    begin(points);

    bool stored = false;
    bool begun = false;
    bool stopped = false;
    std::ptrdiff_t linesBefore = 0;
    clock.after(moment, [&] {
      ended = !shown->endings.empty();
      // With two points the controller has stored its result when it has accepted the second.
      stored = points == 2 ? polls >= 6 : !shown->exitAllowed;
      begun = calibration->running();
      stopped = !ended && shown->exitAllowed;
      linesBefore = std::ssize(journal) - 1;  // live() drops its own line afterwards
      byEscape ? calibration->escape() : calibration->cancel();
    });
    live(moment + 5s);

    EXPECT_THAT(shown->endings,
                ElementsAre(stored ? CalibrationOutcome::stored : CalibrationOutcome::cancelled));
    EXPECT_EQ(shown->left, 1);
    EXPECT_EQ(times("StoreCalibrationData"), stored && points != 2 ? 1 : 0);
    // What is being stored is not reset.
    EXPECT_TRUE(!stored || points == 2 || times("WriteBuffer R") == 0);
    if (!stopped) continue;
    // Whatever was waited for ends at once; after that nothing is asked of the controller but what
    // the way out needs.
    Lines after(journal.begin() + linesBefore, journal.end());
    std::erase(after, "yield 3001");
    Lines expected = byEscape ? Lines{"FlushReadBuffer"} + reset : Lines{};
    if (!begun && byEscape) expected = Lines{"OpenController RS232 DEVICE 1"} + expected;
    if (begun || byEscape) expected.emplace_back("CloseController");
    EXPECT_EQ(after, expected);
  }
}

INSTANTIATE_TEST_SUITE_P(PointCounts, Abandoning,
                         testing::Combine(testing::Values(2, 3, 5, 9), testing::Bool()));

TEST_F(Calibrating, ResetsOnceMoreWhenTheResetIsNotAcknowledged) {
  script.replies["R"] = {{}, refusal};
  begin(3);
  clock.after(2050ms, [this] { calibration->escape(); });
  live(5s);
  EXPECT_EQ(Lines(journal.end() - 8, journal.end()),
            Lines{"FlushReadBuffer"} + reset + reset + Lines{"CloseController"});
}

}  // namespace
}  // namespace touch::test
