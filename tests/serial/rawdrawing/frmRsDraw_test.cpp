#include "serial/rawdrawing/frmRsDraw.h"

#include "core/driver/connection.h"
#include "tests/serial/debugger/serial_desk.h"
#include "tests/ui/keyboards.h"

namespace touch::test {
namespace {

class RawDrawingWindow : public SerialDesk {
 protected:
  void openDrawing() {
    if (!window) open();
    shown = window.get();
    click("Command6");
    shown = drawing = opened("frmRsDraw");
    if (drawing == nullptr) throw std::runtime_error("there is no drawing");
    EXPECT_TRUE(QTest::qWaitForWindowActive(drawing));
    QApplication::processEvents();
  }
  /// The notice is up for its seven ticks.
  void settle() {
    QLabel* const notice = find<QLabel>("lblNotice");
    live(2300ms);
    EXPECT_TRUE(notice->isVisible());
    live(300ms);
    EXPECT_FALSE(notice->isVisible());
  }
  void report(const Bytes& bytes) {
    terminal->send(bytes);
    live(150ms);
  }
  void key(Qt::Key code) { QTest::keyClick(drawing, code); }
  /// How thick the line is that goes through there.
  int thickness(QPoint place) {
    constexpr int enough = 4;
    const QRect across(place - QPoint(0, enough / 2), QSize(1, enough));
    const QImage image = find<QWidget>("rawCanvas")->grab(across).toImage();
    int pixels = 0;
    for (int y = 0; y < enough; ++y)
      pixels += image.pixelColor(0, y) != QColor(Qt::black) ? 1 : 0;
    return pixels;
  }
  /// Something is drawn there, or on the next pixel.
  bool isInk(QPoint place) {
    const QRect around(place - QPoint(1, 1), place);
    const QImage image = find<QWidget>("rawCanvas")->grab(around).toImage();
    return image.scaled(1, 1, {}, Qt::SmoothTransformation).pixelColor(0, 0) != QColor(Qt::black);
  }
  QPlainTextEdit& monitor() { return *find<QPlainTextEdit>("Text1"); }
  Lines highlights() {
    Lines texts;
    for (const auto& selection : monitor().extraSelections())
      texts.push_back(selection.cursor.selectedText().toStdString());
    return texts;
  }

  QWidget* canvas() { return find<QWidget>("rawCanvas"); }
  QPoint strokeEnd() { return {canvas()->width() / 4, canvas()->height() / 4}; }
  QPoint strokeMiddle() { return {strokeEnd().x() / 2, strokeEnd().y()}; }

  QPointer<QWidget> drawing;
};

// From the left edge to a quarter of the width, at a quarter of the height.
const Bytes stroke = {0xD8, 0, 0, 0x7F, 0x1F, 0xD8, 0x7F, 0x1F, 0x7F, 0x1F};

TEST_F(RawDrawingWindow, DrawsReportsAndMarksTheirBytesAndThoseOfNone) {
  open();
  terminal->send(Bytes{0x43, 0x44});
  openDrawing();
  EXPECT_FALSE(window->isVisible());
  settle();
  report(stroke);
  report({0x41, 0x42});
  live(400ms);
  EXPECT_TRUE(isInk(strokeEnd()));
  EXPECT_TRUE(isInk(strokeMiddle())) << "joined by a line";
  EXPECT_TRUE(find<QLabel>("lblStray")->text().endsWith("Unrecognised bytes: 2"));
  EXPECT_EQ(highlights(), Lines{"41 42"}) << "what came before is not of the drawing";

  const Lines ofTheDotToo = {"41 42", "D8 7F 1F 7F 1F"};
  QWidget* const marker = find<QWidget>("dotMarker");
  QTest::mouseClick(drawing, Qt::LeftButton, {}, strokeEnd() + QPoint(3, 3));
  EXPECT_EQ(highlights(), ofTheDotToo);
  EXPECT_LE((marker->geometry().center() - strokeEnd()).manhattanLength(), 4);
  QTest::mouseClick(drawing, Qt::LeftButton, {}, {600, 60});
  EXPECT_FALSE(marker->isVisible());
  monitor().setTextCursor(monitor().document()->find("7F 1F 7F"));
  EXPECT_TRUE(marker->isVisible());
  EXPECT_EQ(highlights(), ofTheDotToo);

  report(Bytes(3000, 0x41));
  EXPECT_THAT(text("lblStray"), HasSubstr("The monitor is full"));
  check("checkRolling", true);
  report(Bytes(3000, 0x44));
  report(stroke);
  EXPECT_THAT(text("lblStray"), Not(HasSubstr("full")));
  EXPECT_TRUE(monitor().toPlainText().endsWith(" 44 \n  --- D8 00 00 7F 1F   --- D8 7F 1F 7F 1F "));
  QTest::mouseClick(drawing, Qt::LeftButton, {}, strokeEnd() + QPoint(3, 3));
  EXPECT_THAT(highlights(), Contains("D8 7F 1F 7F 1F"));
  report(Bytes(50, 0x45));
  EXPECT_THAT(highlights(), Contains("D8 7F 1F 7F 1F")) << "they have moved towards the front";
  report(Bytes(3000, 0x46));
  EXPECT_FALSE(marker->isVisible()) << "they are not held any more";
  check("checkRolling", false);
  click("cmdWipe");
  report(stroke);
  EXPECT_THAT(text("lblStray"), Not(HasSubstr("full")));
  EXPECT_EQ(monitor().toPlainText(), "\n  --- D8 00 00 7F 1F   --- D8 7F 1F 7F 1F ");
}

TEST_F(RawDrawingWindow, GivesTheDrawingAllTheRoomThatMonitorAndBarsLeave) {
  openDrawing();
  settle();
  report(stroke);
  QWidget* const panel = find<QWidget>("monitorPanel");
  const auto expectWhole = [&](const char* what, bool bars) {
    SCOPED_TRACE(what);
    live(1ms);
    EXPECT_EQ(panel->isVisible(), bars);
    EXPECT_EQ(canvas()->height(), bars ? panel->y() : drawing->height());
    EXPECT_EQ(canvas()->width(), drawing->width());
    EXPECT_TRUE(isInk(strokeMiddle())) << "it is drawn anew";
  };
  const int beside = canvas()->height();
  expectWhole("at first", true);
  check("checkMonitor", false);
  EXPECT_GT(canvas()->height(), beside);
  expectWhole("without the monitor", true);
  click("cmdHideBars");
  expectWhole("hidden", false);
  QTest::mouseClick(drawing, Qt::RightButton, {}, {600, 60});
  expectWhole("by the right button", true);
  key(Qt::Key_F2);
  expectWhole("by its key", false);
  repeatKey(drawing, Qt::Key_F2);
  expectWhole("which is held", false);
}

class SimulatedRawDrawing : public DrawingDesk {};

TEST_F(SimulatedRawDrawing, LiftsTheFingerWhenItIsLeft) {
  const PseudoTerminal terminal;
  AsioSerialPort port{onlyCom1(terminal)};
  Gate gate(clock);
  QPointer<frmRsDraw> drawing =
      new frmRsDraw({clock, prompt, session.messages, switches, ReportDecoder(ReportFamily::tablet),
                     simulation, QSize(800, 480)},
                    {port, gate, {}}, *QGuiApplication::primaryScreen(), [] {});
  drawing->open();
  Connection touched({session, *simulator, clock}, controller);
  QTest::mousePress(drawing, Qt::LeftButton, {}, {100, 50});
  EXPECT_EQ(simulator->IsPenUp(touched.handle()), 0);
  QTest::keyClick(drawing, Qt::Key_Escape);
  live(1ms);
  EXPECT_TRUE(drawing.isNull());
  EXPECT_NE(simulator->IsPenUp(touched.handle()), 0);
}

TEST_F(RawDrawingWindow, HearsItsKeysWhateverHasTheFocus) {
  const QPoint onTheGrid(400, 100);
  openDrawing();
  settle();
  for (const KeyboardCase& c : keyboards) {
    SCOPED_TRACE(c.what);
    switches.grid = false;
    c.sendTo(*drawing);
    EXPECT_EQ(switches.grid, c.means == 'G');
    report(stroke);
    report({0x98, 0, 0, 0x7F, 0x1F});
    EXPECT_EQ(thickness(strokeMiddle()), c.means == '2' ? 2 : 1);
    key(Qt::Key_Escape);
    key(Qt::Key_1);
  }
  switches.grid = false;
  key(Qt::Key_F1);
  EXPECT_TRUE(find<QListWidget>("helpPanel")->isVisible());
  report(stroke);
  key(Qt::Key_Escape);
  EXPECT_FALSE(isInk(strokeMiddle())) << "Esc clears, as on the canvas";
  EXPECT_TRUE(find<QListWidget>("helpPanel")->isVisible());
  key(Qt::Key_F1);
  QTest::keyClick(&monitor(), Qt::Key_G);
  EXPECT_TRUE(isInk(onTheGrid));
  EXPECT_TRUE(switches.grid) << "the canvas opens with it, too";
  key(Qt::Key_P);
  report(stroke);
  EXPECT_TRUE(isInk(strokeEnd()));
  EXPECT_FALSE(isInk(strokeMiddle())) << "points are not joined";
  for (const bool yes : {false, true}) {
    prompt.answerYes = yes;
    QTest::keyClick(find<QCheckBox>("checkFit"), Qt::Key_G);
    EXPECT_EQ(isInk(strokeEnd()), !yes);
    EXPECT_EQ(isInk(onTheGrid), !yes) << "the grid goes with the drawing";
    key(Qt::Key_G);
  }
  EXPECT_EQ(count("confirm Clear All Drawing ?"), 2) << "asked when switched off";
  report(stroke);
  key(Qt::Key_Escape);
  EXPECT_FALSE(isInk(strokeEnd()));
  for (QWidget* const focused : {drawing.data(), static_cast<QWidget*>(&monitor())})
    repeatKey(focused, Qt::Key_Escape);
  EXPECT_TRUE(drawing->isVisible()) << "a held key clears, and does not leave";
  key(Qt::Key_Escape);
  live(1ms);
  EXPECT_TRUE(drawing.isNull());
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(port.isOpen()) << "the debugger still has it";
  openDrawing();
  EXPECT_EQ(isInk(onTheGrid), switches.grid) << "the grid switch outlives the screen";
}

TEST_F(RawDrawingWindow, DrawsAReplayFromItsBeginningAndThenThePortIsListenedToAgain) {
  open();
  click("Command3");
  folder.write("kept.txt", "touch recording 1\n0.010000 < D8 7F 1F 7F 1F\n");
  answerFileDialog("kept.txt");
  click("cmdReplay");
  live(500ms);
  openDrawing();
  check("checkPause", true);
  live(300ms);
  EXPECT_EQ(monitor().toPlainText(), "");
  check("checkMonitorOnly", true);
  check("checkPause", false);
  live(400ms);
  EXPECT_THAT(monitor().toPlainText().toStdString(), HasSubstr("D8 7F 1F 7F 1F"));
  EXPECT_FALSE(isInk(strokeEnd()));
  key(Qt::Key_Escape);
  key(Qt::Key_Escape);
  live(600ms);
  shown = window.get();
  EXPECT_TRUE(find<QPushButton>("cmdReplay")->text().startsWith("Re")) << "it has come to its end";
  terminal->send(Bytes{0xD8, 0x10, 0x20, 0x30, 0x01});
  live(700ms);
  EXPECT_THAT(find<QPlainTextEdit>("Text1")->toPlainText().toStdString(),
              HasSubstr("touch X  4112"));
}

}  // namespace
}  // namespace touch::test
