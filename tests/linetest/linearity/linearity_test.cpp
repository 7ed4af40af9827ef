#include "linetest/linearity/linearity.h"

#include "linetest/linearity/linearity_guide.h"
#include "linetest/linearity/linearity_procedure.h"
#include "tests/linetest/canvas/recording_surface.h"

namespace touch::test {
namespace {

// 200 x 100 mm; 10 twips are 0.1 mm either way.
constexpr MeasuredPanel finePanel{{20000, 10000}, 200, 100};
constexpr GuidedLine vertical{Orientation::vertical, 10000};
constexpr GuidedLine horizontal{Orientation::horizontal, 5000};

/// Samples along the whole of `guide`, each `across` twips off it at `t` from 0 to 1.
template <typename Off>
std::vector<TwipsPoint> trace(const GuidedLine& guide, Off across, int samples = 101) {
  std::vector<TwipsPoint> points;
  for (int i = 0; i < samples; ++i) {
    const float t = static_cast<float>(i) / static_cast<float>(samples - 1);
    const float at = guide.position + static_cast<float>(across(t));
    points.push_back(guide.orientation == Orientation::vertical ? TwipsPoint{at, t * 10000}
                                                                : TwipsPoint{t * 20000, at});
  }
  return points;
}

TEST(LineFigures, TellTheFaultsOfAPanelApart) {
  const struct {
    const char* what;
    double (*across)(double);
    std::array<double, 6> figures;  ///< in the order below
  } cases[] = {
      {"moved to the left", [](double) { return -50.0; }, {-0.5, -0.5, -0.5, 0.5, -0.5, 0}},
      {"tilted", [](double t) { return 100 * (t - 0.5); }, {0, 0.5, -0.5, 0.5, 0, 0}},
      // Two thirds of a bow's height are its mean.
      {"bowed", [](double t) { return 300 * 4 * t * (1 - t); }, {1.98, 3, 0, 3, 1.98, 1.98}},
  };
  for (const auto& c : cases) {
    for (const GuidedLine& guide : {vertical, horizontal}) {
      const LineFigures found = measureLine(guide, trace(guide, c.across), finePanel);
      const auto& all = found.all;
      EXPECT_THAT((std::array{all.average, all.maximum, all.minimum, all.absoluteMaximum,
                              found.offset, found.straightness}),
                  testing::Pointwise(testing::DoubleNear(1e-4), c.figures))
          << c.what;
      EXPECT_NEAR(found.coverage, 1, 1e-6);
    }
  }
}

TEST(LineFigures, MeasureTheDistanceSquareToTheBestFit) {
  // A slope of 1 in 4: distances of 1 mm across are 4 / sqrt(17) mm square to the line.
  const auto zigzag = [side = 100.0F](float t) mutable { return 2500 * t + (side = -side); };
  const auto samples = trace(vertical, zigzag, 201);
  const LineFigures figures = measureLine(vertical, samples, finePanel);
  EXPECT_NEAR(figures.tilt, 25, 0.1);
  EXPECT_NEAR(figures.straightnessRms, 4 / std::sqrt(17.0), 0.01);
  EXPECT_NEAR(figures.offset, 12.5, 0.05);
}

TEST(LineFigures, StayNumbersForAnySamples) {
  const std::vector<std::vector<TwipsPoint>> cases = {
      {}, {{1, 1}}, {{5, 5}, {5, 5}}, {{0, 5}, {100, 5}, {200, 5}}, {{-1e6F, 1e6F}, {1e6F, -1e6F}}};
  for (const auto& samples : cases) {
    const LineFigures found = measureLine(vertical, samples, finePanel);
    for (const double value : {found.all.average, found.all.rms, found.offset, found.tilt,
                               found.straightness, found.coverage, found.largestGap})
      EXPECT_TRUE(std::isfinite(value)) << samples.size();
  }
}

TEST(LineFigures, JudgeTheEdgeApart) {
  // 0.8 mm off in the centre, more within 3.5 mm of the ends.
  const auto bentAtTheEnds = [](float by) {
    return trace(
        vertical, [by](float t) { return t < 0.035F || t > 0.965F ? by : 80.0F; }, 1001);
  };
  const std::tuple<float, LinearityLimits, std::pair<bool, bool>> cases[] = {
      {200, {}, {true, true}},
      {201, {}, {true, false}},
      {0, {0.8, 2}, {true, true}},
      {0, {0.79, 2}, {false, true}},
      {190, {0.4, 0.95, LimitUnit::percent}, {true, true}},
      {190, {0.39, 0.94, LimitUnit::percent}, {false, false}},
  };
  for (const auto& [bend, limits, passed] : cases) {
    const LineFigures figures = measureLine(vertical, bentAtTheEnds(bend), finePanel);
    const LineVerdict verdict = judge(figures, limits, finePanel, Orientation::vertical);
    EXPECT_EQ(std::pair(verdict.centre, verdict.edge), passed) << bend;
  }
  EXPECT_EQ(limitMm(1, LimitUnit::percent, finePanel, Orientation::horizontal), 1);
}

class Testing : public testing::Test {
 protected:
  StrokeVerdict draw(const std::vector<TwipsPoint>& points) {
    procedure.penDown(points.front());
    for (std::size_t i = 1; i < points.size(); ++i)
      procedure.penMove(points[i]);
    return procedure.penUp();
  }
  StrokeVerdict drawCurrent(float off) {
    return draw(
        trace(guideOf(*procedure.current(), finePanel.screen), [off](float) { return off; }));
  }
  LinearityProcedure procedure{finePanel};
};

TEST_F(Testing, GoesThroughEighteenLinesOnceMoreForThosePassedOver) {
  std::string order;
  while (const auto line = procedure.current()) {
    order += labelOf(*line) + ' ';
    procedure.accept();
    EXPECT_EQ(procedure.current(), line) << "nothing is drawn, nothing to accept";
    if (order != "V-1 V-2 V-3 ") drawCurrent(10);
    procedure.next();
  }
  EXPECT_EQ(order, "V-1 V-2 V-3 V-4 V-5 V-6 V-7 V-8 V-9 H-1 H-2 H-3 H-4 H-5 H-6 H-7 H-8 H-9 V-3 ");
  EXPECT_EQ(procedure.results().size(), 18u);
  EXPECT_EQ(draw({{1, 1}, {2, 2}, {3, 3}, {4, 4}}), StrokeVerdict::tooFewSamples) << "all is done";

  procedure.back();
  const TestLine last{Orientation::horizontal, 9};
  const auto result = [&] { return procedure.result(last)->figures.all.average; };
  EXPECT_EQ(procedure.current(), last);
  drawCurrent(40);
  procedure.back();
  EXPECT_EQ(procedure.drawn(), std::nullopt);
  procedure.goTo(last);
  drawCurrent(40);
  EXPECT_NEAR(result(), 0.1, 1e-4) << "it stays until another is accepted";
  procedure.accept();
  EXPECT_NEAR(result(), 0.4, 1e-4);
}

TEST_F(Testing, ShowsTheLineToDrawAndWhatIsDrawn) {
  RecordingSurface surface;
  const auto shown = [&] {
    drawLinearityGuide(surface, procedure);
    return surface.take();
  };
  drawCurrent(0);
  EXPECT_THAT(shown(),
              IsSupersetOf({"clear", "line 625,0 625,10000 #15 2", "point 625,5000 #14 3"}));
  procedure.next();
  EXPECT_THAT(shown(), IsSupersetOf({"point 625,5000 #2 1", "line 2968.75,0 2968.75,10000 #15 2"}));
  procedure.goTo({Orientation::horizontal, 1});
  EXPECT_THAT(shown(), AllOf(Contains("line 0,312.5 20000,312.5 #15 2"),
                             Not(Contains("point 625,5000 #2 1"))))
      << "the other direction is out of the way";
}

TEST_F(Testing, RefusesStrokesThatMeasureNothing) {
  // The nine vertical lines are 2343.75 twips apart; half of that belongs to the neighbour.
  const std::tuple<const char*, std::vector<TwipsPoint>, StrokeVerdict, std::optional<std::size_t>>
      cases[] = {
          {"a touch", {{625, 0}, {625, 1}, {625, 2}}, StrokeVerdict::tooFewSamples, {}},
          {"near enough", {{625, 0}, {625, 1}, {625, 2}, {1796, 3}}, StrokeVerdict::usable, {}},
          {"too far", {{625, 0}, {625, 1}, {625, 2}, {1798, 3}}, StrokeVerdict::outsideLimit, 22},
          {"full", std::vector<TwipsPoint>(3001, {625, 5}), StrokeVerdict::usable, {}},
          {"too long", std::vector<TwipsPoint>(3002, {625, 5}), StrokeVerdict::tooManyPoints, 24},
      };
  for (const auto& [what, points, verdict, message] : cases) {
    SCOPED_TRACE(what);
    EXPECT_EQ(draw(points), verdict);
    EXPECT_EQ(messageOf(verdict), message);
    EXPECT_EQ(procedure.drawn().has_value(), verdict == StrokeVerdict::usable);
    procedure.repeat();
  }
}

TEST_F(Testing, TakesALineInPieces) {
  draw({{625, 0}, {625, 1000}, {625, 2000}, {625, 3000}});
  draw({{625, 7000}, {625, 8000}});
  ASSERT_TRUE(procedure.drawn());
  EXPECT_NEAR(procedure.drawn()->figures.largestGap, 40, 1e-4) << "a dead strip shows";
  EXPECT_NEAR(procedure.drawn()->figures.coverage, 0.8, 1e-4);
}

}  // namespace
}  // namespace touch::test
