#include "measure/lines/line_procedure.h"

#include "drawing/stroke.h"
#include "measure/judging/verdict.h"
#include "measure/lines/guide_picture.h"
#include "tests/linetest/canvas/recording_surface.h"

namespace touch::test {
namespace {

using namespace measure;

class Testing : public testing::Test {
 protected:
  Testing() { measurement.size = {{200}, {100}, SizeSource::user}; }

  StrokeVerdict draw(const std::vector<TwipsPoint>& points) {
    procedure.penDown({points.front()});
    for (std::size_t i = 1; i < points.size(); ++i)
      procedure.penMove({points[i]});
    return procedure.penUp();
  }
  /// Along the current line; 100 twips off are a millimetre.
  StrokeVerdict drawCurrent(double off) {
    const GuideFrame frame(*procedure.current(), {{20000}, {10000}});
    std::vector<TwipsPoint> points;
    for (int i = 0; i <= 100; ++i) {
      const PointMm at = frame.at(frame.length() * i / 100) + off * frame.normal();
      points.push_back({static_cast<float>(at.x()), static_cast<float>(at.y())});
    }
    return draw(points);
  }
  std::string current() const {
    return procedure.current() == nullptr ? "" : std::string(procedure.current()->name);
  }
  Outcome outcomeOf(const char* line) const {
    return judgeLine(measurement, measureLine(measurement, *findGuide(line))).outcome();
  }

  Measurement measurement;
  LineProcedure procedure{measurement, {20000, 10000}};
};

TEST_F(Testing, GoesThroughEighteenLinesOnceMoreForThosePassedOver) {
  std::string order;
  while (procedure.current() != nullptr) {
    order += current() + ' ';
    if (order != "V-1 V-2 V-3 ") drawCurrent(10);
    procedure.next();
  }
  EXPECT_EQ(order, "V-1 V-2 V-3 V-4 V-5 V-6 V-7 V-8 V-9 H-1 H-2 H-3 H-4 H-5 H-6 H-7 H-8 H-9 V-3 ");
  EXPECT_EQ(procedure.countKept(), 18u);
  EXPECT_EQ(draw({{1, 1}, {2, 2}, {3, 3}, {4, 4}}), StrokeVerdict::tooFewSamples) << "all is done";

  procedure.back();
  const Guide& last = *findGuide("H-9");
  const auto offset = [&] { return procedure.keptFigures(last).offset; };
  EXPECT_EQ(current(), "H-9");
  drawCurrent(40);
  EXPECT_NEAR(procedure.drawnFigures().offset, 0.4, 1e-3);
  procedure.back();
  EXPECT_TRUE(procedure.drawn().empty());
  procedure.goTo(last);
  drawCurrent(40);
  EXPECT_NEAR(offset(), 0.1, 1e-3) << "it stays until another is kept";
  procedure.next();
  EXPECT_NEAR(offset(), 0.4, 1e-3);
  EXPECT_EQ(procedure.keptFigures(last).byHand, 2u) << "the strokes before stay on the sheet";
}

TEST_F(Testing, AsksWhoDidAStrokeFarOff) {
  constexpr double farOff = 1500;
  EXPECT_EQ(drawCurrent(farOff), StrokeVerdict::farOff);
  procedure.next();
  EXPECT_EQ(current(), "V-1") << "somebody must answer";
  procedure.blame(Blame::hand);
  EXPECT_TRUE(procedure.drawn().empty());
  EXPECT_EQ(drawCurrent(0), StrokeVerdict::usable);
  procedure.next();
  EXPECT_EQ(outcomeOf("V-1"), Outcome::pass);
  EXPECT_EQ(procedure.keptFigures(*findGuide("V-1")).byHand, 1u);

  drawCurrent(farOff);
  procedure.blame(Blame::panel);
  procedure.next();
  EXPECT_EQ(current(), "V-3");
  EXPECT_EQ(outcomeOf("V-2"), Outcome::fail);
}

TEST_F(Testing, ShowsTheLineToDrawAndWhatIsDrawn) {
  RecordingSurface surface;
  const auto shown = [&] {
    drawGuides(surface, procedure);
    return surface.take();
  };
  drawCurrent(0);
  EXPECT_THAT(shown(),
              IsSupersetOf({"clear", "line 625,0 625,10000 #15 2", "point 625,5000 #14 3"}));
  procedure.next();
  EXPECT_THAT(shown(), IsSupersetOf({"point 625,5000 #2 1", "line 2968.75,0 2968.75,10000 #15 2"}));
  procedure.goTo(*findGuide("H-1"));
  EXPECT_THAT(shown(), AllOf(Contains("line 0,312.5 20000,312.5 #15 2"),
                             Not(Contains("point 625,5000 #2 1"))))
      << "the other direction is out of the way";
}

TEST_F(Testing, RefusesStrokesThatMeasureNothing) {
  // 5.8 % of the width are 1160 twips.
  const std::tuple<const char*, std::vector<TwipsPoint>, StrokeVerdict, std::optional<std::size_t>>
      cases[] = {
          {"a touch", {{625, 0}, {625, 1}, {625, 2}}, StrokeVerdict::tooFewSamples, {}},
          {"near enough", {{625, 0}, {625, 1}, {625, 2}, {1784, 3}}, StrokeVerdict::usable, {}},
          {"too far", {{625, 0}, {625, 1}, {625, 2}, {1786, 3}}, StrokeVerdict::farOff, 22},
          {"full", std::vector<TwipsPoint>(3001, {625, 5}), StrokeVerdict::usable, {}},
          {"too long", std::vector<TwipsPoint>(3002, {625, 5}), StrokeVerdict::tooManyPoints, 24},
      };
  for (const auto& [what, points, verdict, message] : cases) {
    SCOPED_TRACE(what);
    EXPECT_EQ(draw(points), verdict);
    EXPECT_EQ(messageOf(verdict), message);
    EXPECT_EQ(!procedure.drawn().empty(),
              verdict == StrokeVerdict::usable || verdict == StrokeVerdict::farOff);
    procedure.repeat();
  }
}

TEST_F(Testing, TakesALineInPieces) {
  draw({{625, 0}, {625, 1000}, {625, 2000}, {625, 3000}});
  draw({{625, 7000}, {625, 8000}});
  EXPECT_NEAR(procedure.drawnFigures().largestGap, 40, 1e-4) << "a dead strip shows";
}

}  // namespace
}  // namespace touch::test
