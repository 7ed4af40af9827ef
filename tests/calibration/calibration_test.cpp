#include "calibration/calibration.h"

#include <optional>

#include "tests/support/desk.h"

namespace touch {
namespace {

using test::acknowledgement;
using test::Lines;
using test::refusal;
using test::replyOf;
using namespace std::chrono_literals;

/// Remembers what is shown; drawing is written down as "line", "circle RADIUS COLOUR".
class Screen final : public CalibrationScreen, private Surface {
 public:
  Surface& surface() override { return *this; }
  void showButtons(bool start, bool cancel) override {
    startShown = start;
    cancelShown = cancel;
  }
  void showTimeBar(float width) override { barWidth = width; }
  void allowExit(bool allowed) override { exitAllowed = allowed; }
  void leave() override { ++left; }
  void ended(CalibrationOutcome how) override {
    ++endings;
    outcome = how;
  }

  bool startShown = false;
  bool cancelShown = false;
  bool exitAllowed = false;
  std::optional<float> barWidth;
  int left = 0;
  int endings = 0;
  std::optional<CalibrationOutcome> outcome;
  Lines drawn;

 private:
  void clear() override { drawn.push_back("clear"); }
  void line(TwipsPoint, TwipsPoint, Colour, int) override { drawn.push_back("line"); }
  void circle(TwipsPoint, float radius, Colour colour, int) override {
    const auto index = std::find(palette.begin(), palette.end(), colour) - palette.begin();
    drawn.push_back("circle " + std::to_string(static_cast<int>(radius)) + ' ' +
                    std::to_string(index));
  }
};

class Calibrating : public test::Desk {
 protected:
  Calibrating() {
    script.replies["CR"] = {acknowledgement};
    script.replies["CX"] = {acknowledgement};
    script.replies["R"] = {acknowledgement};
  }

  void begin(int points) {
    session.calibrationPoints = points;
    calibration.reset();
    shown.emplace();
    calibration.emplace(access(), prompt, *shown, TwipsSize{15000, 9000});
    calibration->activate();
  }
  void touchEachTarget(int points) {
    for (int i = 0; i < points; ++i)
      script.touches.push_back(std::pair{1000 * i, 0});
  }
  /// Lets the window live for at least `time`: a procedure that begins in it runs to its end. That wait itself is not
  /// one of the procedure's and is dropped from the journal.
  void live(std::chrono::milliseconds time) {
    const std::size_t line = journal.size();
    clock.delay(time);
    journal.erase(journal.begin() + static_cast<std::ptrdiff_t>(line));
  }

  std::ptrdiff_t times(const std::string& line) const {
    return std::count(journal.begin(), journal.end(), line);
  }
  Lines linesOf(std::string_view beginning) const {
    Lines lines = journal;
    std::erase_if(lines, [&](const auto& line) { return !line.starts_with(beginning); });
    return lines;
  }

  std::optional<Screen> shown;
  std::optional<Calibration> calibration;
};

Lines operator+(Lines left, const Lines& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

Lines enterLines(const std::string& command) {
  return {"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer " + command, "delay 300",
          "ReadBuffer 10"};
}
Lines pointLines(int point, int count) {
  return {"delay 800",
          "SetCalPoint " + std::to_string(point) + " 60 " + std::to_string(count),
          "delay 600",
          "delay 100",
          "CalCurrentPointReady",
          "IsPenUp"};
}

const Lines penUpAtEnd = {"yield 3001", "IsPenUp", "yield 3001"};
const Lines store = {"StoreCalibrationData", "delay 500", "CloseController"};
const Lines reset = {"WriteBuffer R", "delay 300", "ReadBuffer 10"};

TEST_F(Calibrating, StartsByItselfAndStoresAfterTheLastTarget) {
  for (const int points : {3, 5, 9}) {
    journal.clear();
    touchEachTarget(points);
    begin(points);
    EXPECT_TRUE(shown->startShown && shown->cancelShown);
    live(599ms);
    EXPECT_EQ(journal, Lines{}) << "nothing may happen before 600 ms";
    live(60s);
    Lines expected = enterLines("CR");
    for (int point = 0; point < points; ++point)
      expected = expected + pointLines(point, points);
    EXPECT_EQ(journal, expected + penUpAtEnd + store) << points << " points";
    EXPECT_EQ(shown->outcome, CalibrationOutcome::stored);
    EXPECT_EQ(shown->left, 1);
  }
}

TEST_F(Calibrating, LeavesTwoPointsToTheController) {
  begin(2);
  EXPECT_FALSE(shown->startShown || shown->cancelShown);
  int polls = 0;
  script.onCall = [&](const std::string& line) {
    if (line != "ReadLength") return;
    // Two bytes are too few, a third kind of report is ignored; then each point is accepted.
    const test::Bytes sent[] = {test::bytesOf("\0011"), replyOf("3"), replyOf("1"), replyOf("1")};
    script.pending = sent[polls++];
  };
  live(60s);
  const Lines poll = {"delay 100", "ReadLength"};
  const Lines report = {"ReadBuffer 3"};
  const Lines penUp = {"IsPenUp"};
  const Lines toTarget = {"delay 800"};
  EXPECT_EQ(journal, enterLines("CX") + toTarget + poll + poll + report + poll + report + penUp +
                         toTarget + poll + report + penUp + penUpAtEnd + Lines{"CloseController"});
  EXPECT_EQ(shown->outcome, CalibrationOutcome::stored);
  EXPECT_EQ(std::count(shown->drawn.begin(), shown->drawn.end(), "line"), 0) << "no grid";
}

TEST_F(Calibrating, EndsWhenTheControllerRefuses) {
  const struct {
    int points;
    std::string command;
    std::deque<test::Bytes> replies;
    int tries;
    Lines messages;
  } cases[] = {
      {3, "CR", {refusal}, 3, {"message Set Calibration Row Error"}},
      {9, "CR", {}, 3, {"message Set Calibration Row Error"}},
      {2, "CX", {refusal}, 4, {"message CX command Error"}},
      {3, "CR", {refusal, {}, acknowledgement}, 3, {}},
      {2, "CX", {refusal, refusal, {}, acknowledgement}, 4, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.command + " at the try " + std::to_string(c.tries));
    journal.clear();
    script.replies[c.command] = c.replies;
    begin(c.points);
    live(30s);
    EXPECT_EQ(times("WriteBuffer " + c.command), c.tries);
    EXPECT_EQ(times("FlushReadBuffer"), c.tries);
    EXPECT_EQ(linesOf("message"), c.messages);
    if (!c.messages.empty()) {
      EXPECT_EQ(journal.back(), "CloseController");
      EXPECT_EQ(shown->outcome, CalibrationOutcome::failed);
      EXPECT_EQ(session.calibrationPoints, c.points == 2 ? 2 : 0);
    }
    calibration->cancel();
    live(5s);
  }
}

TEST_F(Calibrating, TellsWhenTheControllerFailsBetweenItsTwoPoints) {
  begin(2);
  script.onCall = [&](const std::string& line) {
    if (line == "ReadLength") script.pending = replyOf("2");
  };
  live(60s);
  EXPECT_EQ(journal[journal.size() - 2], "message Calibration ERROR [2 pts calibration Function]");
  EXPECT_EQ(journal.back(), "CloseController");
  EXPECT_EQ(shown->outcome, CalibrationOutcome::failed);
  EXPECT_EQ(shown->left, 1);
}

TEST_F(Calibrating, AsksAgainForATargetThatWasNotMovedTo) {
  const std::pair<std::int32_t, std::int32_t> first{5000, 5000};
  script.touches = {first, std::pair{5200, 4800},  // both within 200 of the first
                    std::pair{5201, 5000},         // one further: a new place
                    std::pair{5201, 5201}};
  begin(3);
  live(60s);
  EXPECT_EQ(linesOf("SetCalPoint"), (Lines{"SetCalPoint 0 60 3", "SetCalPoint 1 60 3",
                                           "SetCalPoint 1 60 3", "SetCalPoint 2 60 3"}));
  EXPECT_EQ(linesOf("message"), Lines{"message Wrong Position, Trial again please"});
  EXPECT_EQ(shown->outcome, CalibrationOutcome::stored);
}

TEST_F(Calibrating, SurvivesReadingsThatNoPanelGives) {
  script.touches = {std::pair{INT32_MIN, INT32_MAX}, std::pair{INT32_MAX, INT32_MIN},
                    std::pair{0, 0}};
  begin(3);
  live(60s);
  EXPECT_EQ(shown->outcome, CalibrationOutcome::stored);
}

TEST_F(Calibrating, WaitsOnlySoLongForTheFingerToLift) {
  touchEachTarget(3);
  script.results["IsPenUp"] = 0;
  begin(3);
  live(10min);
  // 101 polls for each target, and the last target's count goes on to 270.
  EXPECT_EQ(times("IsPenUp"), 101 * 3 + (270 - 101));
  EXPECT_EQ(shown->outcome, CalibrationOutcome::stored);
}

TEST_F(Calibrating, GivesUpWhenTheTimeBarHasCrossedTheScreen) {
  begin(5);
  // 15000 twips at 50 each 200 ms are a minute; the bar grows while the driver settles on the target, too.
  constexpr auto barBegins = 600ms + 300ms + 800ms;
  clock.after(barBegins + 59500ms, [&] {
    EXPECT_EQ(shown->outcome, std::nullopt);
    EXPECT_TRUE(calibration->awaitedTarget());
    EXPECT_GT(shown->barWidth, 14500);
  });
  clock.after(barBegins + 60500ms,
              [&] { EXPECT_EQ(shown->outcome, CalibrationOutcome::timedOut); });
  live(2min);
  EXPECT_EQ(times("IsPenUp"), 0);
}

TEST_F(Calibrating, GivesUpAtWhicheverTargetIsNotTouched) {
  for (const int points : {2, 3, 5, 9}) {
    for (int touched = 0; touched < points; ++touched) {
      journal.clear();
      script.touches.clear();
      touchEachTarget(touched);
      int accepted = 0;
      script.onCall = [&](const std::string& line) {
        if (line == "ReadLength" && accepted++ < touched) script.pending = replyOf("1");
      };
      begin(points);
      live(20min);
      EXPECT_EQ(shown->outcome, CalibrationOutcome::timedOut) << touched << " of " << points;
      EXPECT_EQ(journal.back(), "CloseController");
      EXPECT_EQ(times("StoreCalibrationData"), 0);
      EXPECT_EQ(shown->left, 1);
    }
  }
}

TEST_F(Calibrating, PulsesTheTargetAndMarksItDone) {
  script.touches = {std::pair{0, 0}};
  begin(3);
  const auto expectDrawnAt = [this](std::chrono::milliseconds time, Lines expected) {
    clock.after(time, [this, time, expected = std::move(expected)] {
      EXPECT_EQ(shown->drawn, expected) << time.count() << " ms";
      shown->drawn.clear();
    });
  };
  const Lines circles(3, "circle 250 15");
  expectDrawnAt(599ms, {});
  expectDrawnAt(601ms, Lines{"clear"} + Lines(10, "line") + circles);
  expectDrawnAt(1610ms,
                {"circle 250 10", "circle 175 11", "circle 100 12", "circle 25 13", "circle 250 7",
                 "circle 175 7", "circle 100 7", "circle 25 7", "circle 250 10"});
  clock.after(2390ms, [this] { shown->drawn.clear(); });
  // Raw mode is on after 900 ms, the target is due after 1700, armed till 2300, asked at 2400.
  expectDrawnAt(
      2410ms, {"circle 250 10", "circle 250 14", "circle 175 14", "circle 100 14", "circle 25 14"});
  clock.after(3s, [this] { calibration->cancel(); });
  live(10s);
}

TEST_F(Calibrating, StartButtonChecksThatTheControllerCanBeOpened) {
  script.results["OpenController"] = 1;
  begin(3);
  calibration->start();
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "message Open Controller Error!!"}));
  live(5s);
  EXPECT_EQ(journal.size(), 2u) << "it does not start by itself after that";
  EXPECT_TRUE(shown->startShown && shown->cancelShown) << "the user can try again";
  EXPECT_EQ(shown->left, 0);

  journal.clear();
  script.results.clear();
  touchEachTarget(3);
  calibration->start();
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "CloseController"} + enterLines("CR") +
                      pointLines(0, 3) + pointLines(1, 3) + pointLines(2, 3) + penUpAtEnd + store));
}

/// Every way out at every moment of every procedure.
class Abandoning : public Calibrating, public testing::WithParamInterface<int> {
 protected:
  enum class Way { cancel, escape };

  /// A run in which each target is touched at the third poll and the finger lifts at the fourth, abandoned at `moment`.
  /// False when the run had already ended by then.
  bool abandonAt(std::chrono::milliseconds moment, Way way) {
    const int points = GetParam();
    journal.clear();
    script.touches.clear();
    script.sequences.clear();
    for (int i = 0; i < points; ++i) {
      script.touches.insert(script.touches.end(),
                            {std::nullopt, std::nullopt, std::pair{1000 * i, 0}});
      script.sequences["IsPenUp"].insert(script.sequences["IsPenUp"].end(), {0, 0, 0, 1});
    }
    int polls = 0;
    script.onCall = [this, &polls](const std::string& line) {
      if (line == "ReadLength" && ++polls % 3 == 0) script.pending = replyOf("1");
    };
    begin(points);

    bool running = false;
    bool storing = false;
    bool stored = false;
    std::size_t linesBefore = 0;
    clock.after(moment, [&] {
      stored = shown->outcome == CalibrationOutcome::stored;
      running = calibration->running();
      // With two points the controller has stored its result when it has accepted the second.
      const bool controllerHasIt = points == 2 && polls >= 6;
      storing = running && (!shown->exitAllowed || controllerHasIt);
      linesBefore = journal.size() - 1;  // live() drops its own line afterwards
      way == Way::cancel ? calibration->cancel() : calibration->escape();
    });
    live(moment + 5s);

    EXPECT_EQ(shown->left, 1);
    EXPECT_EQ(shown->endings, 1);
    EXPECT_FALSE(calibration->running());
    EXPECT_TRUE(script.openHandles.empty());
    const bool expectStored = stored || storing;
    EXPECT_EQ(shown->outcome,
              expectStored ? CalibrationOutcome::stored : CalibrationOutcome::cancelled);
    EXPECT_EQ(times("StoreCalibrationData"), expectStored && points != 2 ? 1 : 0);
    if (running && !(storing && points != 2)) {
      // Whatever was waited for ends at once; after that nothing is asked of the controller but what the way out needs.
      Lines after(journal.begin() + static_cast<std::ptrdiff_t>(linesBefore), journal.end());
      std::erase(after, "yield 3001");
      const Lines expected = way == Way::escape ? Lines{"FlushReadBuffer"} + reset : Lines{};
      EXPECT_EQ(after, expected + Lines{"CloseController"});
    }
    return !stored;
  }
};

TEST_P(Abandoning, LeavesNothingBehindAtAnyMoment) {
  for (const Way way : {Way::cancel, Way::escape}) {
    for (auto moment = 25ms; !HasFailure(); moment += 50ms) {
      SCOPED_TRACE((way == Way::escape ? "Esc at " : "Cancel at ") +
                   std::to_string(moment.count()) + " ms");
      if (!abandonAt(moment, way)) break;
      ASSERT_LT(moment, 1min) << "the procedure never ended";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(PointCounts, Abandoning, testing::Values(2, 3, 5, 9));

TEST_F(Calibrating, ResetsOnceMoreWhenTheResetIsNotAcknowledged) {
  script.replies["R"] = {{}, refusal};
  begin(3);
  clock.after(2050ms, [this] { calibration->escape(); });
  live(5s);
  EXPECT_EQ(Lines(journal.end() - 8, journal.end()),
            Lines{"FlushReadBuffer"} + reset + reset + Lines{"CloseController"});
}

}  // namespace
}  // namespace touch
