#include "linetest/canvas/canvas.h"

#include "linetest/files/drawing_file.h"
#include "tests/doubles/scripted_prompt.h"
#include "tests/doubles/temporary_folder.h"
#include "tests/doubles/virtual_clock.h"
#include "tests/linetest/canvas/recording_view.h"

namespace touch::test {
namespace {

constexpr TwipsSize screen{10240, 5120};  // lines at 320, 2720, 5120, 7520, 9920 and half of that
const char* const escape = "\x1b";

class OnTheCanvas : public testing::Test {
 protected:
  /// Strokes are tested and recorded, without the fixed sequence.
  OnTheCanvas() {
    switches.toleranceTest = true;
    canvas.activate();
  }

  /// Returns what is drawn meanwhile.
  Lines keys(std::string_view codes) {
    view.drawing.take();
    for (const char code : codes)
      canvas.keyDown(code);
    return view.drawing.take();
  }
  Lines draw(const std::vector<TwipsPoint>& points) {
    view.drawing.take();
    canvas.pointerDown(PointerButton::left, points.front());
    for (std::size_t i = 1; i < points.size(); ++i)
      canvas.pointerMove(points[i]);
    canvas.pointerUp(points.back());
    return view.drawing.take();
  }
  Lines moveOnly(TwipsPoint to) {
    view.drawing.take();
    canvas.pointerMove(to);
    canvas.pointerUp(to);
    return view.drawing.take();
  }
  /// Along guide line `index`, `off` twips beside it, from the margin on.
  std::vector<TwipsPoint> alongLine(int index, float off = 0, int samples = 4) const {
    const float across = GuideLines(screen).position(index) + off;
    std::vector<TwipsPoint> points;
    for (float along = 20; points.size() < static_cast<std::size_t>(samples); along += 1000)
      points.push_back(index < 5 ? TwipsPoint{across, along} : TwipsPoint{along, across});
    return points;
  }
  /// All that is drawn.
  Lines picture() const {
    RecordingSurface anew;
    canvas.repaint(anew);
    return anew.drawn;
  }
  bool shown(CanvasPanel panel) const { return canvas.isVisible(panel); }
  /// But the lock, in the folder of the working files.
  bool nothingIsKept() const {
    return std::distance(fs::directory_iterator(files.folder()), {}) == 1;
  }

  Lines journal;
  VirtualClock clock{journal};
  ScriptedPrompt prompt{journal};
  TemporaryFolder folder;
  MessageTable messages;
  DrawingSwitches switches;
  WorkingFiles files{folder.path(), folder.path()};
  RecordingView view;
  CanvasParts parts{clock, prompt, messages, switches, files, folder.path()};
  Canvas canvas{parts, view, screen};
};

TEST_F(OnTheCanvas, DrawsJoinedLinesOrPoints) {
  EXPECT_TRUE(shown(CanvasPanel::banner));
  EXPECT_THAT(draw({{1000, 1000}, {1015, 1000}, {1030, 1015}}),
              ElementsAre("point 1000,1000 #12 1", "line 1000,1000 1015,1000 #12 1",
                          "line 1015,1000 1030,1015 #12 1"));
  EXPECT_FALSE(shown(CanvasPanel::banner)) << "the pen drives it away";
  keys("P2C");
  EXPECT_THAT(draw({{1000, 1000}, {1015, 1000}}),
              ElementsAre("point 1000,1000 #13 2", "point 1015,1000 #13 2"));
  keys("L1");
  canvas.pointerMove({1, 1});
  EXPECT_EQ(picture().size(), 5u) << "and nothing where the pen was up";
}

TEST(PenColours, AreOfferedInTheirOrderWithoutThePapersOwn) {
  const std::tuple<int, Colour, int> cases[] = {
      {12, canvasPaper, 13}, {15, canvasPaper, 0}, {0, canvasPaper, 9}, {0, white, 9},
      {14, white, 0},        {15, palette[0], 1},  {8, palette[9], 10}};
  for (const auto& [from, paper, next] : cases)
    EXPECT_EQ(nextColour(from, paper), next) << from;
}

TEST(CanvasTables, SayWhatTheirEntriesDo) {
  const MessageTable messages;
  const auto help = helpLines(messages);
  std::map<CanvasAction, std::string> said;
  for (std::size_t line = 0; line < help.size(); ++line) {
    const auto action = actionOfHelpLine(line);
    ASSERT_TRUE(action) << help[line];
    said.emplace(*action, help[line]);
  }
  for (const CanvasMenuEntry& entry : canvasMenu)
    EXPECT_THAT(said[entry.action], EndsWith(messages.at(entry.message)));
}

TEST_F(OnTheCanvas, OpensTheMenuByTheRightButtonAndNeverByHolding) {
  keys("2");
  const std::tuple<const char*, TwipsPoint, bool, int> cases[] = {
      {"inside", {5000, 1000}, true, 2},
      {"at the start of a guide line", {5120, 20}, false, 2},
      {"beside the lines, after a tested stroke", {3500, 100}, false, 1},
      {"inside, after a tested stroke", {3500, 1000}, true, 1},
      {"beside the lines, after an untested stroke", {3500, 100}, true, 1},
  };
  for (const auto& [what, at, opens, width] : cases) {
    SCOPED_TRACE(what);
    canvas.pointerDown(PointerButton::left, at);
    clock.delay(10s);
    EXPECT_FALSE(shown(CanvasPanel::menu)) << "a finger that rests draws";
    EXPECT_EQ(canvas.pen().width, width);
    canvas.pointerUp(at);
    canvas.pointerDown(PointerButton::right, {3500, 100});
    EXPECT_EQ(shown(CanvasPanel::menu), opens);
    canvas.pointerUp({3500, 100});
    if (!opens) continue;
    EXPECT_EQ(draw({{1, 1}, {2, 2}}), Lines{}) << "nothing is drawn below it";
    EXPECT_EQ(view.escape, "Esc: close the menu");
    keys(escape);
  }
  keys(escape);
  canvas.toggleMenu({100, 5000});
  EXPECT_EQ(view.corners[CanvasPanel::menu], (TwipsPoint{0, 4120})) << "pulled on the screen";
  canvas.toggleMenu({100, 5000});
  EXPECT_FALSE(shown(CanvasPanel::menu));
  canvas.pointerDown(PointerButton::right, {100, 100});
  keys(escape);
  keys(escape);
  EXPECT_EQ(view.left, 1) << "a menu draws nothing";
}

TEST_F(OnTheCanvas, EndsAStrokeBeforeABoxSwallowsItsEnd) {
  view.chosen = folder.path() / "run.fdw";
  for (const char* const key : {"S", "V", "GG"}) {
    const auto points = alongLine(0);
    canvas.pointerDown(PointerButton::left, points[0]);
    for (const TwipsPoint point : points)
      canvas.pointerMove(point);
    const int before = canvas.strokeCounter();
    keys(key);
    EXPECT_EQ(canvas.strokeCounter(), before + 1) << key;
    EXPECT_EQ(moveOnly({5, 5}), Lines{}) << key;
  }
  EXPECT_EQ(readDrawing(view.chosen)->size(), 1u) << "saved with what was on its way";
  canvas.pointerDown(PointerButton::left, {1000, 1000});
  keys("G");
  EXPECT_THAT(moveOnly({1015, 1000}), ElementsAre("line 1000,1000 1015,1000 #12 1"))
      << "without a box it goes on";
}

TEST_F(OnTheCanvas, TintsTheInkOfATestedStroke) {
  const auto blue = EndsWith("#9 1");
  const auto red = EndsWith("#12 1");
  // The band of line V1 reaches from 217.6 to 422.4, that of H1 from 108.8 to 211.2.
  EXPECT_THAT(draw({{400, 20}, {422, 30}, {423, 40}, {424, 50}, {420, 60}, {320, 70}}),
              ElementsAre(blue, blue, blue, red, red, blue));
  EXPECT_THAT(draw({{20, 112}, {30, 110}, {40, 108}, {50, 120}}),
              ElementsAre(blue, blue, blue, red));
  EXPECT_THAT(draw({{1000, 1000}, {9000, 1000}}), ElementsAre(red, red))
      << "a start inside is never tested";
}

TEST_F(OnTheCanvas, MeasuresListsAndKeepsStrokes) {
  draw(alongLine(2, 51.2F, 5));
  EXPECT_EQ(view.results[1], "  Vertical #3");
  EXPECT_THAT(std::vector(&view.results[2], &view.results[5]),
              ElementsAre("  AVG :  0.50", "  Max :  0.50", "  Min :  0.50"));
  EXPECT_TRUE(shown(CanvasPanel::resultsList));
  // The pen ended at (5171.2, 4020): room on the right, but not below.
  EXPECT_EQ(view.corners[CanvasPanel::resultsList], (TwipsPoint{5671.2F, 2520}));
  draw(alongLine(5, 0, 3));
  EXPECT_EQ(view.results[1], "  Horizontal #1");
  EXPECT_EQ(canvas.strokeCounter(), 1) << "three samples are measured but not kept";
  draw({{1000, 1000}, {1000, 1010}, {1000, 1020}, {1000, 1030}});
  EXPECT_EQ(canvas.strokeCounter(), 2) << "an untested stroke is kept";
  EXPECT_EQ(files.read(0)->samples, alongLine(2, 51.2F, 5));

  keys("T");
  EXPECT_TRUE(shown(CanvasPanel::resultsTable) && !shown(CanvasPanel::resultsList));
  EXPECT_EQ(view.sheet.cells[3][1].text, "0.50");
  keys(escape);
  EXPECT_TRUE(!shown(CanvasPanel::resultsTable) && canvas.strokeCounter() == 2);
}

TEST_F(OnTheCanvas, RecordsNothingWithoutTheToleranceTest) {
  switches.toleranceTest = false;
  view.chosen = folder.path() / "run.fdw";
  draw(alongLine(0));
  keys("DS");
  EXPECT_THAT(view.banner, HasSubstr("There is nothing to save"));
  EXPECT_TRUE(view.results.empty() && fs::is_empty(folder.path())) << "no folder is made either";
  switches.toleranceTest = true;
  keys("S");
  EXPECT_TRUE(shown(CanvasPanel::banner));
  EXPECT_EQ(view.banner, "Saved an empty drawing in " + view.chosen.string());
  EXPECT_EQ(folder.read("run.fdw"), "");
  EXPECT_EQ(journal, Lines{});
}

TEST_F(OnTheCanvas, BoundsAStroke) {
  std::vector<TwipsPoint> points(3001, {320, 20});
  points.back() = {9000, 20};
  draw(points);
  const auto kept = files.read(0)->samples;
  EXPECT_EQ(kept.size(), 3000u);
  EXPECT_EQ(kept.back().x, 320);
}

TEST_F(OnTheCanvas, TakesTheLastStrokeBackOnce) {
  draw(alongLine(1));
  keys("2");
  draw(alongLine(2));
  keys("1");
  draw({{2000, 2000}});
  EXPECT_THAT(keys("D"),
              ElementsAre("point 5120,20 #16 2", "line 5120,20 5120,20 #16 2",
                          "line 5120,20 5120,1020 #16 2", "line 5120,1020 5120,2020 #16 2",
                          "line 5120,2020 5120,3020 #16 2"))
      << "the recorded one, as it was drawn";
  keys("D");
  EXPECT_EQ(canvas.strokeCounter(), 1);
  EXPECT_EQ(files.left().strokes.size(), 1u);
  keys(escape);
  draw(alongLine(1));
  keys("D");
  EXPECT_EQ(view.escape, "Esc: clear the drawing") << "its erased ink lies on the grid";
}

const Lines grid = {
    "line 320,0 320,5120 #8 2",     "line 5120,0 5120,5120 #8 2",   "line 9920,0 9920,5120 #8 2",
    "line 0,160 10240,160 #8 2",    "line 0,2560 10240,2560 #8 2",  "line 0,4960 10240,4960 #8 2",
    "line 2720,160 2720,4960 #8 2", "line 7520,160 7520,4960 #8 2", "line 320,1360 9920,1360 #8 2",
    "line 320,3760 9920,3760 #8 2", "circle 320,160 250 #15 2",     "circle 5120,160 250 #15 2",
    "circle 9920,160 250 #15 2",    "circle 320,2560 250 #15 2",    "circle 5120,2560 250 #15 2",
    "circle 9920,2560 250 #15 2",   "circle 320,4960 250 #15 2",    "circle 5120,4960 250 #15 2",
    "circle 9920,4960 250 #15 2"};

TEST_F(OnTheCanvas, TogglesTheGrid) {
  EXPECT_EQ(keys("G"), grid);
  EXPECT_EQ(keys("G"), Lines{"clear"});
  keys("G");
  draw({{1, 1}});
  prompt.answerYes = false;
  EXPECT_EQ(keys("G"), Lines{});
  EXPECT_FALSE(switches.grid);
  EXPECT_EQ(journal, Lines{"confirm Clear All Drawing ?"}) << "only where something is drawn";
  prompt.answerYes = true;
  EXPECT_EQ(keys("GG"), Lines{"clear"});
  switches.grid = true;
  canvas.activate();
  EXPECT_EQ(view.drawing.drawn.size(), 1 + grid.size()) << "the switch outlives the screen";
}

TEST_F(OnTheCanvas, ShowsTheToleranceOnTheGrid) {
  canvas.setTolerance(25);
  keys("G");
  canvas.setToleranceView(true);
  const Lines lines = view.drawing.take();
  ASSERT_EQ(lines.size(), 20u);
  EXPECT_EQ(lines[0], "line 64,0 64,5120 #14 1");
  EXPECT_EQ(lines[1], "line 576,0 576,5120 #14 1");
  EXPECT_EQ(lines[6], "line 0,32 10240,32 #14 1");
  EXPECT_EQ(lines[19], "line 320,3888 9920,3888 #14 1");
  draw({{1000, 1000}});
  canvas.setTolerance(10);
  EXPECT_EQ(picture().size(), grid.size() + 1 + 20);
  EXPECT_THAT(picture(), Not(Contains(lines[0])));
  canvas.setToleranceView(false);
  Lines inkOnGrid = grid;
  inkOnGrid.push_back("point 1000,1000 #12 1");
  EXPECT_EQ(picture(), inkOnGrid);
}

TEST_F(OnTheCanvas, FollowsTheScreensSize) {
  keys("G");
  draw({{1000, 1000}});
  canvas.resize({20480, 5120});
  EXPECT_THAT(view.drawing.drawn, Contains("line 640,0 640,5120 #8 2"));
  EXPECT_THAT(picture(), Contains("point 1000,1000 #12 1"));
  EXPECT_THAT(picture(), Not(Contains(grid[0])));
  EXPECT_EQ(view.corners[CanvasPanel::banner], (TwipsPoint{8740, 2060}));
  draw({{640, 20}, {640, 30}});
  EXPECT_EQ(view.results[1], "  Vertical #1");
}

TEST_F(OnTheCanvas, LeadsThroughTheFixedSequence) {
  draw(alongLine(3));
  switches.toleranceTest = false;
  Lines expected = grid;
  expected.insert(expected.begin(), "clear");
  expected.push_back("line 320,0 320,5120 #15 10");
  expected.push_back("line 320,0 320,5120 #0 2");
  EXPECT_EQ(keys("F"), expected);
  EXPECT_TRUE(switches.toleranceTest && switches.grid && nothingIsKept());
  Lines marks;
  Lines captions;
  for (int index = 0; index < 10; ++index) {
    EXPECT_TRUE(canvas.inFixedSequence());
    captions.push_back(view.caption);
    // Far off the line: it is measured against it all the same.
    marks.push_back(draw(alongLine(index, 1024)).back());
    EXPECT_EQ(view.results[2], "  AVG :  10.00");
    EXPECT_EQ(shown(CanvasPanel::resultsTable), index == 9);
    EXPECT_EQ(shown(CanvasPanel::caption), index < 9);
  }
  EXPECT_EQ(marks[0], "line 2720,0 2720,5120 #0 2") << "from edge to edge, unlike in the grid";
  EXPECT_EQ(marks[4], "line 0,160 10240,160 #0 2");
  EXPECT_EQ(captions[2], "Vertical #3, from edge to edge");
  EXPECT_EQ(captions[5], "Horizontal #1, from edge to edge");
  EXPECT_THAT(picture(), Not(Contains(EndsWith("#0 2")))) << "done is done";
  EXPECT_FALSE(canvas.inFixedSequence());
  EXPECT_EQ(canvas.strokeCounter(), 10);
  for (std::size_t row = 1; row <= 10; ++row)
    EXPECT_EQ(view.sheet.cells[row][1].text, "10.00") << row;
  EXPECT_EQ(view.escape, "Esc: close the table");
  keys(escape);
  EXPECT_EQ(view.escape, "Esc: clear 10 strokes");
}

TEST_F(OnTheCanvas, SavesAndViewsADrawing) {
  draw(alongLine(0));
  keys("CC2");
  draw({{1000, 1000}, {1100, 1000}, {1200, 1000}, {1300, 1000}});
  keys("SV");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1) << "cancelled: only tmp";
  view.chosen = folder.path() / "run1";
  clock.delay(6 * Canvas::bannerTick);
  EXPECT_FALSE(shown(CanvasPanel::banner));
  keys("S");
  EXPECT_EQ(view.banner, "Saved 2 strokes in " + view.chosen.string() + ".fdw");
  clock.delay(5 * Canvas::bannerTick);
  EXPECT_TRUE(shown(CanvasPanel::banner)) << "as long as when the screen opens";
  journal.clear();
  prompt.answerYes = false;
  const std::string before = folder.read("run1.fdw");
  keys("DS");
  const std::string file = (folder.path() / "run1.fdw").string();
  EXPECT_EQ(journal, Lines{"confirm " + file + " is there already. Replace it?"});
  EXPECT_EQ(folder.read("run1.fdw"), before);

  keys("C");
  view.chosen = file;
  const Lines drawn = keys("V");
  ASSERT_EQ(drawn.size(), 8u);
  EXPECT_EQ(drawn[1], "line 320,20 320,1020 #12 1");
  EXPECT_EQ(drawn[4], "point 1000,1000 #12 2") << "the colour before";
  EXPECT_EQ(drawn[5], "line 1000,1000 1100,1000 #14 2");

  folder.write("run1.fdw", "Line #000\r\n 9 \r\n 2 \r\n 2 \r\n 1 2\r\n");
  EXPECT_EQ(keys("V"), Lines{});
  EXPECT_EQ(journal.back(),
            "message " + file + ", line 6: expected the x of a sample, found the end of the file");
  EXPECT_EQ(canvas.pen().colour, 14);
}

TEST_F(OnTheCanvas, OpensALongDrawingInPiecesAndTakesItBack) {
  view.chosen = folder.path() / "long.fdw";
  ASSERT_EQ(
      whyNot(writeDrawing(view.chosen, Drawing(30, {9, 2, std::vector<TwipsPoint>(1000, {7, 7})}))),
      "");
  draw({{1000, 1000}, {1001, 1000}});
  const Lines before = picture();
  const auto isUntouched = [&] {
    return picture() == before && canvas.pen().colour == 12 && canvas.pen().width == 1 &&
           view.escape == "Esc: clear 1 stroke";
  };
  EXPECT_EQ(keys("V").size(), 10'000u) << "a piece is seen at once";
  EXPECT_THAT(view.escape, MatchesRegex("Esc: stop opening long.fdw \\(3[0-9] %\\)"));
  EXPECT_EQ(draw({{1, 1}, {2, 2}}), Lines{}) << "the pen waits";
  EXPECT_EQ(keys("GF2"), Lines{}) << "and so do the keys";
  keys(escape);
  EXPECT_TRUE(isUntouched());
  clock.delay(1s);
  EXPECT_TRUE(isUntouched()) << "no piece comes after it";

  keys("V");
  clock.delay(1s);
  EXPECT_EQ(view.escape, "Esc: clear 31 strokes");
  EXPECT_EQ(canvas.pen().width, 2);

  keys(escape);
  draw({{1000, 1000}, {1001, 1000}});
  const Lines beforeTorn = picture();
  folder.write("long.fdw", folder.read("long.fdw") + "torn");
  keys("V");
  clock.delay(1s);
  EXPECT_THAT(journal.back(), HasSubstr("long.fdw, line 30121: expected"));
  EXPECT_EQ(picture(), beforeTorn);
}

TEST_F(OnTheCanvas, ClearsThenLeaves) {
  EXPECT_EQ(view.escape, "Esc: leave");
  draw(alongLine(1));
  EXPECT_EQ(view.escape, "Esc: clear 1 stroke");
  canvas.pointerDown(PointerButton::left, {1, 1});
  EXPECT_EQ(keys(escape), Lines{"clear"});
  EXPECT_TRUE(nothingIsKept());
  canvas.pointerMove({2, 2});
  EXPECT_EQ(keys("D"), Lines{}) << "the pen is up, and nothing can be taken back";
  EXPECT_EQ(view.left, 0);
  keys(escape);
  EXPECT_EQ(view.left, 1);
}

TEST_F(OnTheCanvas, LeavesWithoutAQuestionAndShowsTheStrokesAgain) {
  const auto anew = [this] { return std::make_unique<Canvas>(parts, view, screen); };
  draw(alongLine(0));
  canvas.perform(CanvasAction::leave);
  EXPECT_EQ(journal, Lines{});
  EXPECT_EQ(view.left, 1);
  auto again = anew();
  again->activate();
  view.drawing.take();
  again->takeUpStrokes();
  EXPECT_EQ(view.drawing.drawn.size(), 5u);
  EXPECT_EQ(view.escape, "Esc: clear 1 stroke");
  EXPECT_TRUE(files.isUnfinished()) << "a crash from now on does not lose them";
  view.chosen = folder.path() / "kept.fdw";
  again->perform(CanvasAction::save);
  EXPECT_EQ(readDrawing(view.chosen)->size(), 1u);
  again->perform(CanvasAction::leave);
  again = anew();
  again->takeUpStrokes();
  EXPECT_FALSE(files.isUnfinished()) << "what is saved cannot be lost";

  switches = {true, false, {}};  // the program was ended and started
  again = anew();
  again->activate();
  again->takeUpStrokes();
  EXPECT_EQ(journal, Lines{}) << "nothing is offered that was saved, or left by the user";
  EXPECT_TRUE(files.read(0));
  draw(alongLine(1));
  EXPECT_EQ(readDrawing(folder.path() / "tmp" / "left.fdw")->size(), 1u);
  EXPECT_EQ(files.readAll(1)->at(0).samples, alongLine(1)) << "in nobody's place";
}

TEST_F(OnTheCanvas, OffersTheStrokesOfARunThatDiedOnce) {
  switches.toleranceTest = false;
  const auto leaveStrokes = [this] {
    files.write(0, {9, 2, alongLine(0)});
    files.write(4, {10, 1, alongLine(1)});
  };
  leaveStrokes();
  for (const char* torn : {"tmp/tmp001.tmp", "tmp/tmp002.tmp"})
    folder.write(torn, " 12 ");
  view.drawing.take();
  prompt.answers = false;
  canvas.takeUpStrokes();
  EXPECT_EQ(files.left().strokes.size(), 2u) << "unanswered, they are offered again";
  EXPECT_EQ(view.left, 1) << "nothing may be drawn in their places";
  EXPECT_TRUE(view.drawing.drawn.empty());
  const std::string question =
      "confirm An unsaved drawing (2 strokes) was found.\nIf you do not restore it, it is kept "
      "as " +
      (files.folder() / "left.fdw").string() + ".";
  EXPECT_THAT(journal,
              ElementsAre("message " + files.pathOf(1).string() +
                              ", line 1: expected a draw width of 1 or 2, found the end of the "
                              "file\n1 more cannot be read.\n\nEach is kept in its folder, with "
                              "\".damaged\" at the end of its name.",
                          question));
  EXPECT_EQ(folder.read("tmp/tmp002.damaged"), " 12 ");

  journal.clear();
  prompt.answers = true;
  canvas.takeUpStrokes();
  EXPECT_EQ(journal, Lines{question}) << "of damaged ones the user knows";
  EXPECT_EQ(view.drawing.drawn.size(), 10u);
  EXPECT_TRUE(canvas.pen().colour == 12 && canvas.pen().width == 1);
  EXPECT_TRUE(switches.toleranceTest) << "as when they were drawn: S saves what is added, too";
  view.chosen = folder.path() / "kept.FdW";
  keys("S");
  EXPECT_EQ(readDrawing(view.chosen)->at(1).samples, alongLine(1));

  keys(escape);
  prompt.answerYes = false;
  for (const char* const kept : {"tmp/left.fdw", "tmp/left2.fdw"}) {
    leaveStrokes();
    canvas.takeUpStrokes();
    EXPECT_EQ(readDrawing(folder.path() / kept)->size(), 2u);
    EXPECT_EQ(view.banner, "Saved 2 strokes in " + (folder.path() / kept).string());
    EXPECT_EQ(canvas.strokeCounter(), 0);
  }
  journal.clear();
  canvas.takeUpStrokes();
  EXPECT_EQ(journal, Lines{}) << "once";
}

/// Only remembers where points are: writing a million of them down would take too long.
class PointSurface final : public Surface {
 public:
  std::vector<float> xs;
  void clear() override {}
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint, float, Colour, int) override {}
  void point(TwipsPoint at, Colour, int) override { xs.push_back(at.x); }
};

TEST(Picture, ForgetsTheOldestWhenFullAndIsShownAnewInPieces) {
  PointSurface shown;
  Lines journal;
  VirtualClock clock(journal);
  Picture picture(shown, clock);
  for (std::size_t i = 0; i <= Picture::mostMarks; ++i)
    picture.point({static_cast<float>(i), 0}, white, 1);
  EXPECT_EQ(shown.xs.size(), Picture::mostMarks + 1) << "what is shown stays";
  PointSurface anew;
  picture.drawOn(anew);
  ASSERT_EQ(anew.xs.size(), Picture::mostMarks / 2 + 1);
  EXPECT_EQ(anew.xs.front(), 500000);
  EXPECT_EQ(anew.xs.back(), 1000000);

  shown.xs.clear();
  picture.showAnew();
  EXPECT_EQ(shown.xs.size(), Picture::marksAtATime) << "nobody waits for the others";
  picture.point({-1, 0}, white, 1);
  EXPECT_EQ(shown.xs.back(), -1) << "ink is seen at once";
  clock.delay(1min);
  EXPECT_EQ(shown.xs.size(), anew.xs.size() + 2);
  EXPECT_EQ(shown.xs.back(), -1) << "and lies on top";
}

}  // namespace
}  // namespace touch::test
