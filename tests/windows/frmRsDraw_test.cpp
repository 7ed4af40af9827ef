#include "serial/frmRsDraw.h"

#include <QCheckBox>
#include <QListWidget>
#include <QPlainTextEdit>

#include "tests/windows/serial_desk.h"

namespace touch {
namespace {

using namespace std::chrono_literals;
using test::Bytes;

Bytes tablet(std::uint8_t status, int x, int y) {
  const auto low = [](int value) { return static_cast<std::uint8_t>(value & 0x7F); };
  return {status, low(x), low(x >> 7), low(y), low(y >> 7)};
}

Bytes operator+(Bytes first, const Bytes& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

class RawDrawingWindow : public test::SerialDesk {
 protected:
  QWidget& openDrawing() {
    open();
    press("Command6");
    drawing = openedDrawing();
    if (drawing == nullptr) throw std::runtime_error("there is no drawing");
    return *drawing;
  }
  void report(const Bytes& bytes) {
    terminal->send(bytes);
    live(150ms);
  }
  void key(Qt::Key code) { QTest::keyClick(drawing, code); }
  /// Something is drawn there, or on the next pixel.
  bool isInk(QPoint place) {
    const QImage image = find<QWidget>(*drawing, "rawCanvas")->grab().toImage();
    for (const QPoint step : {QPoint(0, 0), QPoint(0, -1), QPoint(-1, 0)}) {
      if (image.pixelColor((place + step) * image.devicePixelRatio()) != QColor(Qt::black)) {
        return true;
      }
    }
    return false;
  }
  QPlainTextEdit& monitor() { return *find<QPlainTextEdit>(*drawing, "Text1"); }
  std::vector<std::string> highlights() {
    std::vector<std::string> texts;
    for (const auto& selection : monitor().extraSelections())
      texts.push_back(selection.cursor.selectedText().toStdString());
    return texts;
  }

  QPointer<QWidget> drawing;
};

// The whole range covers 800 x 480: this is at a quarter of both.
const Bytes quarter = tablet(0xD8, 16383 / 4, 16383 / 4);
const QPoint quarterPlace(200, 120);

TEST_F(RawDrawingWindow, DrawsReportsAndCountsWhatIsNone) {
  openDrawing();
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(find<QLabel>(*drawing, "lblNotice")->isVisible());
  report(tablet(0xD8, 0, 16383 / 4) + quarter);
  report({0x41, 0x42});
  live(400ms);
  EXPECT_TRUE(isInk(quarterPlace));
  EXPECT_TRUE(isInk({100, 120})) << "joined by a line";
  EXPECT_TRUE(monitor().toPlainText().contains("D8 7F 1F 7F 1F"))
      << monitor().toPlainText().toStdString();
  EXPECT_TRUE(find<QLabel>(*drawing, "lblStray")->text().contains("in no report: 2"));
  EXPECT_EQ(highlights(), std::vector<std::string>{"41 42"});
  EXPECT_FALSE(find<QLabel>(*drawing, "lblNotice")->isVisible()) << "gone after seven ticks";
}

TEST_F(RawDrawingWindow, MarksTheBytesOfADotAndTheDotOfBytes) {
  openDrawing();
  report(tablet(0x98, 100, 100));
  report(quarter);
  QWidget* const marker = find<QWidget>(*drawing, "dotMarker");
  QTest::mouseClick(drawing, Qt::LeftButton, {}, quarterPlace + QPoint(3, 3));
  EXPECT_EQ(highlights(), std::vector<std::string>{"D8 7F 1F 7F 1F"});
  EXPECT_TRUE(marker->isVisible());
  EXPECT_LE((marker->geometry().center() - quarterPlace).manhattanLength(), 4);
  QTest::mouseClick(drawing, Qt::LeftButton, {}, {600, 60});
  EXPECT_TRUE(highlights().empty());
  EXPECT_FALSE(marker->isVisible());

  QTextCursor cursor = monitor().document()->find("7F 1F");
  monitor().setTextCursor(cursor);
  EXPECT_TRUE(marker->isVisible());
  EXPECT_EQ(highlights(), std::vector<std::string>{"D8 7F 1F 7F 1F"});
}

TEST_F(RawDrawingWindow, ObeysItsSwitches) {
  openDrawing();
  auto* const paused = find<QCheckBox>(*drawing, "checkPause");
  paused->setChecked(true);
  report(quarter);
  EXPECT_EQ(monitor().toPlainText(), "");
  find<QCheckBox>(*drawing, "checkMonitorOnly")->setChecked(true);
  paused->setChecked(false);
  live(150ms);
  EXPECT_NE(monitor().toPlainText(), "");
  EXPECT_FALSE(isInk(quarterPlace));
  find<QCheckBox>(*drawing, "checkMonitorOnly")->setChecked(false);
  report(tablet(0xD8, 4000, 4000));
  report(tablet(0x98, 8000, 8000));
  find<QCheckBox>(*drawing, "checkFit")->setChecked(true);
  report(tablet(0x98, 6000, 6000));
  EXPECT_TRUE(isInk({400, 240})) << "the middle of the observed range";
  find<QCheckBox>(*drawing, "checkMonitor")->setChecked(false);
  EXPECT_FALSE(monitor().isVisible());
}

TEST_F(RawDrawingWindow, HearsItsKeysWhateverHasTheFocus) {
  openDrawing();
  auto* const help = find<QListWidget>(*drawing, "helpPanel");
  key(Qt::Key_F1);
  ASSERT_TRUE(help->isVisible());
  EXPECT_EQ(help->count(), 9);
  EXPECT_EQ(help->item(0)->text(), " [ F1  ] : Help/Eixt");
  key(Qt::Key_Escape);
  EXPECT_FALSE(help->isVisible());

  EXPECT_FALSE(isInk({400, 100}));
  QTest::keyClick(&monitor(), Qt::Key_G);
  EXPECT_TRUE(isInk({400, 100})) << "a guide line";
  EXPECT_TRUE(switches.grid) << "the canvas opens with it, too";
  QTest::keyClick(find<QCheckBox>(*drawing, "checkFit"), Qt::Key_G);
  EXPECT_FALSE(isInk({400, 100}));

  key(Qt::Key_2);
  key(Qt::Key_P);
  report(tablet(0xD8, 0, 16383 / 4) + quarter);
  EXPECT_TRUE(isInk(quarterPlace));
  EXPECT_FALSE(isInk({100, 120})) << "points are not joined";

  const std::string question = "confirm " + session.messages.at(clearAllQuestion);
  for (const bool yes : {false, true}) {
    key(Qt::Key_G);
    EXPECT_EQ(count(question), yes ? 1 : 0) << "asked only when switched off";
    prompt.answerYes = yes;
    key(Qt::Key_G);
    EXPECT_FALSE(switches.grid);
    EXPECT_EQ(isInk(quarterPlace), !yes);
    EXPECT_EQ(isInk({400, 100}), !yes) << "the grid goes with the drawing";
  }
  report(quarter);
  key(Qt::Key_Escape);
  EXPECT_FALSE(isInk(quarterPlace));
  key(Qt::Key_G);
  key(Qt::Key_Escape);
  live(1ms);
  EXPECT_TRUE(drawing.isNull());
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(port.isOpen()) << "the debugger still has it";
  press("Command6");
  drawing = openedDrawing();
  EXPECT_TRUE(isInk({400, 100})) << "the grid switch outlives the screen";
}

TEST_F(RawDrawingWindow, GivesThePortBackWhenTheProgramGoes) {
  openDrawing();
  window->leave(DebuggerEnd::exit);
  live(1ms);
  live(1ms);
  EXPECT_EQ(ended, DebuggerEnd::exit);
  EXPECT_EQ(count("ReopenCOMPort"), 1);
}

TEST_F(RawDrawingWindow, KeepsItsControlsOnEveryScreen) {
  for (const QSize size : {QSize(400, 240), QSize(800, 480), QSize(1024, 768)}) {
    const ReceivingPort closed{port, {}, {}};
    auto* const screen =
        new frmRsDraw({clock, prompt, session.messages, switches, ReportDecoder(ReportFamily::tablet), {}, size},
                      closed, *QGuiApplication::primaryScreen(), [] {});
    screen->open();
    QApplication::processEvents();
    for (const auto* const button : screen->findChildren<QAbstractButton*>()) {
      const QRect place(button->mapTo(screen, QPoint(0, 0)), button->size());
      EXPECT_TRUE(screen->rect().contains(place))
          << button->text().toStdString() << " at " << size.width();
      EXPECT_GE(button->height(), 30) << button->text().toStdString();
      EXPECT_TRUE(button->text().contains('&'));
    }
    screen->close();
    live(1ms);
  }
}

}  // namespace
}  // namespace touch
