#include "linetest/canvas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <map>

#if !defined(_WIN32)
#include <sys/resource.h>
#endif

#include "linetest/drawing_file.h"
#include "tests/linetest/recording_surface.h"
#include "tests/support/scripted_prompt.h"
#include "tests/support/small_disk.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/virtual_clock.h"

namespace touch {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using namespace std::chrono_literals;

constexpr TwipsSize screen{10240, 5120};  // lines at 320, 2720, 5120, 7520, 9920 and half of that

/// Remembers what is shown.
class View final : public CanvasView {
 public:
  test::RecordingSurface drawing;
  std::map<CanvasPanel, bool> shown;
  std::map<CanvasPanel, TwipsPoint> corners;
  Lines help;
  Lines results;
  ResultsSheet sheet;
  float tolerance = 0;
  fs::path chosen;
  Lines asked;
  int left = 0;

  Surface& surface() override { return drawing; }
  TwipsSize sizeOf(CanvasPanel panel) const override {
    return panel == CanvasPanel::menu ? TwipsSize{1000, 2000} : TwipsSize{3000, 1000};
  }
  void place(CanvasPanel panel, TwipsPoint corner) override { corners[panel] = corner; }
  void show(CanvasPanel panel, bool on) override { shown[panel] = on; }
  void setHelp(std::span<const std::string> lines) override {
    help.assign(lines.begin(), lines.end());
  }
  void setResultsList(std::span<const std::string> lines) override {
    results.assign(lines.begin(), lines.end());
  }
  void setResultsTable(const ResultsSheet& table) override { sheet = table; }
  void setTolerance(float percent) override { tolerance = percent; }
  fs::path askSaveName(const fs::path&, std::string_view filter) override { return ask(filter); }
  fs::path askOpenName(const fs::path&, std::string_view filter) override { return ask(filter); }
  void leave() override { ++left; }

 private:
  fs::path ask(std::string_view filter) {
    asked.emplace_back(filter);
    return chosen;
  }
};

class OnTheCanvas : public testing::Test {
 protected:
  OnTheCanvas() { canvas.activate(); }

  void key(int code) { canvas.keyDown(code); }
  void keys(std::string_view codes) {
    for (const char code : codes)
      key(code);
  }
  void draw(const std::vector<TwipsPoint>& points) {
    canvas.pointerDown(PointerButton::left, points.front());
    for (std::size_t i = 1; i < points.size(); ++i)
      canvas.pointerMove(points[i]);
    canvas.pointerUp(points.back());
  }
  /// Along guide line `index`, `off` twips beside it, from the margin on.
  std::vector<TwipsPoint> alongLine(int index, float off, int samples = 5) const {
    const GuideLines guides(screen);
    std::vector<TwipsPoint> points;
    for (int i = 0; i < samples; ++i) {
      const float across = guides.position(index) + off;
      const float along = 20 + static_cast<float>(i) * 1000;
      points.push_back(index < 5 ? TwipsPoint{across, along} : TwipsPoint{along, across});
    }
    return points;
  }
  bool shown(CanvasPanel panel) { return view.shown[panel]; }
  /// Tested strokes without the fixed sequence.
  void testFreely() {
    switches.toleranceTest = true;
    view.drawing.take();
  }

  /// But the lock, in the folder of the working files.
  bool nothingIsKept() const {
    return std::distance(fs::directory_iterator(files.folder()), {}) == 1;
  }

  Lines journal;
  test::VirtualClock clock{journal};
  test::ScriptedPrompt prompt{journal};
  test::TemporaryFolder folder;
  MessageTable messages;
  DrawingSwitches switches;
  WorkingFiles files{folder.path(), folder.path()};
  View view;
  CanvasParts parts{clock, prompt, messages, switches, files, folder.path()};
  Canvas canvas{parts, view, screen};
};

constexpr int escapeKey = 27;

TEST_F(OnTheCanvas, ShowsItsBannerForSixTicks) {
  EXPECT_EQ(view.corners[CanvasPanel::banner], (TwipsPoint{3620, 2060}));
  clock.delay(6 * Canvas::bannerTick - 1ms);
  EXPECT_TRUE(shown(CanvasPanel::banner));
  clock.delay(2ms);
  EXPECT_FALSE(shown(CanvasPanel::banner));

  canvas.activate();
  draw({{1, 1}});
  EXPECT_FALSE(shown(CanvasPanel::banner)) << "the pen drives it away";
}

TEST_F(OnTheCanvas, DrawsJoinedLinesOrPoints) {
  view.drawing.take();
  draw({{1000, 1000}, {1015, 1000}, {1030, 1015}});
  EXPECT_THAT(view.drawing.take(),
              ElementsAre("point 1000,1000 #12 1", "line 1000,1000 1015,1000 #12 1",
                          "line 1015,1000 1030,1015 #12 1"));
  keys("P2C");
  draw({{1000, 1000}, {1015, 1000}});
  EXPECT_THAT(view.drawing.take(), ElementsAre("point 1000,1000 #13 2", "point 1015,1000 #13 2"));
  keys("L1");
  canvas.pointerMove({1, 1});
  EXPECT_EQ(view.drawing.take(), Lines{}) << "the pen is up";

  test::RecordingSurface anew;
  canvas.repaint(anew);
  EXPECT_EQ(anew.drawn.size(), 5u);
}

TEST(HelpLines, DoWhatTheirKeysDoAndSayWhatTheMenuSays) {
  const MessageTable messages;
  const auto lines = helpLines(messages);
  EXPECT_THAT(
      lines,
      ElementsAre(" [ F1  ] : Help/Eixt", " [ ESC ] : 1 - Clear Screen",
                  "         : 2 - Exit Draw mode", " [  1  ] : Thin", " [  2  ] : Thick",
                  " [  C  ] : Change Color", " [  G  } : Toggle Grid", " [  L  ] : Line mode",
                  " [  P  ] : Point mode", " [  S  ] : Save Drawing", " [  T  ] : Tolerance View",
                  " [  V  ] : View Drawing", " [  F  ] : FixCalibration"));
  for (std::size_t line = 3; line < lines.size(); ++line)
    EXPECT_EQ(actionOfHelpLine(line), actionOfKey(lines[line][4])) << lines[line];
  EXPECT_EQ(actionOfHelpLine(lines.size()), std::nullopt);
  Lines menu;
  for (const auto& entry : canvasMenu) {
    menu.push_back(messages.at(entry.message));
    std::size_t line = 0;
    while (actionOfHelpLine(line) != entry.action)
      ASSERT_LT(++line, lines.size()) << menu.back();
    EXPECT_THAT(lines[line], EndsWith(menu.back()));
  }
  EXPECT_THAT(menu, ElementsAre("Clear Screen", "Change Color", "Thin", "Thick", "Line mode",
                                "Point mode", "Toggle Grid", "Save Drawing", "View Drawing",
                                "Tolerance View", "Exit Draw mode"));
  EXPECT_EQ(actionOfKey('c'), std::nullopt);
}

TEST(PenColours, GoRoundWithoutTheDarkOnes) {
  constexpr Colour black = palette[0];
  const struct {
    int index;
    Colour background;
    int next;
  } cases[] = {{12, black, 13}, {15, yellow, 0},     {15, black, 1},   {0, black, 9},
               {0, yellow, 9},  {0, palette[9], 10}, {13, yellow, 15}, {14, white, 0}};
  for (const auto& c : cases)
    EXPECT_EQ(nextColour(c.index, c.background), c.next) << c.index;
}

TEST_F(OnTheCanvas, KeepsTheMenuOnTheScreen) {
  const std::pair<TwipsPoint, TwipsPoint> cases[] = {
      {{5000, 1000}, {4500, 1000}}, {{400, 3120}, {0, 3120}}, {{10240, 3121}, {9240, 3120}}};
  for (const auto& [pointer, corner] : cases) {
    canvas.pointerDown(PointerButton::right, pointer);
    EXPECT_TRUE(shown(CanvasPanel::menu));
    EXPECT_EQ(view.corners[CanvasPanel::menu], corner) << pointer.x << ',' << pointer.y;
    view.drawing.take();
    draw({{1, 1}, {2, 2}});
    EXPECT_EQ(view.drawing.take(), Lines{}) << "nothing is drawn below it";
    key(escapeKey);
    EXPECT_FALSE(shown(CanvasPanel::menu));
  }
  EXPECT_EQ(view.left, 0);
  canvas.pointerDown(PointerButton::right, {5000, 1000});
  canvas.choose(canvasMenu[3]);
  EXPECT_FALSE(shown(CanvasPanel::menu));
  EXPECT_EQ(canvas.pen().width, 2);
}

TEST_F(OnTheCanvas, OpensTheMenuAtALongPress) {
  testFreely();
  const struct {
    const char* what;
    TwipsPoint at;
    std::vector<TwipsPoint> moves;
    std::chrono::milliseconds held;
    bool opens;
  } cases[] = {
      {"resting", {5000, 1000}, {{5010, 1010}}, 1500ms, true},
      {"not long enough", {5000, 1000}, {}, 1499ms, false},
      {"drawing away", {5000, 1000}, {{5200, 1000}, {5000, 1000}}, 5s, false},
      {"at the start of a guide line", {5120, 20}, {}, 5s, false},
      {"beside the lines, after a tested stroke", {3500, 100}, {}, 5s, false},
      {"inside, after a tested stroke", {3500, 1000}, {}, 5s, true},
      {"beside the lines, after an untested stroke", {3500, 100}, {}, 5s, true},
  };
  for (const auto& c : cases) {
    test::RecordingSurface before;
    canvas.repaint(before);
    canvas.pointerDown(PointerButton::left, c.at);
    for (const TwipsPoint move : c.moves)
      canvas.pointerMove(move);
    clock.delay(c.held);
    EXPECT_EQ(shown(CanvasPanel::menu), c.opens) << c.what;
    canvas.pointerUp(c.at);
    test::RecordingSurface after;
    canvas.repaint(after);
    EXPECT_EQ(after.drawn == before.drawn, c.opens) << c.what << ": its ink is taken back";
    if (c.opens) key(escapeKey);
  }
}

TEST_F(OnTheCanvas, TintsTheInkOfATestedStroke) {
  testFreely();
  // The band of line V1 reaches from 217.6 to 422.4, that of H1 from 108.8 to 211.2.
  draw({{400, 20}, {422, 30}, {423, 40}, {424, 50}, {420, 60}, {320, 70}});
  const auto blue = EndsWith("#9 1");
  const auto red = EndsWith("#12 1");
  EXPECT_THAT(view.drawing.take(), ElementsAre(blue, blue, blue, red, red, blue));
  draw({{20, 112}, {30, 110}, {40, 108}, {50, 120}});
  EXPECT_THAT(view.drawing.take(), ElementsAre(blue, blue, blue, red));
  draw({{1000, 1000}, {9000, 1000}});
  EXPECT_THAT(view.drawing.take(), ElementsAre(red, red)) << "a start inside is never tested";
}

TEST_F(OnTheCanvas, TakesWidthAndRightButtonFromWhereTheLastStrokeBegan) {
  testFreely();
  key('2');
  const struct {
    const char* what;
    TwipsPoint start;
    int width;
    bool allowed;
  } cases[] = {{"inside", {5000, 1000}, 2, true},
               {"on a line, at the edge", {5120, 20}, 2, false},
               {"beside the lines", {3500, 100}, 1, false},
               {"inside again", {5000, 1000}, 1, true},
               {"beside the lines again", {3500, 100}, 1, true}};
  for (const auto& c : cases) {
    draw({c.start, c.start});
    EXPECT_EQ(canvas.pen().width, c.width) << c.what;
    canvas.pointerDown(PointerButton::right, {3500, 100});
    EXPECT_EQ(shown(CanvasPanel::menu), c.allowed) << c.what;
    if (c.allowed) key(escapeKey);
    canvas.pointerUp({3500, 100});
  }
}

TEST_F(OnTheCanvas, MeasuresListsAndKeepsStrokes) {
  testFreely();
  draw(alongLine(2, 51.2F));
  EXPECT_EQ(view.results[1], "  Vertical #3");
  EXPECT_EQ(view.results[2], "  AVG :  0.50");
  // The pen ended at (5171.2, 4020): room on the right, but not below.
  EXPECT_EQ(view.corners[CanvasPanel::resultsList], (TwipsPoint{5671.2F, 2520}));
  EXPECT_TRUE(shown(CanvasPanel::resultsList));
  EXPECT_EQ(canvas.strokeCounter(), 1);

  draw(alongLine(5, 0, 3));
  EXPECT_EQ(view.results[1], "  Horizontal #1");
  EXPECT_EQ(canvas.strokeCounter(), 1) << "three samples are measured but not kept";
  draw({{1000, 1000}, {1000, 1010}, {1000, 1020}, {1000, 1030}});
  EXPECT_EQ(canvas.strokeCounter(), 2) << "an untested stroke is kept";
  EXPECT_EQ(files.read(0)->samples, alongLine(2, 51.2F));
  EXPECT_EQ(files.read(1)->colour, 12);

  key('T');
  EXPECT_FALSE(shown(CanvasPanel::resultsList));
  EXPECT_TRUE(shown(CanvasPanel::resultsTable));
  EXPECT_EQ(view.sheet.cells[3][1].text, "0.50");
  key(escapeKey);
  EXPECT_FALSE(shown(CanvasPanel::resultsTable));
  EXPECT_EQ(canvas.strokeCounter(), 2);
}

TEST_F(OnTheCanvas, RecordsNothingWithoutTheToleranceTest) {
  draw(alongLine(0, 0));
  key('D');
  EXPECT_EQ(canvas.strokeCounter(), 0);
  EXPECT_TRUE(view.results.empty());
  EXPECT_TRUE(nothingIsKept());
  EXPECT_EQ(journal, Lines{});
  for (const bool on : {false, true}) {
    switches.toleranceTest = on;
    journal.clear();
    key('S');
    EXPECT_EQ(journal, Lines{"message There is nothing to save: strokes are recorded once F has "
                             "begun the test of the lines."});
    EXPECT_TRUE(view.asked.empty());
  }
}

TEST_F(OnTheCanvas, BoundsAStroke) {
  testFreely();
  for (const std::size_t samples : {3000U, 3001U}) {
    std::vector<TwipsPoint> points(samples, {320, 20});
    points.back() = {9000, 20};
    draw(points);
    const auto kept = files.read(canvas.strokeCounter() - 1);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->samples.size(), 3000u);
    EXPECT_EQ(kept->samples.back().x == 9000, samples == 3000) << samples;
    EXPECT_EQ(view.results.size(), 7 + 3000u);
  }
  EXPECT_EQ(journal, Lines{});
}

TEST_F(OnTheCanvas, TakesTheLastStrokeBackOnce) {
  testFreely();
  draw(alongLine(1, 0, 4));
  draw(alongLine(2, 0, 4));
  view.drawing.take();
  key('D');
  EXPECT_THAT(
      view.drawing.take(),
      ElementsAre("point 5120,20 #0 1", "line 5120,20 5120,20 #0 1", "line 5120,20 5120,1020 #0 1",
                  "line 5120,1020 5120,2020 #0 1", "line 5120,2020 5120,3020 #0 1"));
  key('D');
  EXPECT_EQ(canvas.strokeCounter(), 1);
  EXPECT_EQ(files.left().strokes.size(), 1u);

  key('2');
  draw(alongLine(0, 0, 4));
  key('1');
  draw({{2000, 2000}});
  view.drawing.take();
  key('D');
  EXPECT_EQ(view.drawing.drawn.front(), "point 320,20 #0 2") << "the recorded one, as it was drawn";
}

TEST_F(OnTheCanvas, ClearsThenLeaves) {
  testFreely();
  draw(alongLine(1, 0));
  canvas.pointerDown(PointerButton::left, {1, 1});
  key(escapeKey);
  canvas.pointerMove({2, 2});
  EXPECT_EQ(view.drawing.take(), Lines{"clear"}) << "the pen is up";
  EXPECT_TRUE(nothingIsKept());
  key('D');
  EXPECT_EQ(canvas.strokeCounter(), 0);
  EXPECT_EQ(view.left, 0);
  key(escapeKey);
  EXPECT_EQ(view.left, 1);
}

const Lines grid = {
    "line 320,0 320,5120 #7 2",     "line 5120,0 5120,5120 #7 2",   "line 9920,0 9920,5120 #7 2",
    "line 0,160 10240,160 #7 2",    "line 0,2560 10240,2560 #7 2",  "line 0,4960 10240,4960 #7 2",
    "line 2720,160 2720,4960 #7 2", "line 7520,160 7520,4960 #7 2", "line 320,1360 9920,1360 #7 2",
    "line 320,3760 9920,3760 #7 2", "circle 320,160 250 #15 2",     "circle 5120,160 250 #15 2",
    "circle 9920,160 250 #15 2",    "circle 320,2560 250 #15 2",    "circle 5120,2560 250 #15 2",
    "circle 9920,2560 250 #15 2",   "circle 320,4960 250 #15 2",    "circle 5120,4960 250 #15 2",
    "circle 9920,4960 250 #15 2"};

TEST_F(OnTheCanvas, TogglesTheGrid) {
  view.drawing.take();
  key('G');
  EXPECT_EQ(view.drawing.take(), grid);
  EXPECT_TRUE(switches.grid);
  key('G');
  EXPECT_EQ(view.drawing.take(), Lines{"clear"});
  EXPECT_EQ(journal, Lines{}) << "nothing is drawn, nothing is asked";

  key('G');
  draw({{1, 1}});
  prompt.answerYes = false;
  view.drawing.take();
  key('G');
  EXPECT_FALSE(switches.grid);
  EXPECT_EQ(view.drawing.take(), Lines{});
  EXPECT_EQ(journal, Lines{"confirm Clear All Drawing ?"});
  prompt.answerYes = true;
  keys("G");
  view.drawing.take();
  keys("G");
  EXPECT_EQ(view.drawing.take(), Lines{"clear"});

  switches.grid = true;
  canvas.activate();
  EXPECT_EQ(view.drawing.drawn.size(), 1 + grid.size()) << "the switch outlives the screen";
}

TEST_F(OnTheCanvas, ShowsTheToleranceOnTheGrid) {
  canvas.setTolerance(25);
  EXPECT_EQ(view.tolerance, 2.5F);
  key('G');
  view.drawing.take();
  canvas.setToleranceView(true);
  const Lines lines = view.drawing.take();
  ASSERT_EQ(lines.size(), 20u);
  EXPECT_EQ(lines[0], "line 64,0 64,5120 #14 1");
  EXPECT_EQ(lines[1], "line 576,0 576,5120 #14 1");
  EXPECT_EQ(lines[6], "line 0,32 10240,32 #14 1");
  EXPECT_EQ(lines[19], "line 320,3888 9920,3888 #14 1");

  draw({{1000, 1000}});
  canvas.setTolerance(10);
  const Lines anew = view.drawing.take();
  EXPECT_EQ(anew.size(), 1 + grid.size() + 1 + 20);
  EXPECT_TRUE(std::equal(grid.begin(), grid.end(), anew.begin() + 1)) << "the grid stays";
  EXPECT_EQ(anew[1 + grid.size()], "point 1000,1000 #12 1") << "the ink stays";
  EXPECT_THAT(anew, testing::Each(testing::Ne(lines[0])));
  canvas.setToleranceView(false);
  EXPECT_EQ(view.drawing.take().size(), 1 + grid.size() + 1);
}

TEST_F(OnTheCanvas, LeadsThroughTheFixedSequence) {
  testFreely();
  draw(alongLine(3, 0));
  switches.toleranceTest = false;
  key('F');
  EXPECT_TRUE(switches.toleranceTest && switches.grid && canvas.inFixedSequence());
  Lines expected = {"clear"};
  expected.insert(expected.end(), grid.begin(), grid.end());
  expected.push_back("line 320,0 320,5120 #0 2");
  EXPECT_EQ(view.drawing.take(), expected);
  EXPECT_TRUE(nothingIsKept());

  for (int index = 0; index < 10; ++index) {
    ASSERT_TRUE(canvas.inFixedSequence());
    // Far off the line: it is measured against it all the same.
    draw(alongLine(index, 1024));
    EXPECT_EQ(view.results[2], "  AVG :  10.00");
    // The next line is marked from edge to edge, unlike in the grid.
    if (index == 0 || index == 4) {
      EXPECT_EQ(view.drawing.drawn.back(),
                index == 0 ? "line 2720,0 2720,5120 #0 2" : "line 0,160 10240,160 #0 2");
    }
    EXPECT_EQ(shown(CanvasPanel::resultsTable), index == 9);
  }
  EXPECT_FALSE(canvas.inFixedSequence());
  EXPECT_EQ(canvas.strokeCounter(), 10);
  for (std::size_t row = 1; row <= 10; ++row)
    EXPECT_EQ(view.sheet.cells[row][1].text, "10.00") << row;
}

TEST_F(OnTheCanvas, SavesAndViewsADrawing) {
  testFreely();
  draw(alongLine(0, 0, 4));
  keys("CC2");
  draw({{1000, 1000}, {1100, 1000}, {1200, 1000}, {1300, 1000}});
  for (const auto& [none, action] : {std::pair{"", 'S'}, {"x", 'S'}, {"abc", 'V'}}) {
    view.chosen = none;
    key(action);
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1) << "the folder tmp";
  view.chosen = folder.path() / "run1";
  key('S');
  EXPECT_EQ(view.asked.front(), "Text (*.fdw) |*.fdw");
  EXPECT_EQ(journal, Lines{});

  prompt.answerYes = false;
  const std::string before = folder.read("run1.fdw");
  key('D');
  key('S');
  EXPECT_EQ(journal, Lines{"confirm " + (folder.path() / "run1.fdw").string() +
                           " is there already. Replace it?"});
  EXPECT_EQ(folder.read("run1.fdw"), before);

  keys("C");
  view.chosen = folder.path() / "run1.fdw";
  view.drawing.take();
  key('V');
  EXPECT_EQ(view.asked.back(), "(*.fdw)|*.fdw");
  const Lines drawn = view.drawing.take();
  ASSERT_EQ(drawn.size(), 8u);
  EXPECT_EQ(drawn[1], "line 320,20 320,1020 #12 1");
  EXPECT_EQ(drawn[4], "point 1000,1000 #12 2") << "the colour before";
  EXPECT_EQ(drawn[5], "line 1000,1000 1100,1000 #14 2");
  EXPECT_EQ(canvas.pen().colour, 14);
}

TEST_F(OnTheCanvas, KeepsWhatItShowsWhenAFileIsNoDrawing) {
  const std::string file = (folder.path() / "bad.fdw").string();
  const std::pair<const char*, std::string> cases[] = {
      {"Line #000\r\n 9 \r\n 2 \r\n 2 \r\n 1 2\r\n",
       file + ", line 6: expected the x of a sample, found the end of the file"},
      {"", file + " is a drawing without strokes."},
  };
  draw({{1, 1}});
  view.drawing.take();
  for (const auto& [text, message] : cases) {
    folder.write("bad.fdw", text);
    canvas.viewsave(file);
    EXPECT_EQ(journal.back(), "message " + message);
  }
  EXPECT_EQ(view.drawing.take(), Lines{});
  EXPECT_EQ(canvas.pen().colour, 12);
}

TEST_F(OnTheCanvas, TellsWhenTheDiskIsFull) {
  testFreely();
  draw(alongLine(0, 0, 4));
  folder.write("old.fdw", "old");
  view.chosen = folder.path() / "old.fdw";
  {
    const test::SmallDisk disk(40);
    draw(alongLine(1, 0, 4));
    key('S');
  }
  ASSERT_EQ(journal.size(), 2u);
  EXPECT_THAT(journal[0], HasSubstr("tmp001.tmp: expected a place that can be written"));
  EXPECT_THAT(journal[1], HasSubstr("old.fdw: expected a place that can be written"));
  EXPECT_EQ(folder.read("old.fdw"), "old");
  EXPECT_EQ(std::distance(fs::recursive_directory_iterator(folder.path()), {}), 4)
      << "the folder, its lock, the first stroke, the old drawing, and no half of a file";
  EXPECT_EQ(canvas.strokeCounter(), 1);
  key('S');
  EXPECT_EQ(readDrawing(folder.path() / "old.fdw")->size(), 1u);
}

TEST_F(OnTheCanvas, LeavesNothingBehindInOrder) {
  testFreely();
  const auto leave = [this] { canvas.perform(CanvasAction::leave); };
  draw(alongLine(0, 0));
  prompt.answerYes = false;
  leave();
  EXPECT_EQ(journal, Lines{"confirm This drawing of 1 stroke is not saved. Leave without saving?"});
  EXPECT_EQ(view.left, 0);
  EXPECT_TRUE(files.read(0)) << "no is no";

  journal.clear();
  view.chosen = folder.path() / "kept.fdw";
  key('S');
  leave();
  EXPECT_EQ(journal, Lines{}) << "it is saved";
  EXPECT_EQ(view.left, 1);
  EXPECT_TRUE(nothingIsKept());
  canvas.offerLeftStrokes();
  EXPECT_EQ(journal, Lines{});
}

TEST_F(OnTheCanvas, OffersTheStrokesThatACrashLeft) {
  canvas.offerLeftStrokes();
  EXPECT_EQ(journal, Lines{});
  files.write(0, {9, 2, alongLine(0, 0)});
  files.write(4, {10, 1, alongLine(1, 0)});
  for (const char* torn : {"tmp/tmp001.tmp", "tmp/tmp002.tmp"})
    folder.write(torn, " 12 ");
  view.drawing.take();
  prompt.answers = false;
  canvas.offerLeftStrokes();
  EXPECT_EQ(files.left().strokes.size(), 2u) << "unanswered, they are offered again";
  EXPECT_EQ(view.left, 1) << "nothing may be drawn in their places";
  EXPECT_TRUE(view.drawing.drawn.empty());

  journal.clear();
  prompt.answers = true;
  canvas.offerLeftStrokes();
  EXPECT_EQ(journal, (Lines{"message " + files.pathOf(1).string() +
                                ", line 1: expected a draw width of 1 or 2, found the end of the "
                                "file\n1 more cannot be read.",
                            "confirm Drawing left by an earlier run: 2 strokes. Restore it?"}));
  EXPECT_EQ(view.drawing.drawn.size(), 10u);
  view.chosen = folder.path() / "kept";
  key('S');
  EXPECT_EQ(readDrawing(folder.path() / "kept.fdw")->at(1).samples, alongLine(1, 0));

  prompt.answerYes = false;
  canvas.offerLeftStrokes();
  EXPECT_TRUE(nothingIsKept());
}

#if !defined(_WIN32)
TEST_F(OnTheCanvas, LosesNothingWhenTheProgramIsKilled) {
  // A file of 3000 bytes holds a stroke of 20 samples and a drawing of six, but no stroke of 300.
  const struct {
    const char* when;
    int signal;
    std::size_t shortStrokes;
    const char* halfAFile;
    std::size_t saved;
    std::size_t notSaved;
  } deaths[] = {
      {"after a stroke", SIGKILL, 1000, "", 0, 1},
      {"after a saving", SIGKILL, 1000, "", 4, 0},
      {"while a stroke is written", SIGXFSZ, 3, "tmp/tmp003.tmp.new", 3, 0},
      {"while a drawing is written", SIGXFSZ, 1000, "run.fdw.new", 6, 1},
  };
  const test::TemporaryFolder elsewhere;
  view.chosen = folder.path() / "run.fdw";
  for (const auto& death : deaths) {
    SCOPED_TRACE(death.when);
    fs::remove(view.chosen);
    canvas.perform(CanvasAction::clear);
    const std::size_t left = death.saved + death.notSaved;
    const auto workUntilDeath = [&] {
      const rlimit none{0, 0};
      const rlimit most{3000, 3000};
      setrlimit(RLIMIT_CORE, &none);
      setrlimit(RLIMIT_FSIZE, &most);
      switches.toleranceTest = true;
      for (std::size_t stroke = 0; stroke < 100; ++stroke) {
        if (death.signal == SIGKILL && stroke == left) std::raise(SIGKILL);
        draw(alongLine(0, 5, stroke < death.shortStrokes ? 20 : 300));
        if (death.signal != SIGKILL || stroke < death.saved) key('S');
      }
    };
    EXPECT_EXIT(workUntilDeath(), testing::KilledBySignal(death.signal), "");
    EXPECT_TRUE(fs::exists(folder.path() / death.halfAFile));
    const auto saved = readDrawing(view.chosen);
    EXPECT_EQ(saved ? saved->size() : 0, death.saved);

    // The next start, of a program that has the folder for itself.
    files = WorkingFiles(elsewhere.path(), elsewhere.path());
    files = WorkingFiles(folder.path(), folder.path());
    for (const auto& entry : fs::directory_iterator(files.folder()))
      EXPECT_NE(entry.path().extension(), ".new") << "half a file is swept away";
    journal.clear();
    Canvas next{{clock, prompt, messages, switches, files, folder.path()}, view, screen};
    next.offerLeftStrokes();
    EXPECT_EQ(journal, Lines{"confirm Drawing left by an earlier run: " + std::to_string(left) +
                             (left == 1 ? " stroke" : " strokes") + ". Restore it?"});
    EXPECT_EQ(static_cast<std::size_t>(next.strokeCounter()), left);
  }
}
#endif

}  // namespace
}  // namespace touch
