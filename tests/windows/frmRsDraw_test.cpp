#include "serial/frmRsDraw.h"

#include "tests/windows/serial_desk.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;

class RawDrawingWindow : public SerialDesk {
 protected:
  void openDrawing() {
    if (!window) open();
    shown = window.get();
    click("Command6");
    shown = drawing = opened("frmRsDraw");
    if (drawing == nullptr) throw std::runtime_error("there is no drawing");
  }
  void report(const Bytes& bytes) {
    terminal->send(bytes);
    live(150ms);
  }
  void key(Qt::Key code) { QTest::keyClick(drawing, code); }
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

  QPointer<QWidget> drawing;
};

// From the left edge to a quarter of the width, at a quarter of the height; the whole range covers 800 x 480.
const Bytes stroke = {0xD8, 0, 0, 0x7F, 0x1F, 0xD8, 0x7F, 0x1F, 0x7F, 0x1F};
const QPoint strokeMiddle(100, 120);
const QPoint strokeEnd(200, 120);

TEST_F(RawDrawingWindow, DrawsReportsAndMarksTheirBytesAndThoseOfNone) {
  openDrawing();
  EXPECT_FALSE(window->isVisible());
  report(stroke);
  report({0x41, 0x42});
  live(400ms);
  EXPECT_TRUE(isInk(strokeEnd));
  EXPECT_TRUE(isInk(strokeMiddle)) << "joined by a line";
  EXPECT_TRUE(find<QLabel>("lblStray")->text().endsWith("in no report: 2"));
  EXPECT_EQ(highlights(), Lines{"41 42"});
  EXPECT_FALSE(find<QLabel>("lblNotice")->isVisible()) << "gone after seven ticks";

  const Lines ofTheDotToo = {"41 42", "D8 7F 1F 7F 1F"};
  QWidget* const marker = find<QWidget>("dotMarker");
  QTest::mouseClick(drawing, Qt::LeftButton, {}, strokeEnd + QPoint(3, 3));
  EXPECT_EQ(highlights(), ofTheDotToo);
  EXPECT_LE((marker->geometry().center() - strokeEnd).manhattanLength(), 4);
  QTest::mouseClick(drawing, Qt::LeftButton, {}, {600, 60});
  EXPECT_FALSE(marker->isVisible());
  monitor().setTextCursor(monitor().document()->find("7F 1F 7F"));
  EXPECT_TRUE(marker->isVisible());
  EXPECT_EQ(highlights(), ofTheDotToo);
}

TEST_F(RawDrawingWindow, HearsItsKeysWhateverHasTheFocus) {
  const QPoint onTheGrid(400, 100);
  openDrawing();
  key(Qt::Key_F1);
  EXPECT_TRUE(find<QListWidget>("helpPanel")->isVisible());
  key(Qt::Key_Escape);
  QTest::keyClick(&monitor(), Qt::Key_G);
  EXPECT_TRUE(isInk(onTheGrid));
  EXPECT_TRUE(switches.grid) << "the canvas opens with it, too";
  key(Qt::Key_P);
  report(stroke);
  EXPECT_TRUE(isInk(strokeEnd));
  EXPECT_FALSE(isInk(strokeMiddle)) << "points are not joined";
  for (const bool yes : {false, true}) {
    prompt.answerYes = yes;
    QTest::keyClick(find<QCheckBox>("checkFit"), Qt::Key_G);
    EXPECT_EQ(isInk(strokeEnd), !yes);
    EXPECT_EQ(isInk(onTheGrid), !yes) << "the grid goes with the drawing";
    key(Qt::Key_G);
  }
  EXPECT_EQ(count("confirm Clear All Drawing ?"), 2) << "asked when switched off";
  report(stroke);
  key(Qt::Key_Escape);
  EXPECT_FALSE(isInk(strokeEnd));
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
  live(150ms);
  EXPECT_THAT(monitor().toPlainText().toStdString(), testing::HasSubstr("D8 7F 1F 7F 1F"));
  EXPECT_FALSE(isInk(strokeEnd));
  key(Qt::Key_Escape);
  key(Qt::Key_Escape);
  live(600ms);
  shown = window.get();
  EXPECT_TRUE(find<QPushButton>("cmdReplay")->text().startsWith("Re")) << "it has come to its end";
  terminal->send(Bytes{0xD8, 0x10, 0x20, 0x30, 0x01});
  live(700ms);
  EXPECT_THAT(find<QPlainTextEdit>("Text1")->toPlainText().toStdString(),
              testing::HasSubstr("= touch X  4112"));
}

}  // namespace
}  // namespace touch::test
