#include "calibration/frmCal.h"

#include "tests/windows/window_desk.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;

/// The calibration window over the simulated driver, whose clock moves with the tests' clock. The mouse is the finger.
class CalibrationWindow : public DrawingDesk {
 protected:
  CalibrationWindow() {
    simulation->request("clock manual");
    clock.onAdvance = [this](std::chrono::milliseconds step) {
      simulation->request("advance " + std::to_string(step.count()));
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
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
  }

  void touchAt(std::chrono::milliseconds time, QPoint place) {
    clock.after(time, [=, this] { QTest::mousePress(window, Qt::LeftButton, {}, place); });
    clock.after(time + 150ms,
                [=, this] { QTest::mouseRelease(window, Qt::LeftButton, {}, place); });
  }

  double meanError() const { return simulation->panelError(controller)->mean; }

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

TEST_F(CalibrationWindow, ItsTargetsAreFreeOfControlsOnEveryScreen) {
  for (const QSize size : {QSize(400, 240), QSize(800, 480), QSize(1024, 768), QSize(1920, 1080)}) {
    open(9, size);
    const TwipsSize twips{static_cast<float>(size.width()) * twipsPerPixel,
                          static_cast<float>(size.height()) * twipsPerPixel};
    for (const auto* const button : window->findChildren<QPushButton*>()) {
      EXPECT_TRUE(window->rect().contains(button->geometry())) << size.width();
      const QRectF covered = button->geometry().adjusted(-8, -8, 8, 8);
      for (const int points : {2, 3, 5, 9}) {
        for (const TwipsPoint target : calibrationTargets(points, twips)) {
          EXPECT_FALSE(covered.contains(target.x / twipsPerPixel, target.y / twipsPerPixel))
              << button->objectName().toStdString() << " covers a target of " << points;
        }
      }
    }
    window->askToLeave();
    live(0ms);
  }
}

}  // namespace
}  // namespace touch::test
