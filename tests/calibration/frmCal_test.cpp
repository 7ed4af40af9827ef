#include "calibration/frmCal.h"

#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

/// The calibration window over the simulated driver, whose clock moves with the tests' clock. The
/// mouse is the finger.
class CalibrationWindow : public DrawingDesk {
 protected:
  CalibrationWindow() {
    simulation.request("clock manual");
    clock.onAdvance = [this](std::chrono::milliseconds step) {
      simulation.request("advance " + std::to_string(step.count()));
    };
    session.controllerName = controller;
  }

  void open(int points, QSize size = QSize(800, 480)) {
    session.calibrationPoints = points;
    left = 0;
    outcome.reset();
    window = new frmCal(
        {session, *simulator, clock}, prompt, simulation, *QGuiApplication::primaryScreen(), size,
        [this] { ++left; }, [this](CalibrationOutcome how) { outcome = how; });
    shown = window;
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    QApplication::processEvents();
  }

  void touchAt(std::chrono::milliseconds time, QPoint place) {
    clock.after(time, [=, this] { QTest::mousePress(window, Qt::LeftButton, {}, place); });
    clock.after(time + 150ms,
                [=, this] { QTest::mouseRelease(window, Qt::LeftButton, {}, place); });
  }

  double meanError() const { return simulation.panelError(controller)->mean; }

  QPointer<frmCal> window;
  int left = 0;
  std::optional<CalibrationOutcome> outcome;
};

TEST_F(CalibrationWindow, TheMouseCalibratesTheSimulatedPanel) {
  open(3);
  ASSERT_GT(meanError(), 0.02);
  auto time = 2400ms;
  for (const QPoint place : {QPoint(775, 15), QPoint(25, 15), QPoint(25, 465)}) {
    touchAt(time, place);
    time += 3s;
  }
  live(30s);
  EXPECT_EQ(outcome, CalibrationOutcome::stored);
  EXPECT_LT(meanError(), 0.003);
}

TEST_F(CalibrationWindow, EachWayOutLeavesNothingStored) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Cancel", [this] { click("Command2"); }},
      {"EXIT", [this] { click("Label1"); }},
      {"Esc", [this] { QTest::keyClick(window, Qt::Key_Escape); }},
      {"window closed", [this] { window->close(); }},
  };
  const double before = meanError();
  for (const auto& [what, takeWayOut] : ways) {
    SCOPED_TRACE(what);
    open(5);
    touchAt(2450ms, {400, 240});
    clock.after(3500ms, takeWayOut);
    live(10s);
    EXPECT_EQ(outcome, CalibrationOutcome::cancelled);
    EXPECT_EQ(left, 1);
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(meanError(), before);
  }
}

TEST_F(CalibrationWindow, StartsByItselfWithoutMovingAnythingUnderTheFinger) {
  open(5);
  const auto* const cancel = find<QPushButton>("Command2");
  const QRect start = find<QPushButton>("Command1")->geometry();
  const QRect cancelBefore = cancel->geometry();
  const auto beLate = [&] {
    EXPECT_EQ(window->childAt(start.center()), nullptr);
    QTest::mouseClick(window, Qt::LeftButton, {}, start.center());
    for (const auto key : {Qt::Key_Return, Qt::Key_Space})
      QTest::keyClick(window->focusWidget(), key);
    EXPECT_FALSE(outcome) << "a hand that aimed at \"Start\" cancels nothing";
  };
  clock.after(700ms, [&] {
    EXPECT_TRUE(cancel->isVisible());
    EXPECT_EQ(cancel->geometry(), cancelBefore);
    beLate();
  });
  // Untouched the bar grows by 50 twips five times a second.
  clock.after(22s, [this] {
    const int bar = find<QLabel>("Label3")->width();
    EXPECT_TRUE(bar > 200 && bar < 400) << bar;
    QTest::keyClick(window, Qt::Key_Escape);
  });
  live(30s);
  open(5);
  clock.after(800ms, beLate);
  clock.after(1s, [this] { QTest::keyClick(window, Qt::Key_Escape); });
  click("Command1");
  live(1s);
}

TEST_F(CalibrationWindow, ItsTargetsAreFreeOnEveryScreen) {
  // The ring of a target is 250 twips, with a line of two pixels.
  constexpr double ring = 250 / twipsPerPixel + 2;
  for (const QSize size : {QSize(400, 240), QSize(800, 480), QSize(1024, 768), QSize(1920, 1080)}) {
    open(9, size);
    const TwipsSize twips{static_cast<float>(size.width()) * twipsPerPixel,
                          static_cast<float>(size.height()) * twipsPerPixel};
    for (const auto* const button : window->findChildren<QPushButton*>()) {
      EXPECT_TRUE(window->rect().contains(button->geometry())) << size.width();
      for (const int points : {2, 3, 5, 9}) {
        for (const TwipsPoint target : calibrationTargets(points, twips)) {
          const QPointF centre(target.x / twipsPerPixel, target.y / twipsPerPixel);
          const QRectF around(centre - QPointF(ring, ring), QSizeF(2 * ring, 2 * ring));
          EXPECT_FALSE(around.intersects(button->geometry()))
              << button->objectName().toStdString() << " covers a target of " << points;
        }
      }
    }
    window->askToLeave();
    live(5s);
  }
}

}  // namespace
}  // namespace touch::test
