#include "linetest/canvas/frmDraw.h"

#include "console/panels/simulated_faults.h"
#include "tests/ui/keyboards.h"
#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

constexpr QRgb paper = 0xFFB4B4B4;
constexpr QRgb black = 0xFF000000;
constexpr QRgb white = 0xFFFFFFFF;
constexpr QRgb gridGrey = 0xFF808080;
constexpr QRgb red = 0xFFFF0000;

class DrawWindow : public DrawingDesk {
 protected:
  ~DrawWindow() override { delete window; }

  void open(bool simulated = false, QSize size = QSize(800, 480)) {
    delete window;
    window = new frmDraw({clock, prompt, session.messages, switches, files, folder.path()},
                         simulated ? simulation : Simulation(), controller,
                         *QGuiApplication::primaryScreen(), size, [this] { ++left; });
    shown = window;
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    canvas = find<QWidget>("drawingCanvas");
    live(3s);
  }
  void press(Qt::Key key) { QTest::keyClick(window, key); }
  static void tap(QListWidget* list, int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(row)).center());
  }
  QRgb colourAt(QPoint place) const { return canvas->grab().toImage().pixel(place); }

  QPointer<FullScreenWindow> window;
  QWidget* canvas = nullptr;
  int left = 0;
};

TEST_F(DrawWindow, DrawsTheToleranceAndMeasuresAStrokeAlongALine) {
  open();
  press(Qt::Key_G);
  EXPECT_EQ(colourAt({400, 60}), gridGrey);
  EXPECT_EQ(colourAt({420, 60}), paper);
  find<QScrollBar>("toleranceBar")->setValue(25);
  EXPECT_EQ(text("lblTolerance"), "2.5 %");
  check("toleranceView", true);
  EXPECT_EQ(colourAt({45, 60}), qRgb(255, 255, 0)) << "25 + 2.5 % of 800";

  press(Qt::Key_F);
  EXPECT_EQ(colourAt({25, 60}), black) << "the line to follow";
  EXPECT_EQ(colourAt({20, 60}), white) << "is seen from afar";
  EXPECT_EQ(text("nextLine"), "Vertical\u00A0#1, from edge to edge");
  draw(canvas, {{25, 2}, {25, 240}, {50, 300}, {50, 470}});
  EXPECT_EQ(colourAt({24, 350}), gridGrey) << "is done";
  EXPECT_EQ(colourAt({212, 60}), black);
  auto* const list = find<QListWidget>("resultsList");
  EXPECT_TRUE(list->isVisible());
  EXPECT_TRUE(list->item(list->count() - 1)->text().endsWith("**"));
  QTest::keyClick(canvas, Qt::Key_End);
  EXPECT_GT(list->verticalScrollBar()->value(), 0) << "who has no free finger scrolls by keys";
  tap(list, list->count() - 1);
  EXPECT_FALSE(list->isVisible());

  press(Qt::Key_T);
  auto* const table = find<QTableWidget>("resultsTable");
  EXPECT_TRUE(table->isVisible());
  EXPECT_EQ(table->item(1, 0)->text(), "V-1");
  EXPECT_EQ(table->item(1, 2)->foreground().color(), QColor(Qt::red));
  EXPECT_TRUE(table->item(1, 2)->font().bold()) << "thin letters would be faint on black";
  click("cmdCloseResults");
  EXPECT_FALSE(table->isVisible());
}

/// Also run where the screen is small.
TEST_F(DrawWindow, TheResultsListCoversNothingThatIsNeededForTheNextLine) {
  const QSize size = QGuiApplication::primaryScreen()->size().boundedTo({800, 480});
  open(false, size);
  press(Qt::Key_F);
  const GuideLines guides({static_cast<float>(size.width()), static_cast<float>(size.height())});
  auto* const list = find<QListWidget>("resultsList");
  for (int line = 0; line + 1 < GuideLines::count; ++line) {
    const auto [from, to] = guides.whole(line);
    draw(canvas, {QPointF(from.x, from.y).toPoint(), QPointF(to.x - 2, to.y - 2).toPoint()});
    ASSERT_TRUE(list->isVisible());
    EXPECT_GE(list->height(), 4 * list->fontMetrics().height()) << line << ": the figures";
    const auto [start, end] = guides.whole(line + 1);
    const QRect next(QPointF(start.x, start.y).toPoint(), QPointF(end.x, end.y).toPoint());
    EXPECT_FALSE(find<QWidget>("nextLine")->geometry().intersects(next)) << "the caption, " << line;
    for (const char* const name : {"nextLine", "cmdMenu", "cmdEscape", "tools"}) {
      const QRect needed = find<QWidget>(name)->geometry();
      EXPECT_FALSE(list->geometry().intersects(needed)) << name << " after line " << line;
    }
  }
}

TEST_F(DrawWindow, HelpAndMenuAreUsedByFingerAndByKeys) {
  open();
  click("cmdHelp");
  auto* const help = find<QListWidget>("helpPanel");
  tap(help, help->row(help->findItems("[  G", Qt::MatchContains).at(0)));
  EXPECT_TRUE(switches.grid);

  auto* const menu = find<QListWidget>("menuPanel");
  const auto openMenu = [&] { QTest::mouseClick(canvas, Qt::RightButton, {}, {795, 470}); };
  openMenu();
  const QImage before = canvas->grab().toImage();
  tap(menu, 11);
  EXPECT_FALSE(menu->isVisible()) << "the last entry puts the menu away";
  EXPECT_EQ(canvas->grab().toImage(), before) << "and leaves no frame behind";
  click("cmdMenu");
  EXPECT_TRUE(menu->isVisible());
  click("cmdEscape");
  EXPECT_FALSE(menu->isVisible());
  openMenu();
  for (const auto key : {Qt::Key_End, Qt::Key_Up, Qt::Key_Return})
    QTest::keyClick(menu, key);
  live(0ms);
  EXPECT_EQ(left, 1) << "the last but one entry leaves";
}

TEST_F(DrawWindow, TheToolsMakeRoomForTheInk) {
  open();
  const QPoint tool = find<QWidget>("cmdMenu")->geometry().center();
  const auto isSeen = [&] { return window->childAt(tool) != canvas; };
  draw(canvas, {{10, 10}, {60, 10}});
  EXPECT_TRUE(isSeen()) << "a stroke elsewhere leaves them alone";
  draw(canvas, {{tool.x() - 100, tool.y()}, {tool.x() + 100, tool.y()}});
  EXPECT_FALSE(isSeen());
  EXPECT_NE(window->grab().toImage().pixel(tool), paper) << "the ink of a stroke under them";
  live(900ms);
  draw(canvas, {{10, 20}, {60, 20}});
  live(900ms);
  EXPECT_FALSE(isSeen()) << "whoever draws on is not disturbed";
  live(100ms);
  EXPECT_TRUE(isSeen());
  click("cmdMenu");
  EXPECT_TRUE(find<QListWidget>("menuPanel")->isVisible());
}

TEST_F(DrawWindow, SavesViewsAndTakesBack) {
  switches.toleranceTest = true;
  open();
  draw(canvas, {{100, 200}, {303, 200}});
  draw(canvas, {{100, 300}, {300, 300}});
  click("cmdUndo");
  EXPECT_EQ(colourAt({200, 300}), paper);
  answerFileDialog("run1");
  press(Qt::Key_S);
  EXPECT_THAT(folder.read("run1.fdw"), StartsWith("Line #000\r\n 12 \r\n"));
  press(Qt::Key_Escape);
  EXPECT_EQ(colourAt({200, 200}), paper);
  answerFileDialog("run1.fdw");
  press(Qt::Key_V);
  EXPECT_EQ(colourAt({200, 200}), red);
}

TEST_F(DrawWindow, TheInkShowsWhatTheSimulatedPanelReports) {
  makePanelExact();
  changePanel("dead-strip", "0.1");
  changePanel("offset-x", "0.1");
  open(true);
  draw(canvas, {{200, 60}, {200, 280}}, 40);
  EXPECT_EQ(colourAt({279, 100}), red) << "a tenth of the width to the right";
  EXPECT_EQ(colourAt({200, 100}), paper);
  EXPECT_EQ(colourAt({279, 156}), paper) << "the strip is dead";
  EXPECT_EQ(colourAt({279, 230}), red);

  const std::vector<std::string> all = {"RS232 DEVICE 1", controller};
  for (const bool on : {true, false}) {
    switchFault(simulation, simulatedFaults.back(), on, all);
    for (const std::string& each : all)
      EXPECT_EQ(!simulation.report(0.03, 0.34, each), on) << each;
  }
}

TEST_F(DrawWindow, KeysWorkOnEveryKeyboardAndOnlyOnceEach) {
  open();
  for (const KeyboardCase& c : keyboards) {
    SCOPED_TRACE(c.what);
    switches.grid = false;
    c.sendTo(*canvas);
    EXPECT_EQ(switches.grid, c.means == 'G');
    draw(canvas, {{200, 200}, {300, 200}});
    EXPECT_EQ(colourAt({250, 199}) == red, c.means == '2') << "thick";
    press(Qt::Key_Escape);
    press(Qt::Key_1);
  }
  draw(canvas, {{200, 200}, {300, 200}});
  repeatKey(canvas, Qt::Key_Escape);
  EXPECT_EQ(colourAt({250, 200}), red) << "a key that is held clears nothing";
}

TEST_F(DrawWindow, AStrokeEndsWhereABoxSwallowedItsRelease) {
  switches.toleranceTest = true;
  open();
  QTest::mousePress(canvas, Qt::LeftButton, {}, {100, 200});
  for (int x = 110; x <= 150; x += 10)
    QTest::mouseMove(canvas, {x, 200});
  answerFileDialog("");
  press(Qt::Key_S);
  draw(canvas, {{100, 300}, {300, 300}});
  EXPECT_EQ(colourAt({200, 300}), red);
  EXPECT_EQ(colourAt({125, 250}), paper) << "no way from one to the other";
  EXPECT_EQ(files.left().strokes.size(), 2u);
  EXPECT_EQ(find<QPushButton>("cmdEscape")->text().simplified(), "Esc: clear 2 strokes");
}

TEST_F(DrawWindow, OnlyTheProgramsEndHasTheNextRunOfferTheStrokes) {
  switches.toleranceTest = true;
  for (const bool byTheUser : {true, false}) {
    left = 0;
    open();
    draw(canvas, {{100, 200}, {300, 200}});
    byTheUser ? void(window->close()) : window->leave();
    live(0ms);
    EXPECT_EQ(left, 1) << byTheUser;
    EXPECT_TRUE(window.isNull()) << byTheUser;
    EXPECT_TRUE(fs::exists(files.pathOf(0))) << byTheUser;
    switches.recorded.strokes = 0;  // another run
    journal.clear();
    open();
    EXPECT_EQ(count("confirm An unsaved drawing (1 stroke) was found."), byTheUser ? 0 : 1);
    EXPECT_EQ(colourAt({200, 200}), byTheUser ? paper : red);
  }
}

TEST_F(DrawWindow, FollowsTheScreensSize) {
  switches.grid = true;
  open();
  window->resize(1000, 500);
  QApplication::processEvents();
  EXPECT_EQ(colourAt({500, 60}), gridGrey);
  EXPECT_EQ(colourAt({400, 60}), paper);
  EXPECT_EQ(colourAt({990, 250}), gridGrey) << "where there was no canvas before";
}

}  // namespace
}  // namespace touch::test
