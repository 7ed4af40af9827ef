#include "linetest/linearity/frmLinearity.h"

#include "tests/doubles/small_disk.h"
#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

class LinearityWindow : public DrawingDesk {
 protected:
  LinearityWindow() { linearity.panelSize = {200, 120}; }
  ~LinearityWindow() override { delete window; }

  void open(QSize size = QSize(800, 480)) {
    delete window;
    screen = size;
    window =
        new frmLinearity({prompt, session.messages, linearity, folder.path()}, simulation,
                         controller, *QGuiApplication::primaryScreen(), size, [this] { ++left; });
    shown = window;
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    QApplication::processEvents();
    canvas = find<QWidget>("linearityCanvas");
  }
  void enter(const char* box, double value) { find<QDoubleSpinBox>(box)->setValue(value); }
  /// Where line `number` of an orientation lies, in pixels.
  int at(bool vertical, int number) const {
    const int length = vertical ? screen.width() : screen.height();
    return length / 32 + length * 15 / 16 * (number - 1) / 8;
  }
  void drawLine(bool vertical, int number, int off = 0) {
    const int place = at(vertical, number) + off;
    vertical ? draw(canvas, {{place, 1}, {place, screen.height() - 2}}, 40)
             : draw(canvas, {{1, place}, {screen.width() - 2, place}}, 40);
  }

  QPointer<frmLinearity> window;
  QWidget* canvas = nullptr;
  QSize screen;
  int left = 0;
};

TEST_F(LinearityWindow, GoesFromTheSizeThroughTheLinesToTheResults) {
  linearity.panelSize.reset();
  makePanelExact();
  open();
  enter("panelWidth", 200);
  enter("panelHeight", 119);
  click("panelHeightMore");
  click("cmdStart");
  EXPECT_EQ(text("lineTitle"), "V-1   0 of 18 measured");
  draw(canvas, {{25, 1}, {200, 400}});
  EXPECT_EQ(journal, Lines{"message OutSide X,Y Limit [Test Program]"});
  EXPECT_THAT(text("instruction"), StartsWith("Stroke too short"));
  constexpr int twoMillimetres = 8;
  drawLine(true, 1, twoMillimetres);
  EXPECT_THAT(text("instruction"), HasSubstr("FAIL"));
  click("cmdRepeat");
  for (int line = 0; line < 18; ++line) {
    drawLine(line < 9, line % 9 + 1, line == 9 ? twoMillimetres : 1);
    QTest::keyClick(canvas, line % 2 == 0 ? Qt::Key_Right : Qt::Key_Return);
  }
  EXPECT_THAT(folder.read("Tvm-v1.txt"), StartsWith("V-1\r\n"));
  auto* const table = find<QTableWidget>("figuresTable");
  ASSERT_EQ(table->rowCount(), 18);
  EXPECT_EQ(table->item(9, 1)->text(), "FAIL");
  EXPECT_EQ(text("verdict"), "FAIL: 1 of 18");

  // 2 mm are 1.67 % of the height.
  enter("limitCentre", 1.9);
  enter("limitEdge", 1.9);
  find<QComboBox>("limitUnit")->setCurrentIndex(1);
  EXPECT_EQ(text("verdict"), "PASS");

  const std::tuple<const char*, const char*, const char*> exports[] = {
      {"cmdExportPng", "a.png", "\x89PNG"},
      {"cmdExportPdf", "b.pdf", "%PDF-"},
      {"cmdExportCsv", "c.csv", "line,samples,"},
  };
  for (const auto& [button, file, beginning] : exports) {
    {
      const SmallDisk full(1);
      answerFileDialog(file);
      click(button);
    }
    EXPECT_THAT(journal.back(), HasSubstr(file + std::string(": expected a place that can be ")));
    EXPECT_FALSE(fs::exists(folder.path() / file));
    answerFileDialog(file);
    click(button);
    EXPECT_THAT(folder.read(file), StartsWith(beginning));
    EXPECT_EQ(text("statusLine"), "OK: Saved in " + (folder.path() / file).string());
  }

  table->setCurrentCell(9, 0);
  click("cmdDrawAgain");
  EXPECT_EQ(text("lineTitle"), "H-1   18 of 18 measured");
  EXPECT_THAT(text("instruction"), StartsWith("Measured before"));

  open();
  EXPECT_EQ(text("verdict"), "PASS") << "a set that is whole is shown";
  EXPECT_EQ(count("confirm"), 0);
  prompt.answers = false;
  click("cmdMeasureAnew");
  EXPECT_TRUE(fs::exists(folder.path() / "Tvm-h9.txt"));
  prompt.answers = true;
  click("cmdMeasureAnew");
  EXPECT_EQ(count("confirm Measure all lines anew?"), 2);
  EXPECT_EQ(text("lineTitle"), "V-1   0 of 18 measured");
  EXPECT_FALSE(fs::exists(folder.path() / "Tvm-h9.txt"));
  EXPECT_THAT(folder.read("Tvm-h9.txt.old"), StartsWith("H-9"));
}

TEST_F(LinearityWindow, FollowsTheScreensSize) {
  makePanelExact();
  open();
  drawLine(true, 1);
  click("cmdNext");
  window->resize(1000, 500);
  QApplication::processEvents();
  EXPECT_EQ(text("lineTitle"), "V-1   0 of 18 measured") << "the line lies elsewhere";
  screen = QSize(1000, 500);
  drawLine(true, 1);
  EXPECT_THAT(text("instruction"), StartsWith("Drawn"));
}

TEST_F(LinearityWindow, GoesBackAndOnAndLaterOnWithItsResults) {
  open();
  drawLine(true, 1);
  for (const auto key : {Qt::Key_Right, Qt::Key_Enter, Qt::Key_Left, Qt::Key_Backspace})
    repeatKey(canvas, key);
  repeatKey(canvas, Qt::Key_N, Qt::AltModifier);
  EXPECT_FALSE(find<QPushButton>("cmdNext")->isDown());
  repeatKey(canvas, Qt::Key_Escape);
  EXPECT_TRUE(window->isVisible());
  QTest::mousePress(canvas, Qt::LeftButton, {}, {at(true, 1), 240});
  for (const auto key : {Qt::Key_Right, Qt::Key_Left})
    QTest::keyClick(canvas, key);
  QTest::mouseRelease(canvas, Qt::LeftButton, {}, {at(true, 1), 240});
  click("cmdResults");
  click("cmdBackToLines");
  EXPECT_THAT(text("lineTitle"), StartsWith("V-1"));
  EXPECT_THAT(text("instruction"), StartsWith("Drawn"));
  click("cmdNext");
  QTest::keyClick(canvas, Qt::Key_Right);
  EXPECT_THAT(text("lineTitle"), StartsWith("V-3"));
  click("cmdBack");
  QTest::keyClick(canvas, Qt::Key_Left);
  EXPECT_THAT(text("lineTitle"), StartsWith("V-1"));
  QTest::keyClick(window, Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(left, 1);
  EXPECT_TRUE(window.isNull());
  open();
  EXPECT_EQ(count("confirm 1 of 18 lines have been measured."), 1);
  EXPECT_THAT(text("lineTitle"), StartsWith("V-2   1 of 18"));
}

TEST_F(LinearityWindow, TellsOfDamagedResultsAndPutsRefusedOnesAside) {
  const auto measureFirst = [this] {
    drawLine(true, 1);
    click("cmdNext");
  };
  open();
  measureFirst();
  folder.write("Tvm-v2.txt", "torn");
  linearity.panelSize.reset();
  open();
  enter("panelWidth", 200);
  enter("panelHeight", 120);
  prompt.answers = false;
  click("cmdStart");
  live(0ms);
  EXPECT_EQ(left, 1) << "closing the question leaves";

  prompt.answers = true;
  prompt.answerYes = false;
  journal.clear();
  open();
  EXPECT_THAT(journal, ElementsAre(HasSubstr("Tvm-v2.txt, line 1: expected the line's "),
                                   StartsWith("confirm 1 of 18 lines have been measured")));
  EXPECT_THAT(text("lineTitle"), StartsWith("V-1   0 of 18"));
  EXPECT_THAT(folder.read("Tvm-v1.txt.old"), StartsWith("V-1"));
  open();
  EXPECT_EQ(count("confirm"), 1) << "what was refused is not offered again";

  measureFirst();
  prompt.onMessage = [this] { fs::remove(folder.path() / "Tvm-v1.txt"); };
  open();
  EXPECT_THAT(journal.back(), HasSubstr("Tvm-v1.txt: expected a file that can be renamed"));
}

TEST_F(LinearityWindow, ThePanelOfButtonsLeavesTheLineFree) {
  for (const QSize size : {QSize(800, 480), QSize(1920, 1080)}) {
    open(size);
    for (int line = 0; line < 18; ++line) {
      const bool vertical = line < 9;
      const int place = at(vertical, line % 9 + 1);
      const QRect panel = find<QWidget>("guidePanel")->geometry();
      EXPECT_TRUE(window->rect().contains(panel)) << size.width() << " line " << line;
      const QPoint onLine(vertical ? place : panel.center().x(),
                          vertical ? panel.center().y() : place);
      EXPECT_FALSE(panel.adjusted(-4, -4, 4, 4).contains(onLine))
          << size.width() << " line " << line;
      QTest::keyClick(canvas, Qt::Key_Right);
    }
  }
}

}  // namespace
}  // namespace touch::test
