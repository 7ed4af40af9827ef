#include "calibration/frmCal.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>

#include "core/nexapi.h"
#include "tests/windows/window_desk.h"

namespace touch {
namespace {

using namespace std::chrono_literals;

/// The calibration window over the simulated driver, whose clock moves with the tests' clock. The mouse is the finger.
class CalibrationWindow : public test::WindowDesk {
 protected:
  CalibrationWindow() {
    auto bound = NexapiDriver::bind(SIMULATOR_LIBRARY);
    if (!bound) throw std::runtime_error(bound.error().describe());
    simulator_ = std::move(*bound);
    simulation = Simulation::of(*simulator_);
    simulation->request("reset");
    simulation->request("clock manual");
    clock.onAdvance = [this](std::chrono::milliseconds step) {
      simulation->request("advance " + std::to_string(step.count()));
    };
    session.controllerName = "USB DEVICE 2";
  }

  frmCal& open(int points) {
    session.calibrationPoints = points;
    window = new frmCal(
        {session, *simulator_, clock}, prompt, simulation, *QGuiApplication::primaryScreen(),
        QSize(800, 480), [this] { ++left; }, [this](CalibrationOutcome how) { outcome = how; });
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
    return *window;
  }

  /// From `time` on: presses the mouse at a place of the window, and lifts it 150 ms later.
  void touchAt(std::chrono::milliseconds time, QPoint place) {
    clock.after(time, [this, place] { QTest::mousePress(window, Qt::LeftButton, {}, place); });
    clock.after(time + 150ms,
                [this, place] { QTest::mouseRelease(window, Qt::LeftButton, {}, place); });
  }

  double meanError() const { return simulation->panelError("USB DEVICE 2")->mean; }

  std::optional<Simulation> simulation;
  QPointer<frmCal> window;
  int left = 0;
  std::optional<CalibrationOutcome> outcome;

 private:
  std::unique_ptr<NexapiDriver> simulator_;
};

TEST_F(CalibrationWindow, TheMouseCalibratesTheSimulatedPanel) {
  const QPoint upperRight(775, 15);
  const QPoint upperLeft(25, 15);
  const QPoint lowerLeft(25, 465);
  open(3);
  ASSERT_GT(meanError(), 0.02);
  auto time = 600ms + 300ms + 800ms + 700ms;
  for (const QPoint place : {upperRight, upperLeft, lowerLeft}) {
    touchAt(time, place);
    time += 3s;
  }
  live(30s);
  EXPECT_EQ(outcome, CalibrationOutcome::stored);
  EXPECT_EQ(left, 1);
  EXPECT_LT(meanError(), 0.003);
  EXPECT_TRUE(window.isNull()) << "the window is gone";
}

TEST_F(CalibrationWindow, EachWayOutLeavesNothingStored) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Cancel",
       [this] { QTest::mouseClick(find<QPushButton>(*window, "Command2"), Qt::LeftButton); }},
      {"EXIT", [this] { QTest::mouseClick(find<QPushButton>(*window, "Label1"), Qt::LeftButton); }},
      {"Esc", [this] { QTest::keyClick(window, Qt::Key_Escape); }},
      {"window closed", [this] { window->close(); }},
  };
  const double before = meanError();
  for (const auto& [what, takeWayOut] : ways) {
    for (const auto moment : {100ms, 2000ms, 3500ms}) {
      left = 0;
      outcome.reset();
      open(5);
      touchAt(2450ms, {400, 240});
      clock.after(moment, takeWayOut);
      live(10s);
      EXPECT_EQ(outcome, CalibrationOutcome::cancelled) << what << " at " << moment.count();
      EXPECT_EQ(left, 1) << what;
      EXPECT_TRUE(window.isNull()) << what;
      EXPECT_EQ(meanError(), before) << what;
    }
  }
}

TEST_F(CalibrationWindow, ItsTargetsAreFreeOfControlsOnEveryScreen) {
  for (const QSize size : {QSize(400, 240), QSize(800, 480), QSize(1024, 768), QSize(1920, 1080)}) {
    session.calibrationPoints = 9;
    frmCal screen(
        {session, driver(), clock}, prompt, std::nullopt, *QGuiApplication::primaryScreen(), size,
        [] {}, [](CalibrationOutcome) {});
    screen.open();
    const TwipsSize twips{static_cast<float>(size.width()) * twipsPerPixel,
                          static_cast<float>(size.height()) * twipsPerPixel};
    for (const int points : {2, 3, 5, 9}) {
      for (const TwipsPoint target : calibrationTargets(points, twips)) {
        const QPoint centre(static_cast<int>(target.x / twipsPerPixel),
                            static_cast<int>(target.y / twipsPerPixel));
        for (const auto* const button : screen.findChildren<QPushButton*>()) {
          EXPECT_FALSE(button->geometry().adjusted(-8, -8, 8, 8).contains(centre))
              << button->objectName().toStdString() << " covers a target of " << points;
          EXPECT_TRUE(screen.rect().contains(button->geometry()));
          EXPECT_GE(button->height(), 40);
        }
      }
    }
    screen.askToLeave();
    QApplication::processEvents();
  }
}

}  // namespace
}  // namespace touch
