#include "linetest/frmDraw.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableWidget>

#include "tests/support/comma_locale.h"
#include "tests/windows/drawing_desk.h"

namespace touch {
namespace {

using namespace std::chrono_literals;

constexpr QRgb black = 0xFF000000;
constexpr QRgb red = 0xFFFF0000;
constexpr QRgb blue = 0xFF0000FF;
constexpr QRgb lightGrey = 0xFFC0C0C0;
constexpr QRgb yellowInk = 0xFFFFFF00;

class DrawWindow : public test::DrawingDesk {
 protected:
  ~DrawWindow() override { delete window; }

  void open(QSize size = QSize(800, 480), bool simulated = false) {
    delete window;
    window = new frmDraw({clock, prompt, session.messages, switches, files, folder.path()},
                         simulated ? simulation : std::nullopt, controller,
                         *QGuiApplication::primaryScreen(), size, [this] { ++left; });
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    canvas = find<QWidget>(*window, "drawingCanvas");
    live(3s);
  }
  void press(Qt::Key key) { QTest::keyClick(window, key); }
  bool shows(const char* name) { return find<QWidget>(*window, name)->isVisible(); }
  static void tap(QListWidget* list, int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(row)).center());
  }

  QPointer<frmDraw> window;
  QWidget* canvas = nullptr;
  int left = 0;
};

TEST_F(DrawWindow, DrawsTintsAndMeasuresAStrokeAlongALine) {
  open();
  press(Qt::Key_G);
  EXPECT_EQ(colourAt(*canvas, {400, 60}), lightGrey);
  draw(canvas, {{200, 300}, {300, 300}});
  EXPECT_EQ(colourAt(*canvas, {250, 300}), red);
  EXPECT_FALSE(shows("resultsList")) << "nothing is measured before F";

  press(Qt::Key_F);
  EXPECT_EQ(colourAt(*canvas, {250, 300}), black) << "F clears";
  EXPECT_EQ(colourAt(*canvas, {25, 100}), black) << "the line to draw is marked";
  draw(canvas, {{25, 2}, {25, 240}, {45, 300}, {45, 470}});
  auto* const list = find<QListWidget>(*window, "resultsList");
  EXPECT_TRUE(list->isVisible());
  EXPECT_EQ(list->item(1)->text(), "  Vertical #1");
  EXPECT_TRUE(list->item(list->count() - 1)->text().endsWith("**"));
  EXPECT_TRUE(std::filesystem::exists(files.pathOf(0)));
  QTest::keyClick(canvas, Qt::Key_End);
  EXPECT_GT(list->verticalScrollBar()->value(), 0) << "who has no free finger scrolls by keys";
  QTest::keyClick(canvas, Qt::Key_Home);
  tap(list, 1);
  EXPECT_FALSE(list->isVisible());

  for (int index = 1; index < 10; ++index) {
    const int at = index % 5;
    index < 5 ? draw(canvas, {{25 + at * 187, 2}, {25 + at * 187, 470}})
              : draw(canvas, {{2, 15 + at * 112}, {790, 15 + at * 112}});
    EXPECT_TRUE(window->rect().contains(list->geometry())) << index;
  }
  ASSERT_TRUE(shows("resultsTable"));
  auto* const table = find<QTableWidget>(*window, "resultsTable");
  EXPECT_EQ(table->item(0, 3)->text(), "MIN");
  EXPECT_EQ(table->item(1, 0)->text(), "V-1");
  EXPECT_EQ(table->item(1, 2)->foreground().color(), QColor(Qt::red));
  EXPECT_EQ(table->item(10, 2)->foreground().color(), QColor(Qt::blue));
  QTest::mouseClick(find<QPushButton>(*window, "cmdCloseResults"), Qt::LeftButton);
  EXPECT_FALSE(shows("resultsTable"));
}

TEST_F(DrawWindow, TheInkShowsWhereAStrokeLeavesItsBand) {
  switches.toleranceTest = true;
  open();
  draw(canvas, {{25, 2}, {25, 200}, {60, 240}, {60, 400}});
  EXPECT_TRUE(hasColourNear(*canvas, {25, 100}, blue));
  EXPECT_TRUE(hasColourNear(*canvas, {60, 350}, red));
}

TEST_F(DrawWindow, EveryKeyIsInReachOfAFinger) {
  open();
  press(Qt::Key_F1);
  auto* const help = find<QListWidget>(*window, "helpPanel");
  ASSERT_TRUE(help->isVisible());
  ASSERT_EQ(help->count(), 13);
  EXPECT_EQ(help->item(0)->text(), " [ F1  ] : Help/Eixt");
  const auto chooseHelp = [&](const QString& key) {
    for (int row = 0; row < help->count(); ++row)
      if (help->item(row)->text().contains("[  " + key)) tap(help, row);
  };
  chooseHelp("G");
  EXPECT_TRUE(switches.grid);
  chooseHelp("T");
  EXPECT_TRUE(shows("resultsTable"));
  press(Qt::Key_Escape);
  chooseHelp("F");
  EXPECT_TRUE(switches.toleranceTest);
  tap(help, 0);
  EXPECT_FALSE(help->isVisible());
  QTest::mouseClick(find<QPushButton>(*window, "cmdHelp"), Qt::LeftButton);
  EXPECT_TRUE(help->isVisible());
  QTest::keyClick(help, Qt::Key_End);
  QTest::keyClick(help, Qt::Key_L);
  EXPECT_EQ(help->currentRow(), 12) << "letters are for the canvas, not for the list";
  tap(help, 2);
  live(0ms);
  EXPECT_EQ(left, 1);
  EXPECT_TRUE(window.isNull());
}

TEST_F(DrawWindow, TheMenuComesByTheRightButtonAndByResting) {
  open();
  auto* const menu = find<QListWidget>(*window, "menuPanel");
  EXPECT_EQ(menu->count(), 12);
  QTest::mouseClick(canvas, Qt::RightButton, {}, {795, 470});
  ASSERT_TRUE(menu->isVisible());
  EXPECT_TRUE(window->rect().contains(menu->geometry()));
  tap(menu, 11);
  EXPECT_FALSE(menu->isVisible());

  QTest::mousePress(canvas, Qt::LeftButton, {}, {400, 200});
  live(1600ms);
  ASSERT_TRUE(menu->isVisible());
  QTest::mouseRelease(canvas, Qt::LeftButton, {}, {400, 200});
  EXPECT_EQ(colourAt(*canvas, {400, 200}), black) << "resting leaves no ink";
  tap(menu, 6);
  EXPECT_TRUE(switches.grid);
  QTest::mouseClick(canvas, Qt::RightButton, {}, {400, 100});
  QTest::keyClick(menu, Qt::Key_End);
  QTest::keyClick(menu, Qt::Key_Up);
  QTest::keyClick(menu, Qt::Key_Return);
  live(0ms);
  EXPECT_EQ(left, 1) << "the last but one entry leaves";
}

TEST_F(DrawWindow, SavesViewsAndTakesBackWhateverTheLanguage) {
  const test::CommaLocale locale;
  switches.toleranceTest = true;
  open();
  draw(canvas, {{100, 200}, {303, 200}});
  draw(canvas, {{100, 300}, {300, 300}});
  QTest::mouseClick(find<QPushButton>(*window, "cmdUndo"), Qt::LeftButton);
  EXPECT_EQ(colourAt(*canvas, {200, 300}), black);
  answerFileDialog("run1");
  press(Qt::Key_S);
  EXPECT_TRUE(folder.read("run1.fdw").starts_with("Line #000\r\n 12 \r\n"));
  press(Qt::Key_Escape);
  EXPECT_EQ(colourAt(*canvas, {200, 200}), black);
  answerFileDialog("run1.fdw");
  press(Qt::Key_V);
  EXPECT_EQ(colourAt(*canvas, {200, 200}), red);

  folder.write("bad.fdw", "Line #000\r\n 99 \r\n");
  journal.clear();
  answerFileDialog("bad.fdw");
  press(Qt::Key_V);
  EXPECT_EQ(colourAt(*canvas, {200, 200}), red) << "a bad file changes nothing";
  EXPECT_EQ(journal.size(), 1u);
}

TEST_F(DrawWindow, OffersWhatAnEarlierRunLeft) {
  EXPECT_EQ(files.write(0, {10, 2, {{1500, 3000}, {3000, 3000}, {4500, 3000}, {6000, 3000}}}),
            std::nullopt);
  open();
  EXPECT_TRUE(contains(journal, "confirm Drawing left by an earlier run: 1 stroke. Restore it?"));
  EXPECT_EQ(colourAt(*canvas, {200, 200}), 0xFF00FF00);
}

TEST_F(DrawWindow, ShowsTheToleranceBand) {
  open();
  press(Qt::Key_G);
  find<QScrollBar>(*window, "toleranceBar")->setValue(25);
  EXPECT_EQ(find<QLabel>(*window, "lblTolerance")->text(), "2.5 %");
  auto* const view = find<QCheckBox>(*window, "toleranceView");
  view->setChecked(true);
  EXPECT_TRUE(hasColourNear(*canvas, {45, 60}, yellowInk)) << "25 + 2.5 % of 800";
  view->setChecked(false);
  EXPECT_FALSE(hasColourNear(*canvas, {45, 60}, yellowInk));
}

TEST_F(DrawWindow, TheInkShowsWhatTheSimulatedPanelReports) {
  for (const char* trait : {"offset-y", "skew", "noise"})
    simulation->changePanel(trait, "0", controller);
  for (const char* trait : {"gain-x", "gain-y"})
    simulation->changePanel(trait, "1", controller);
  simulation->changePanel("offset-x", "0.1", controller);
  simulation->changePanel("dead-strip", "0.1", controller);
  open(QSize(800, 480), true);
  draw(canvas, {{200, 60}, {200, 280}}, 40);
  EXPECT_TRUE(hasColourNear(*canvas, {280, 100}, red)) << "a tenth of the width to the right";
  EXPECT_FALSE(hasColourNear(*canvas, {200, 100}, red));
  EXPECT_FALSE(hasColourNear(*canvas, {280, 156}, red)) << "the strip is dead";
  EXPECT_TRUE(hasColourNear(*canvas, {280, 230}, red));
  simulation->request("reset");
}

TEST_F(DrawWindow, FitsEveryScreen) {
  for (const QSize size : {QSize(400, 240), QSize(800, 480), QSize(1024, 768), QSize(1920, 1080)}) {
    open(size, true);
    auto* const banner = find<QLabel>(*window, "banner");
    EXPECT_LE(banner->width(), size.width());
    EXPECT_TRUE(banner->wordWrap() || banner->sizeHint().width() <= banner->width());
    open(size);
    press(Qt::Key_F1);
    press(Qt::Key_T);
    QTest::mouseClick(canvas, Qt::RightButton, {}, {size.width() / 2, size.height() - 5});
    for (const char* name : {"helpPanel", "menuPanel", "resultsFrame", "tools"}) {
      auto* const panel = find<QWidget>(*window, name);
      EXPECT_TRUE(panel->isVisible()) << name;
      EXPECT_TRUE(window->rect().contains(panel->geometry())) << name << " at " << size.width();
    }
    for (const auto* const button : window->findChildren<QPushButton*>()) {
      EXPECT_FALSE(button->objectName().isEmpty());
      EXPECT_TRUE(button->text().contains('&')) << button->text().toStdString();
      if (button->isVisible()) {
        EXPECT_GE(button->height(), 40) << button->text().toStdString();
      }
    }
  }
}

TEST_F(DrawWindow, OnlyTheProgramsEndKeepsTheStrokes) {
  switches.toleranceTest = true;
  const struct {
    const char* what;
    std::function<void(FullScreenWindow&)> end;
    bool asks;
  } cases[] = {
      {"closed by the user", [](auto& shown) { shown.close(); }, true},
      {"the program ends", [](auto& shown) { shown.leave(); }, false},
  };
  for (const auto& c : cases) {
    left = 0;
    open();
    draw(canvas, {{100, 200}, {300, 200}});
    journal.clear();
    c.end(*window);
    live(0ms);
    EXPECT_EQ(left, 1) << c.what;
    EXPECT_TRUE(window.isNull()) << c.what;
    EXPECT_EQ(
        contains(journal, "confirm This drawing of 1 stroke is not saved. Leave without saving?"),
        c.asks);
    EXPECT_EQ(std::filesystem::exists(files.pathOf(0)), !c.asks) << c.what;
  }
}

}  // namespace
}  // namespace touch
