#include "linetest/frmLinearity.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>

#include "tests/support/comma_locale.h"
#include "tests/support/small_disk.h"
#include "tests/windows/drawing_desk.h"

namespace touch {
namespace {

using namespace std::chrono_literals;

class LinearityWindow : public test::DrawingDesk {
 protected:
  ~LinearityWindow() override { delete window; }

  void open(QSize size = QSize(800, 480), bool simulated = false) {
    delete window;
    screen = size;
    window = new frmLinearity({prompt, session.messages, linearity, folder.path()},
                              simulated ? simulation : std::nullopt, controller,
                              *QGuiApplication::primaryScreen(), size, [this] { ++left; });
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    canvas = find<QWidget>(*window, "linearityCanvas");
  }
  void click(const char* name) {
    QTest::mouseClick(find<QPushButton>(*window, name), Qt::LeftButton);
  }
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
  QString title() { return find<QLabel>(*window, "lineTitle")->text(); }
  QString instruction() { return find<QLabel>(*window, "instruction")->text(); }

  QPointer<frmLinearity> window;
  QWidget* canvas = nullptr;
  QSize screen;
  int left = 0;
};

TEST_F(LinearityWindow, GoesFromTheSizeThroughTheLinesToTheResults) {
  open();
  find<QDoubleSpinBox>(*window, "panelWidth")->setValue(200);
  QTest::mouseClick(find<QWidget>(*window, "panelHeightMore"), Qt::LeftButton);
  find<QDoubleSpinBox>(*window, "panelHeight")->setValue(120);
  click("cmdStart");
  EXPECT_EQ(window->windowTitle(), "Test Program");
  ASSERT_TRUE(linearity.panelSize);
  EXPECT_EQ(linearity.panelSize->widthMm, 200);

  EXPECT_EQ(title(), "V-1   0 of 18 measured");
  drawLine(true, 1, 8);  // 8 of 800 pixels are 2 of 200 mm
  EXPECT_TRUE(instruction().contains("FAIL")) << instruction().toStdString();
  click("cmdRepeat");
  drawLine(true, 1, 1);
  EXPECT_TRUE(instruction().contains("pass")) << instruction().toStdString();
  click("cmdNext");
  EXPECT_TRUE(folder.read("Tvm-v1.txt").starts_with("V-1\r\n"));
  EXPECT_EQ(title(), "V-2   1 of 18 measured");
  for (int line = 1; line < 18; ++line) {
    drawLine(line < 9, line % 9 + 1, line == 9 ? 8 : 1);
    QTest::keyClick(canvas, line % 2 == 0 ? Qt::Key_Right : Qt::Key_Return);
  }
  auto* const table = find<QTableWidget>(*window, "figuresTable");
  ASSERT_EQ(table->rowCount(), 18);
  EXPECT_EQ(table->item(9, 0)->text(), "H-1");
  EXPECT_EQ(table->item(9, 1)->text(), "FAIL");
  EXPECT_EQ(table->item(17, 1)->text(), "pass");
  EXPECT_EQ(find<QLabel>(*window, "verdict")->text(), "FAIL: 1 of 18");

  find<QDoubleSpinBox>(*window, "limitCentre")->setValue(2.5);
  find<QDoubleSpinBox>(*window, "limitEdge")->setValue(2.5);
  EXPECT_EQ(find<QLabel>(*window, "verdict")->text(), "PASS");
  find<QComboBox>(*window, "limitUnit")->setCurrentIndex(1);
  EXPECT_EQ(linearity.limits.unit, LimitUnit::percent);
  EXPECT_EQ(linearity.limits.centre, 2.5);

  const std::pair<const char*, std::pair<const char*, const char*>> exports[] = {
      {"cmdExportPng", {"a.png", "\x89PNG"}},
      {"cmdExportPdf", {"b.pdf", "%PDF-"}},
      {"cmdExportCsv", {"c.csv", "line,samples,"}},
  };
  for (const auto& [button, file] : exports) {
    {
      const test::SmallDisk full(1);
      journal.clear();
      answerFileDialog(file.first);
      click(button);
      ASSERT_EQ(journal.size(), 1u);
      EXPECT_NE(journal[0].find(std::string(file.first) + ": expected a place that can be written"),
                std::string::npos);
      EXPECT_FALSE(std::filesystem::exists(folder.path() / file.first));
    }
    answerFileDialog(file.first);
    click(button);
    EXPECT_TRUE(folder.read(file.first).starts_with(file.second)) << button;
  }

  table->setCurrentCell(9, 0);
  click("cmdDrawAgain");
  EXPECT_EQ(title(), "H-1   18 of 18 measured");
  EXPECT_TRUE(instruction().startsWith("Measured before"));
}

TEST_F(LinearityWindow, GoesBackAndOnByKeysAndButtons) {
  linearity.panelSize = {200, 120};
  open();
  EXPECT_FALSE(find<QPushButton>(*window, "cmdBack")->isEnabled());
  const std::pair<std::function<void()>, const char*> steps[] = {
      {[&] { QTest::keyClick(canvas, Qt::Key_Right); }, "V-2"},
      {[&] { click("cmdNext"); }, "V-3"},
      {[&] { click("cmdBack"); }, "V-2"},
      {[&] { QTest::keyClick(canvas, Qt::Key_Left); }, "V-1"},
  };
  for (const auto& [step, line] : steps) {
    step();
    EXPECT_TRUE(title().startsWith(line)) << title().toStdString();
  }
  click("cmdResults");
  EXPECT_EQ(find<QLabel>(*window, "verdict")->text(), "Nothing is measured yet");
  EXPECT_TRUE(journal.empty());
  QTest::keyClick(window, Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(left, 1);
  EXPECT_TRUE(window.isNull());
}

TEST_F(LinearityWindow, RefusesBadStrokesWithTheirMessage) {
  linearity.panelSize = {200, 120};
  open();
  draw(canvas, {{25, 1}, {200, 400}});
  EXPECT_EQ(journal, test::Lines{"message OutSide X,Y Limit [Test Program]"});
  journal.clear();
  draw(canvas, {{25, 1}, {25, 300}}, 3010);
  EXPECT_EQ(journal, test::Lines{"message Too many points  [Test Program]"});
  journal.clear();
  draw(canvas, {{25, 1}, {25, 3}}, 1);
  EXPECT_TRUE(journal.empty());
  EXPECT_TRUE(instruction().startsWith("That measured nothing"));
  EXPECT_FALSE(find<QPushButton>(*window, "cmdRepeat")->isEnabled());
}

TEST_F(LinearityWindow, GoesOnWithEarlierResultsWhateverTheLanguage) {
  const test::CommaLocale locale;
  linearity.panelSize = {200, 120};
  open();
  drawLine(true, 1);
  click("cmdNext");
  open();
  EXPECT_EQ(journal, test::Lines{"confirm 1 of 18 lines are measured already. Go on with them?"});
  EXPECT_TRUE(title().startsWith("V-2"));
  prompt.answerYes = false;
  open();
  EXPECT_TRUE(title().startsWith("V-1   0 of 18"));
}

TEST_F(LinearityWindow, ADeadStripLeavesAGap) {
  for (const char* trait : {"offset-x", "offset-y", "skew", "noise"})
    simulation->changePanel(trait, "0", controller);
  for (const char* trait : {"gain-x", "gain-y"})
    simulation->changePanel(trait, "1", controller);
  simulation->changePanel("dead-strip", "0.1", controller);
  linearity.panelSize = {200, 120};
  open(QSize(800, 480), true);
  drawLine(true, 1);
  click("cmdNext");
  click("cmdResults");
  auto* const table = find<QTableWidget>(*window, "figuresTable");
  const double gapMm = table->item(0, table->columnCount() - 1)->text().toDouble();
  EXPECT_NEAR(gapMm, 15, 3.1) << "a tenth of 120 mm and up to two moves of 3 mm";
  simulation->request("reset");
}

TEST_F(LinearityWindow, ThePanelOfButtonsLeavesTheLineFree) {
  linearity.panelSize = {200, 120};
  for (const QSize size : {QSize(800, 480), QSize(1024, 768), QSize(1920, 1080)}) {
    open(size);
    for (int line = 0; line < 18; ++line) {
      const bool vertical = line < 9;
      const int place = at(vertical, line % 9 + 1);
      const QRect panel = find<QWidget>(*window, "guidePanel")->geometry();
      EXPECT_TRUE(window->rect().contains(panel)) << size.width();
      const int first = vertical ? panel.left() : panel.top();
      const int last = vertical ? panel.right() : panel.bottom();
      EXPECT_TRUE(place + 4 < first || place - 4 > last) << size.width() << " line " << line;
      QTest::keyClick(canvas, Qt::Key_Right);
    }
    EXPECT_LE(window->minimumSizeHint().width(), size.width());
    EXPECT_LE(window->minimumSizeHint().height(), size.height());
    for (const auto* const button : window->findChildren<QPushButton*>()) {
      EXPECT_FALSE(button->objectName().isEmpty());
      EXPECT_TRUE(button->text().contains('&')) << button->text().toStdString();
    }
  }
}

}  // namespace
}  // namespace touch
