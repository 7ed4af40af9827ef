#include "linetest/canvas/frmDraw.h"
#include "serial/rawdrawing/frmRsDraw.h"
#include "tests/ui/window_desk.h"
#include "ui/screens/monitor_number.h"

namespace touch::test {
namespace {

using FullScreen = MainWindowDesk;

/// Also run under Wayland, where no program places its windows.
TEST_F(FullScreen, WindowsFillTheScreenThatTheyAreOpenedFor) {
  const auto screens = QGuiApplication::screens();
  if (qEnvironmentVariableIsSet("SCREENS")) {
    ASSERT_EQ(screens.size(), qEnvironmentVariableIntValue("SCREENS"));
  }
  const auto expectFilled = [](QWidget& top, const QScreen& screen) {
    SCOPED_TRACE((top.objectName() + " on " + screen.name()).toStdString());
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&top));
    EXPECT_TRUE(QTest::qWaitFor([&] { return top.size() == screen.size(); }))
        << top.width() << " x " << top.height();
    EXPECT_EQ(top.windowHandle()->screen(), &screen);
  };
  const auto expectFollows = [](QWidget& top, QScreen& screen) {
    if (QGuiApplication::platformName().startsWith("wayland")) return;
    const QRect half(screen.geometry().topLeft(), screen.size() / 2);
    emit screen.geometryChanged(half);
    EXPECT_EQ(top.size(), half.size()) << top.objectName().toStdString();
  };
  for (QScreen* const screen : screens) {
    frmDraw drawing({clock, prompt, session.messages, switches, files, folder.path()}, {},
                    session.controllerName, *screen, {}, [] {});
    drawing.open();
    expectFilled(drawing, *screen);
    expectFollows(drawing, *screen);
    Gate gate(clock);
    frmRsDraw raw(
        {clock, prompt, session.messages, switches, ReportDecoder(ReportFamily::tablet), {}, {}},
        ReceivingPort{port, gate, {}}, *screen, [] {});
    raw.open();
    expectFilled(raw, *screen);
    expectFollows(raw, *screen);
  }
}

TEST_F(FullScreen, NumbersAreOnTheirMonitors) {
  showMonitorNumbers();
  const auto screens = QGuiApplication::screens();
  const bool placesNothing = QGuiApplication::platformName().startsWith("wayland");
  constexpr int goneAfterMs = 2500;  // they go by themselves after three seconds
  qsizetype numbers = 0;
  for (QWidget* const top : QApplication::topLevelWidgets()) {
    const auto* const label = qobject_cast<QLabel*>(top);
    if (label == nullptr || label->objectName() != "monitorNumber") continue;
    EXPECT_TRUE(QTest::qWaitForWindowExposed(top));
    const QScreen* const screen = screens.value(label->text().toInt() - 1);
    EXPECT_EQ(top->windowHandle()->screen(), screen);
    const auto fills = [&] { return top->size() == screen->size(); };
    EXPECT_TRUE(placesNothing ? QTest::qWaitFor(fills, goneAfterMs) : !fills());
    ++numbers;
    delete top;
  }
  EXPECT_EQ(numbers, screens.size());
}

}  // namespace
}  // namespace touch::test
