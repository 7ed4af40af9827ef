#include "measure/windows/frmTouchTest.h"

#include "measure/judging/verdict.h"
#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

using measure::TouchTest;

class TouchTestPage : public DrawingDesk {
 protected:
  TouchTestPage() { makePanelExact(); }

  void begin(TouchTest test, QSize size = QSize(800, 480)) {
    page = std::make_unique<measure::frmTouchTest>(clock, simulation, controller, measurement,
                                                   [] { return std::nullopt; });
    shown = page.get();
    QObject::connect(page.get(), &measure::frmTouchTest::changed, page.get(),
                     [this] { ++changes; });
    QObject::connect(page.get(), &measure::frmTouchTest::done, page.get(), [this] { ++ends; });
    page->resize(size);
    page->show();
    page->begin(test);
    EXPECT_TRUE(QTest::qWaitForWindowActive(page.get()));
    QApplication::processEvents();
    canvas = find<QWidget>("touchTestCanvas");
  }
  void rest(QPoint at, std::chrono::milliseconds time) {
    QTest::mousePress(canvas, Qt::LeftButton, {}, at);
    clock.delay(time);
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, at);
  }
  std::string title() { return text("touchTestTitle"); }

  measure::Measurement measurement = [] {
    measure::Measurement empty;
    empty.size = {{211}, {127}, measure::SizeSource::nominal};
    return empty;
  }();
  std::unique_ptr<measure::frmTouchTest> page;
  QWidget* canvas = nullptr;
  int changes = 0;
  int ends = 0;
};

TEST_F(TouchTestPage, CountsTheTimeOfAFingerThatRestsAndIsReportedOnce) {
  using std::chrono::milliseconds;
  begin(TouchTest::rest);
  rest({400, 240}, milliseconds(2000));
  EXPECT_THAT(text("touchTestInstruction"), StartsWith("Too short"));
  EXPECT_TRUE(measurement.traces.empty());
  rest({400, 240}, milliseconds(3300));
  EXPECT_EQ(title(), "Resting finger: place 2 of 5");
  QTest::keyClick(canvas, Qt::Key_Left);
  EXPECT_EQ(title(), "Resting finger: place 1 of 5");
  QTest::keyClick(canvas, Qt::Key_Return);
  for (int place = 1; place < 5; ++place)
    rest({100 * place, 50}, milliseconds(3300));
  EXPECT_EQ(changes, 5);
  EXPECT_EQ(ends, 1);
  for (const measure::RestFigures& figures : measure::measureRest(measurement)) {
    EXPECT_GE(figures.duration.count() * 1.02, 3) << figures.task;
    EXPECT_GE(figures.samples, 200U) << figures.task;
  }
}

TEST_F(TouchTestPage, TakesTapsAndThoseThatNothingCameOf) {
  begin(TouchTest::taps);
  const QPoint first(80, 48);
  for (int tap = 0; tap < 2; ++tap)
    QTest::mouseClick(canvas, Qt::LeftButton, {}, first);
  EXPECT_THAT(text("touchTestInstruction"), HasSubstr("Tap 3 of 3"));
  click("cmdNothingCame");
  EXPECT_EQ(title(), "Taps: target 2 of 9");
  const measure::TapFigures taps = measure::measureTaps(measurement);
  EXPECT_EQ(taps.missed, 1U);
  EXPECT_LT(taps.worstMiss, 0.5);
  QTest::keyClick(canvas, Qt::Key_Backspace);
  EXPECT_TRUE(measurement.traces.empty());
}

TEST_F(TouchTestPage, AsksWhoLedAStrokeAway) {
  begin(TouchTest::directions);
  draw(canvas, {{1, 1}, {798, 200}}, 60);
  ASSERT_TRUE(find<QWidget>("cmdByHand")->isVisible());
  click("cmdByHand");
  EXPECT_FALSE(find<QWidget>("cmdByHand")->isVisible());
  draw(canvas, {{1, 1}, {798, 478}}, 60);
  EXPECT_THAT(text("touchTestInstruction"), AllOf(HasSubstr("99 % covered"), HasSubstr("nominal")));
  QTest::keyClick(canvas, Qt::Key_Right);
  EXPECT_EQ(title(), "Line D-1, way back (2 of 7)");
  for (const auto& [key, blame] :
       {std::pair(Qt::Key_2, measure::Blame::hand), std::pair(Qt::Key_1, measure::Blame::panel)}) {
    draw(canvas, {{798, 478}, {1, 200}}, 60);
    QTest::keyClick(canvas, key);
    EXPECT_EQ(measurement.traces.back().blame, blame) << key;
  }
}

TEST_F(TouchTestPage, RubsBelowItsPanelToo) {
  begin(TouchTest::coverage);
  for (int y = 2; y < 480; y += 8)
    draw(canvas, {{2, y}, {797, y}}, 100);
  EXPECT_EQ(title(), "Coverage: 100 %");
  click("cmdTestNext");
  EXPECT_EQ(ends, 1);
}

TEST_F(TouchTestPage, KeepsItsPanelOffTheTargets) {
  const QSize here = QGuiApplication::primaryScreen()->size();
  for (const QSize size : {here.boundedTo({800, 480}), here.boundedTo({1024, 768})})
    for (const auto& [test, count] :
         {std::pair(TouchTest::rest, 5), std::pair(TouchTest::taps, 9)}) {
      begin(test, size);
      const auto places = test == TouchTest::rest ? measure::restTargets() : measure::tapTargets(9);
      for (const measure::Target& target : places) {
        const QPoint at(qRound(target.at.x * size.width()), qRound(target.at.y * size.height()));
        const QRect panel = find<QWidget>("touchTestPanel")->geometry();
        EXPECT_FALSE(panel.adjusted(-8, -8, 8, 8).contains(at)) << target.name << size.width();
        EXPECT_TRUE(page->rect().contains(panel)) << target.name << size.width();
        QTest::keyClick(canvas, Qt::Key_Right);
      }
    }
}

}  // namespace
}  // namespace touch::test
