#include "measure/sorting.h"

#include <gmock/gmock.h>

namespace touch::measure {

namespace {

using testing::ElementsAre;

Trace stroke(Place from, Place to) {
  Trace trace;
  for (int step = 0; step <= 20; ++step)
    trace.samples.push_back({{},
                             1000 * std::lerp(from.x, to.x, step / 20.0),
                             1000 * std::lerp(from.y, to.y, step / 20.0)});
  return trace;
}

TEST(Sorting, StrokesGoToWhatTheyFollow) {
  struct Case {
    measure::Test test;
    LineSet set;
    Trace trace;
    const char* task;
  };
  const Case cases[] = {
      {measure::Test::lines, LineSet::ten, stroke({0.27, 0}, {0.26, 1}), "V-3"},
      {measure::Test::lines, LineSet::eighteen, stroke({0, 0.15}, {1, 0.14}), "H-2"},
      {measure::Test::lines, LineSet::full, stroke({0.5, 0}, {0.5, 1}), "V-5"},
      {measure::Test::lines, LineSet::full, stroke({0.5, 1}, {0.5, 0}), "V-5 back"},
      {measure::Test::lines, LineSet::full, stroke({1, 0.02}, {0, 1}), "D-2"},
      {measure::Test::lines, LineSet::full, stroke({0.03, 1}, {0.03, 0}), "V-1"},
      {measure::Test::taps, LineSet::ten, stroke({0.88, 0.52}, {0.88, 0.52}), "tap 6"},
      {measure::Test::rest, LineSet::ten, stroke({0.2, 0.8}, {0.2, 0.8}), "rest 4"},
      {measure::Test::coverage, LineSet::ten, stroke({0, 0}, {1, 1}), "rub"},
  };
  for (const Case& sorted : cases) {
    Measurement measurement;
    measurement.size = {{200}, {150}, SizeSource::user};
    measurement.plan.lineSet = sorted.set;
    addStrokes(measurement, sorted.test, {SourceKind::pointer, 1000, 1000, false, ""},
               {sorted.trace});
    EXPECT_EQ(measurement.traces.at(0).task, sorted.task);
  }
}

TEST(Sorting, AStreamIsCutWhereTheFingerIsLifted) {
  const auto report = [](std::uint16_t x, bool touching) {
    return TouchReport{0, {x}, {7}, {16383}, 5, touching};
  };
  const std::vector<Arrival> stream = {{Seconds(1), {report(1, true), report(2, true)}},
                                       {Seconds(1.02), {report(3, true), report(3, false)}},
                                       {Seconds(9), {report(4, true)}}};
  const auto traces = tracesOf(stream);
  ASSERT_EQ(traces.size(), 2U);
  const auto& samples = traces[0].samples;
  ASSERT_EQ(samples.size(), 3U);
  EXPECT_NEAR(samples[0].time.count(), 0.9, 1e-9);
  EXPECT_NEAR(samples[1].time.count(), 1, 1e-9);
  EXPECT_NEAR(samples[2].time.count(), 1.01, 1e-9);
  EXPECT_THAT(traces[1].samples, ElementsAre(Sample{Seconds(9), 4, 7}));
}

}  // namespace

}  // namespace touch::measure
