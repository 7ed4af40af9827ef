#include "linetest/frmDraw.h"

#include "tests/support/comma_locale.h"
#include "tests/windows/window_desk.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;

constexpr QRgb black = 0xFF000000;
constexpr QRgb red = 0xFFFF0000;
constexpr QRgb lightGrey = 0xFFC0C0C0;
constexpr QRgb yellow = 0xFFFFFF00;

class DrawWindow : public DrawingDesk {
 protected:
  ~DrawWindow() override { delete window; }

  void open(bool simulated = false) {
    delete window;
    window = new frmDraw({clock, prompt, session.messages, switches, files, folder.path()},
                         simulated ? simulation : std::nullopt, controller,
                         *QGuiApplication::primaryScreen(), QSize(800, 480), [this] { ++left; });
    shown = window;
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    canvas = find<QWidget>("drawingCanvas");
    live(3s);
  }
  void press(Qt::Key key) { QTest::keyClick(window, key); }
  bool shows(const char* name) { return find<QWidget>(name)->isVisible(); }
  static void tap(QListWidget* list, int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(row)).center());
  }
  QRgb colourAt(QPoint place) const { return canvas->grab().toImage().pixel(place); }
  /// Whether anything of this colour lies within three pixels.
  bool hasColourNear(QPoint place, QRgb colour) const {
    const QImage image = canvas->grab(QRect(place - QPoint(3, 3), QSize(7, 7))).toImage();
    for (int pixel = 0; pixel < image.width() * image.height(); ++pixel)
      if (image.pixel(pixel % image.width(), pixel / image.width()) == colour) return true;
    return false;
  }

  QPointer<FullScreenWindow> window;
  QWidget* canvas = nullptr;
  int left = 0;
};

TEST_F(DrawWindow, DrawsTintsAndMeasuresAStrokeAlongALine) {
  open();
  press(Qt::Key_G);
  EXPECT_EQ(colourAt({400, 60}), lightGrey);
  find<QScrollBar>("toleranceBar")->setValue(25);
  EXPECT_EQ(find<QLabel>("lblTolerance")->text(), "2.5 %");
  for (const bool on : {true, false}) {
    find<QCheckBox>("toleranceView")->setChecked(on);
    EXPECT_EQ(hasColourNear({45, 60}, yellow), on) << "25 + 2.5 % of 800";
  }
  draw(canvas, {{200, 300}, {300, 300}});
  EXPECT_EQ(colourAt({250, 300}), red);
  EXPECT_FALSE(shows("resultsList")) << "nothing is measured before F";

  press(Qt::Key_F);
  EXPECT_EQ(colourAt({250, 300}), black) << "F clears";
  EXPECT_EQ(colourAt({25, 100}), black) << "the line to draw is marked";
  draw(canvas, {{25, 2}, {25, 240}, {50, 300}, {50, 470}});
  auto* const list = find<QListWidget>("resultsList");
  EXPECT_TRUE(list->isVisible());
  EXPECT_EQ(list->item(1)->text(), "  Vertical #1");
  EXPECT_TRUE(list->item(list->count() - 1)->text().endsWith("**"));
  QTest::keyClick(canvas, Qt::Key_End);
  EXPECT_GT(list->verticalScrollBar()->value(), 0) << "who has no free finger scrolls by keys";
  QTest::keyClick(canvas, Qt::Key_Home);
  tap(list, 1);
  EXPECT_FALSE(list->isVisible());

  press(Qt::Key_T);
  ASSERT_TRUE(shows("resultsTable"));
  auto* const table = find<QTableWidget>("resultsTable");
  EXPECT_EQ(table->item(0, 3)->text(), "MIN");
  EXPECT_EQ(table->item(1, 0)->text(), "V-1");
  EXPECT_EQ(table->item(1, 2)->foreground().color(), QColor(Qt::red));
  EXPECT_EQ(table->item(1, 3)->foreground().color(), QColor(Qt::blue));
  click("cmdCloseResults");
  EXPECT_FALSE(shows("resultsTable"));
}

TEST_F(DrawWindow, EveryKeyIsInReachOfAFinger) {
  open();
  press(Qt::Key_F1);
  auto* const help = find<QListWidget>("helpPanel");
  ASSERT_TRUE(help->isVisible());
  const auto chooseHelp = [&](const QString& key) {
    tap(help, help->row(help->findItems("[  " + key, Qt::MatchContains).at(0)));
  };
  chooseHelp("G");
  EXPECT_TRUE(switches.grid);
  chooseHelp("T");
  EXPECT_TRUE(shows("resultsTable"));
  press(Qt::Key_Escape);
  tap(help, 0);
  EXPECT_FALSE(help->isVisible());
  click("cmdHelp");
  QTest::keyClick(help, Qt::Key_End);
  QTest::keyClick(help, Qt::Key_L);
  EXPECT_EQ(help->currentRow(), 12) << "letters are for the canvas, not for the list";
  tap(help, 2);
  live(0ms);
  EXPECT_EQ(left, 1);
  EXPECT_TRUE(window.isNull());
}

TEST_F(DrawWindow, TheMenuComesByTheRightButtonAndIsUsedByFingerAndByKeys) {
  open();
  auto* const menu = find<QListWidget>("menuPanel");
  const auto openMenu = [&] {
    QTest::mouseClick(canvas, Qt::RightButton, {}, {795, 470});
    ASSERT_TRUE(menu->isVisible());
    EXPECT_TRUE(window->rect().contains(menu->geometry()));
  };
  openMenu();
  tap(menu, 11);
  EXPECT_FALSE(menu->isVisible());
  openMenu();
  tap(menu, 6);
  EXPECT_TRUE(switches.grid);
  openMenu();
  for (const auto key : {Qt::Key_End, Qt::Key_Up, Qt::Key_Return})
    QTest::keyClick(menu, key);
  live(0ms);
  EXPECT_EQ(left, 1) << "the last but one entry leaves";
}

TEST_F(DrawWindow, SavesViewsAndTakesBackWhateverTheLanguage) {
  const CommaLocale locale;
  switches.toleranceTest = true;
  open();
  draw(canvas, {{100, 200}, {303, 200}});
  draw(canvas, {{100, 300}, {300, 300}});
  click("cmdUndo");
  EXPECT_EQ(colourAt({200, 300}), black);
  answerFileDialog("run1");
  press(Qt::Key_S);
  EXPECT_THAT(folder.read("run1.fdw"), testing::StartsWith("Line #000\r\n 12 \r\n"));
  press(Qt::Key_Escape);
  EXPECT_EQ(colourAt({200, 200}), black);
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
  EXPECT_TRUE(hasColourNear({280, 100}, red)) << "a tenth of the width to the right";
  EXPECT_FALSE(hasColourNear({200, 100}, red));
  EXPECT_FALSE(hasColourNear({280, 156}, red)) << "the strip is dead";
  EXPECT_TRUE(hasColourNear({280, 230}, red));
}

TEST_F(DrawWindow, OnlyTheProgramsEndKeepsTheStrokesAndTheNextRunOffersThem) {
  const char* const question =
      "confirm This drawing of 1 stroke is not saved. Leave without saving?";
  switches.toleranceTest = true;
  for (const bool byTheUser : {true, false}) {
    left = 0;
    open();
    draw(canvas, {{100, 200}, {300, 200}});
    journal.clear();
    byTheUser ? void(window->close()) : window->leave();
    live(0ms);
    EXPECT_EQ(left, 1) << byTheUser;
    EXPECT_TRUE(window.isNull()) << byTheUser;
    EXPECT_EQ(count(question), byTheUser ? 1 : 0);
    EXPECT_EQ(std::filesystem::exists(files.pathOf(0)), !byTheUser);
  }
  open();
  EXPECT_EQ(count("confirm Drawing left by an earlier run: 1 stroke. Restore it?"), 1);
  EXPECT_EQ(colourAt({200, 200}), red);
}

}  // namespace
}  // namespace touch::test
