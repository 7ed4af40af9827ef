#include "calibration/frmCheck.h"

#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

class Ways final : public WayBack {
 public:
  std::string whyNone() const override { return ""; }
  Notice putBack() override { return Notice::success("It is back."); }
  Status settle() override { return {}; }
};

/// The check over a simulated panel that reports where it is touched. The mouse is the finger.
class CheckWindow : public DrawingDesk {
 protected:
  CheckWindow() { makePanelExact(); }

  void open(QSize size = QSize(800, 480)) {
    result.reset();
    window = new frmCheck(
        {clock, simulation, controller, usualCheckLimit, std::make_unique<Ways>()},
        *QGuiApplication::primaryScreen(), size, [this](const CheckResult& how) { result = how; });
    shown = window;
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    QApplication::processEvents();
  }
  /// The crosses in the window's pixels.
  std::vector<QPoint> crosses() const {
    std::vector<QPoint> places;
    const auto width = static_cast<float>(window->width());
    const auto height = static_cast<float>(window->height());
    for (const TwipsPoint cross : checkCrosses({width, height}))
      places.emplace_back(static_cast<int>(cross.x), static_cast<int>(cross.y));
    return places;
  }
  void touchAll(QPoint beside) {
    for (const QPoint cross : crosses())
      QTest::mouseClick(find<QWidget>("checkCanvas"), Qt::LeftButton, {}, cross + beside);
  }

  QPointer<frmCheck> window;
  std::optional<CheckResult> result;
};

TEST_F(CheckWindow, EndsByFingerKeyOrAlone) {
  constexpr auto kept = CheckOutcome::kept;
  constexpr auto back = CheckOutcome::putBack;
  const QPoint near(2, 2);
  const QPoint far(40, 0);
  const auto press = [this](Qt::Key key) { QTest::keyClick(window, key); };
  const std::tuple<const char*, QPoint, std::function<void()>, CheckOutcome> cases[] = {
      {"alone when good", near, [] {}, kept},
      {"alone when far", far, [] {}, back},
      {"Enter", far, [&] { press(Qt::Key_Return); }, kept},
      {"Keep", far, [this] { click("cmdKeep"); }, kept},
      {"Put back", far, [this] { click("cmdPutBack"); }, back},
      {"Esc", near, [&] { press(Qt::Key_Escape); }, back},
      {"closed", near, [this] { window->close(); }, back},
      {"nowhere near", QPoint(0, 110), [] {}, back},
  };
  for (const auto& [what, beside, act, outcome] : cases) {
    SCOPED_TRACE(what);
    open();
    press(Qt::Key_Return);
    EXPECT_FALSE(find<QPushButton>("cmdKeep")->isEnabled()) << "before any touch";
    EXPECT_TRUE(find<QPushButton>("cmdPutBack")->isEnabled());
    touchAll(beside);
    for (const QLabel* const figure : window->findChildren<QLabel*>("residual"))
      EXPECT_EQ(figure->text().contains("too far"), beside != near) << figure->text().toStdString();
    act();
    live(21s);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->outcome, outcome);
    EXPECT_TRUE(window.isNull());
  }
}

TEST_F(CheckWindow, ItsCrossesAreFreeOnEveryScreen) {
  constexpr int arm = 18;
  for (const QSize size : {QSize(400, 240), QSize(800, 480), QSize(1024, 768), QSize(1920, 1080)}) {
    open(size);
    touchAll({size.width() / 20, 0});
    std::vector<QRect> controls;
    for (const char* const name : {"instruction", "cmdKeep", "cmdPutBack"})
      controls.push_back(find<QWidget>(name)->geometry());
    for (const QRect& control : controls) {
      EXPECT_TRUE(window->rect().contains(control)) << size.width();
      for (const QPoint cross : crosses()) {
        const QRect around(cross - QPoint(arm, arm), QSize(2 * arm, 2 * arm));
        EXPECT_FALSE(around.intersects(control)) << size.width() << ' ' << control.y();
      }
    }
    const auto figures = window->findChildren<QLabel*>("residual");
    EXPECT_EQ(figures.size(), 5);
    for (const QLabel* const figure : figures) {
      for (const QRect& control : controls)
        EXPECT_FALSE(figure->geometry().intersects(control)) << size.width();
    }
    window->askToLeave();
    live(1s);
  }
}

}  // namespace
}  // namespace touch::test
