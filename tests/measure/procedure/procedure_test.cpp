#include "measure/procedure/procedure.h"

#include <gtest/gtest.h>

#include <functional>

namespace touch::measure {

namespace {

/// A hand that does one test, with a report every 10 ms.
class Hand {
 public:
  explicit Hand(TouchTest test) : procedure(measurement, test) {
    procedure.use({SourceKind::pointer, 100, 100, true, "pointer"});
  }

  /// In percent of the panel.
  TouchResult touch(double x, double y, double seconds, double pauseAfter = 1) {
    return move({x, y}, {x, y}, seconds, pauseAfter);
  }
  TouchResult move(Place from, Place to, double seconds, double pauseAfter = 1) {
    constexpr double interval = 0.01;
    const double steps = seconds / interval;
    for (double step = 0; step <= steps; ++step) {
      const Sample sample{Seconds(time_), std::lerp(from.x, to.x, step / steps),
                          std::lerp(from.y, to.y, step / steps)};
      if (step == 0)
        procedure.down(sample);
      else
        procedure.move(sample);
      time_ += interval;
    }
    time_ += pauseAfter;
    return procedure.up();
  }
  void tap(int times, double pauseAfter = 1) {
    for (int tap = 0; tap < times; ++tap)
      touch(40, 40, 0.1, pauseAfter);
  }
  /// The traces, and where the test is now.
  std::string story() const {
    std::string story;
    for (const Trace& trace : measurement.traces) {
      story += trace.task + (trace.samples.empty() ? " nothing" : "");
      if (trace.blame != Blame::undecided)
        story += trace.blame == Blame::panel ? " by the panel" : " by the hand";
      story += ", ";
    }
    return story + "now " + (procedure.current() ? procedure.current()->name : "over");
  }

  Measurement measurement = [] {
    Measurement empty;
    empty.size = {{100}, {60}, SizeSource::user};
    return empty;
  }();
  Procedure procedure;

 private:
  double time_ = 10;
};

TEST(Procedure, KeepsWhatCountsAndGoesOn) {
  struct Case {
    const char* what;
    TouchTest test;
    std::function<void(Hand&)> act;
    const char* story;
  };
  const auto drawn = [](double to) {
    return [to](Hand& hand) { hand.move({0, 0}, {100, to}, 1); };
  };
  const auto both = [](auto first, auto second) {
    return [=](Hand& hand) {
      first(hand);
      second(hand);
    };
  };
  const auto decided = [](Blame blame) {
    return [blame](Hand& hand) {
      EXPECT_TRUE(hand.procedure.asksWhoDidThat());
      hand.procedure.decide(blame);
      EXPECT_FALSE(hand.procedure.asksWhoDidThat());
    };
  };
  const auto next = [](Hand& hand) { hand.procedure.next(); };
  const auto back = [](Hand& hand) { hand.procedure.back(); };
  const auto repeat = [](Hand& hand) { hand.procedure.repeat(); };
  const auto rest = [](double seconds) {
    return [seconds](Hand& hand) { hand.touch(50, 50, seconds); };
  };
  const auto taps = [](int count) { return [count](Hand& hand) { hand.tap(count); }; };
  const auto missed = [](Hand& hand) { hand.procedure.nothingCame(); };
  const Case cases[] = {
      {"a rest too short", TouchTest::rest, rest(2.9), "now rest 1"},
      {"a rest", TouchTest::rest, rest(3.5), "rest 1, now rest 2"},
      {"a rest done anew after a way back", TouchTest::rest, both(both(rest(3.5), back), rest(4)),
       "rest 1, now rest 2"},
      {"a rest of which the user thinks better", TouchTest::rest, both(rest(3.5), repeat),
       "now rest 1"},
      {"two taps", TouchTest::taps, taps(2), "tap 1, tap 1, now tap 1"},
      {"three taps", TouchTest::taps, taps(3), "tap 1, tap 1, tap 1, now tap 2"},
      {"a tap that nothing came of", TouchTest::taps, both(missed, taps(2)),
       "tap 1 nothing by the panel, tap 1, tap 1, now tap 2"},
      {"the third tap reported twice", TouchTest::taps,
       both(taps(2),
            [](Hand& hand) {
              EXPECT_EQ(hand.touch(40, 40, 0.1, 0.05), TouchResult::kept);
              EXPECT_EQ(hand.touch(40, 40, 0.1), TouchResult::doubled);
            }),
       "tap 1, tap 1, tap 1, tap 1, now tap 2"},
      {"a target tapped anew", TouchTest::taps, both(both(taps(3), back), taps(1)),
       "tap 1, now tap 1"},
      {"a line and the next", TouchTest::directions, both(drawn(100), next), "D-1, now D-1 back"},
      {"a line in two strokes", TouchTest::directions, both(drawn(100), drawn(100)),
       "D-1, D-1, now D-1"},
      {"far off by the panel", TouchTest::directions, both(drawn(40), decided(Blame::panel)),
       "D-1 by the panel, now D-1"},
      {"far off by the hand, drawn again and again", TouchTest::directions,
       both(both(drawn(40), decided(Blame::hand)), both(both(drawn(100), repeat), drawn(100))),
       "D-1 by the hand, D-1, now D-1"},
      {"through to the end", TouchTest::coverage, next, "now over"},
  };
  for (const Case& tried : cases) {
    Hand hand(tried.test);
    tried.act(hand);
    EXPECT_EQ(hand.story(), tried.story) << tried.what;
  }
}

TEST(Procedure, TakesUpATestWhereItWasLeft) {
  Hand first(TouchTest::taps);
  first.tap(4);
  Procedure again(first.measurement, TouchTest::taps);
  again.use(first.measurement.sources[0]);
  EXPECT_EQ(again.current()->name, "tap 2");
  EXPECT_EQ(first.measurement.sources.size(), 1U);
}

TEST(Procedure, CountsCellsWhileTheyAreRubbed) {
  Hand hand(TouchTest::coverage);
  for (double y = 1; y < 100; y += 4)
    hand.move({0, y}, {100, y}, 1, 0.1);
  EXPECT_TRUE(hand.procedure.isDone(*hand.procedure.current()));
  hand.procedure.repeat();
  EXPECT_EQ(hand.story(), "now rub");
  hand.procedure.down({Seconds(0), 1, 1});
  EXPECT_EQ(hand.procedure.move({Seconds(0.1), 2, 2}), std::nullopt);
  EXPECT_EQ(hand.procedure.move({Seconds(0.2), 99, 99}), 239U);
  EXPECT_NEAR(hand.procedure.cells().part, 2.0 / 240, 1e-9);
}

TEST(Procedure, FillsTheRingWithTheTimeOfARest) {
  Hand hand(TouchTest::rest);
  hand.procedure.down({Seconds(5), 50, 50});
  hand.procedure.move({Seconds(6.5), 50, 50});
  EXPECT_DOUBLE_EQ(hand.procedure.rested(), 0.5);
  hand.procedure.move({Seconds(8.5), 50, 50});
  hand.procedure.move({Seconds(9.5), 90, 50});  // the finger leaves
  hand.procedure.up();
  EXPECT_EQ(hand.measurement.traces[0].samples.size(), 3U);
}

}  // namespace

}  // namespace touch::measure
