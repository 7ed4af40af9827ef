#include "calibration/check.h"

#include <limits>

#include "drawing/target_places.h"
#include "tests/calibration/recording_check_screen.h"
#include "tests/doubles/virtual_clock.h"

namespace touch::test {
namespace {

constexpr TwipsSize size{12000, 9000};  // its diagonal is 15000
constexpr float percent = 150;

class Ways final : public WayBack {
 public:
  std::string whyNone() const override { return why; }
  Notice putBack() override {
    ++putBacks;
    if (breaks) throw std::runtime_error("no such operation");
    return fails ? Notice::error("It is not back.") : Notice::success("It is back.");
  }
  Status settle() override {
    ++settled;
    return {};
  }

  std::string why;
  bool fails = false;
  bool breaks = false;
  int putBacks = 0;
  int settled = 0;
};

class Checking : public testing::Test {
 protected:
  /// One letter an act: a touch (g)ood, (f)ar from its cross, (m)issed, at (n)o place; (.) just not
  /// too long a wait; "Keep" (K) and "Put back" (P).
  void act(Check& check, char what) {
    const TwipsPoint cross = check.awaited().value_or(TwipsPoint{6000, 4500});
    const float nowhere = std::numeric_limits<float>::quiet_NaN();
    switch (what) {
      case 'g':
        return check.touch({cross.x + 2 * percent, cross.y});
      case 'f':
        return check.touch({cross.x, cross.y - 9.9F * percent});
      case 'm':
        return check.touch({cross.x + 10.1F * percent, cross.y});
      case 'n':
        return check.touch({nowhere, nowhere});
      case '.':
        return clock.delay(19900ms);
      case 'K':
        return check.keep();
      default:
        return check.putBack();
    }
  }
  /// Returns how it ended; once, however late somebody presses.
  CheckResult run(std::string_view acts) {
    shown.emplace();
    Check check(clock, *shown, size, usualCheckLimit, ways);
    check.begin();
    for (const char what : acts)
      act(check, what);
    clock.delay(21s);
    for (const char what : {'g', 'K', 'P'})
      act(check, what);
    EXPECT_EQ(shown->results.size(), 1u);
    EXPECT_EQ(shown->allowed, std::pair(false, false));
    return shown->results.at(0);
  }

  Lines journal;
  VirtualClock clock{journal};
  Ways ways;
  std::optional<RecordingCheckScreen> shown;
};

TEST_F(Checking, KeepsWhatIsGoodAndPutsBackTheRest) {
  constexpr auto kept = CheckOutcome::kept;
  constexpr auto back = CheckOutcome::putBack;
  const std::tuple<const char*, CheckOutcome, const char*> cases[] = {
      {"ggggg", kept, "is good"},
      {".g.g.g.g.g", kept, "is good"},
      {"gmggmgg", kept, "is good"},
      {"gggggK", kept, "is good"},
      {"gggggP", back, "^It is back"},
      {"ggfggK", kept, "although"},
      {"ggfggP", back, "^It is back"},
      {"ggfgg", back, "20 seconds. It is back"},
      {"ggfgg.m.", back, "20 seconds. It is back"},
      {"ggfggmmm", back, "Three touches landed nowhere near. It is back"},
      {"mmm", back, "Three touches landed nowhere near"},
      {"gngmgn", back, "Three touches landed nowhere near"},
      {"", back, "20 seconds"},
      {"gggg", back, "20 seconds"},
      {"KggKP", back, "^It is back"},
      {"P", back, "^It is back"},
  };
  for (const auto& [acts, outcome, words] : cases) {
    SCOPED_TRACE(acts);
    ways.putBacks = ways.settled = 0;
    const CheckResult result = run(acts);
    EXPECT_EQ(result.outcome, outcome);
    EXPECT_THAT(result.notice.text, ContainsRegex(words));
    EXPECT_EQ(ways.putBacks, outcome == back ? 1 : 0);
    EXPECT_EQ(ways.settled, outcome == kept ? 1 : 0);
  }
}

TEST_F(Checking, SaysWhereThereIsNoWayBack) {
  ways.why = "Nothing is kept.";
  EXPECT_EQ(run("ggggg").outcome, CheckOutcome::kept);
  for (const char* const acts : {"mmm", "", "P"}) {
    const CheckResult result = run(acts);
    EXPECT_EQ(result.outcome, CheckOutcome::bad) << acts;
    EXPECT_THAT(result.notice.text, EndsWith("Nothing is kept.")) << acts;
  }
  EXPECT_EQ(ways.putBacks, 0);
  ways.why.clear();
  ways.fails = true;
  const CheckResult failed = run("mmm");
  EXPECT_EQ(failed.outcome, CheckOutcome::bad);
  EXPECT_EQ(failed.notice.kind, NoticeKind::error);
  ways.breaks = true;
  EXPECT_THROW(run("mmm"), std::runtime_error);
  EXPECT_EQ(shown->results.size(), 1u) << "the screen goes all the same";
}

TEST_F(Checking, MeasuresInHundredthsOfTheDiagonal) {
  run("gffgg");
  const double expected[] = {2, 9.9, 9.9, 2, 2};
  for (std::size_t i = 0; i < shown->residuals.size(); ++i) {
    EXPECT_NEAR(shown->residuals[i].off.value, expected[i], 0.001);
    EXPECT_EQ(shown->residuals[i].good, expected[i] == 2);
    EXPECT_EQ(shown->residuals[i].cross, checkCrosses(size)[i]);
  }
}

TEST(CheckCrosses, StandWhereNoTargetWas) {
  for (const TwipsPoint cross : checkCrosses(size)) {
    for (const int points : {2, 3, 5, 9}) {
      for (const TwipsPoint target : calibrationTargets(points, size))
        EXPECT_GE(std::hypot(cross.x - target.x, cross.y - target.y), 10 * percent) << points;
    }
  }
}

}  // namespace
}  // namespace touch::test
