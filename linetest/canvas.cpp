#include "linetest/canvas.h"

#include <cmath>
#include <utility>

#include "core/language.h"
#include "linetest/damaged_files.h"
#include "linetest/drawing_file.h"

namespace touch {

namespace {

constexpr Colour background = palette[0];
constexpr Colour gridColour = palette[7];
constexpr Colour targetColour = palette[15];
constexpr Colour toleranceColour = palette[14];
constexpr Colour inBand = {0, 0, 255};
constexpr Colour strayed = {255, 0, 0};

constexpr int gridWidth = 2;
constexpr int toleranceWidth = 1;
constexpr float targetRadius = 250;
constexpr int bannerTicks = 6;
constexpr std::size_t fewestSamplesKept = 4;

constexpr std::string_view saveFilter = "Text (*.fdw) |*.fdw";
constexpr std::string_view openFilter = "(*.fdw)|*.fdw";
constexpr std::size_t shortestSaveName = 2;
constexpr std::size_t shortestOpenName = 4;

/// `start`, moved so that a panel of this length lies on the screen; at its beginning when it is longer than that.
float onScreen(float start, float length, float screen) {
  if (start + length > screen) start = screen - length;
  return start < 0 ? 0 : start;
}

}  // namespace

Canvas::Canvas(CanvasParts parts, CanvasView& view, TwipsSize screen)
    : parts_(std::move(parts)),
      view_(view),
      guides_(screen),
      picture_(view.surface()),
      bannerTimer_(parts_.clock.makeTimer([this] { tickBanner(); })),
      longPressTimer_(parts_.clock.makeTimer([this] { tickLongPress(); })) {}

void Canvas::activate() {
  show(CanvasPanel::help, false);
  view_.setHelp(helpLines(parts_.messages));
  view_.setTolerance(tolerancePercent_);
  const TwipsSize screen = guides_.screen();
  const TwipsSize size = view_.sizeOf(CanvasPanel::banner);
  view_.place(CanvasPanel::banner,
              {(screen.width - size.width) / 2, (screen.height - size.height) / 2});
  picture_.clear();
  // The switch outlives the screen: what it says is what is seen.
  if (parts_.switches.grid) showgrid();
  bannerTicks_ = 0;
  show(CanvasPanel::banner, true);
  bannerTimer_->start(bannerTick);
}

void Canvas::offerLeftStrokes() {
  const LeftStrokes left = parts_.files.left();
  if (!left.damaged.empty()) parts_.prompt.message(damagedFilesText(left.damaged));
  if (left.strokes.empty()) return;
  const auto count = left.strokes.size();
  const std::string question =
      count == 1
          ? say("linetest", "Drawing left by an earlier run: 1 stroke. Restore it?")
          : filled(say("linetest", "Drawing left by an earlier run: %1 strokes. Restore it?"),
                   {std::to_string(count)});
  switch (parts_.prompt.ask(question)) {
    case Answer::no:
      tell(parts_.files.clear());
      return;
    case Answer::none:
      // They stay for another start; strokes drawn now would take their places.
      bannerTimer_->stop();
      view_.leave();
      return;
    case Answer::yes:
      break;
  }
  // Where they cannot be numbered anew they stay as they are, for another start.
  if (!tell(parts_.files.makeConsecutive(left))) return;
  parts_.switches.toleranceTest = true;
  strokeCounter_ = static_cast<int>(left.strokes.size());
  unsaved_ = true;
  held_ = left.strokes.back().stroke;
  for (const auto& [number, stroke] : left.strokes) {
    stroke_.assign(stroke.samples);
    pen_.colour = stroke.colour;
    pen_.width = stroke.width;
    foreground_ = paletteColour(stroke.colour);
    showline();
  }
}

void Canvas::show(CanvasPanel panel, bool shown) {
  visible_[static_cast<std::size_t>(panel)] = shown;
  view_.show(panel, shown);
}

bool Canvas::tell(const std::optional<FileError>& error) {
  if (error) parts_.prompt.message(error->describe());
  return !error;
}

void Canvas::tickBanner() {
  if (!isVisible(CanvasPanel::banner)) return;
  if (++bannerTicks_ >= bannerTicks) hideBanner();
}

void Canvas::hideBanner() {
  show(CanvasPanel::banner, false);
  bannerTimer_->stop();
}

void Canvas::openMenu(TwipsPoint at) {
  const TwipsSize size = view_.sizeOf(CanvasPanel::menu);
  const TwipsSize screen = guides_.screen();
  view_.place(CanvasPanel::menu, {onScreen(at.x - size.width / 2, size.width, screen.width),
                                  onScreen(at.y, size.height, screen.height)});
  show(CanvasPanel::menu, true);
}

void Canvas::pointerDown(PointerButton button, TwipsPoint at) {
  if (isVisible(CanvasPanel::banner)) hideBanner();
  if (isVisible(CanvasPanel::menu)) return;
  if (button == PointerButton::right && menuAllowed_) {
    openMenu(at);
    return;
  }
  foreground_ = paletteColour(pen_.colour);
  testStart(at);
  penDown_ = true;
  drawn_ = true;
  position_ = at;
  picture_.point(at, foreground_, pen_.width);
  strokeMarks_ = 1;
  stroke_.begin(at);
  watchLongPress(button, at);
}

void Canvas::testStart(TwipsPoint at) {
  const bool fixed = parts_.switches.toleranceTest && fixedSequence_;
  const bool matched = parts_.switches.toleranceTest && !fixed && guides_.isInMargin(at);
  if (matched) {
    const Matching matching = matcher().postest(roundedTwips(at.x), roundedTwips(at.y), pen_.width);
    pen_.width = matching.drawWidth;
    if (matching.line) foreground_ = inBand;
    // A start in the margin that hits no line leaves the menu as it was.
    const bool allowed = menuAllowed_;
    setTested(matching.line);
    if (!matching.line) menuAllowed_ = allowed;
  } else {
    setTested(fixed ? std::optional(line_) : std::nullopt);
  }
}

void Canvas::setTested(const std::optional<LineMatch>& line) {
  // While lines are tested, a held touch that the driver turns into a right click must not open the menu.
  menuAllowed_ = !line;
  tested_ = StrokeTested::no;
  if (!line) return;
  line_ = *line;
  tested_ = line->orientation() == Orientation::vertical ? StrokeTested::vertical
                                                         : StrokeTested::horizontal;
}

void Canvas::watchLongPress(PointerButton button, TwipsPoint at) {
  longPressTimer_->stop();
  start_ = at;
  // Strokes along a line begin in the margin; inside, a long press opens the menu even while the right button may not.
  const bool mayOpen = menuAllowed_ || !guides_.isInMargin(at);
  if (button == PointerButton::left && mayOpen) longPressTimer_->start(longPress);
}

void Canvas::tickLongPress() {
  longPressTimer_->stop();
  if (!penDown_ || isVisible(CanvasPanel::menu)) return;
  penDown_ = false;
  picture_.removeLast(strokeMarks_);
  openMenu(start_);
}

void Canvas::pointerMove(TwipsPoint at) {
  if (!penDown_ || isVisible(CanvasPanel::menu)) return;
  if (std::hypot(at.x - start_.x, at.y - start_.y) > longPressSlack) longPressTimer_->stop();
  if (pen_.mode == PenMode::lines) {
    picture_.line(position_, at, foreground_, pen_.width);
  } else {
    picture_.point(at, foreground_, pen_.width);
  }
  ++strokeMarks_;
  position_ = at;
  if (!parts_.switches.toleranceTest) return;
  stroke_.add(at);
  if (tested_ != StrokeTested::no) tint(at);
}

// The ink changes from the next piece on: it shows where the stroke went after it had left the band.
void Canvas::tint(TwipsPoint at) {
  foreground_ = matcher().hasStrayed(line_.index, at) ? strayed : inBand;
}

void Canvas::pointerUp(TwipsPoint at) {
  longPressTimer_->stop();
  if (!penDown_ || isVisible(CanvasPanel::menu)) return;
  penDown_ = false;
  if (tested_ != StrokeTested::no) listStroke(at);
  if (parts_.switches.toleranceTest) keepStroke();
}

void Canvas::listStroke(TwipsPoint pen) {
  const TwipsSize screen = guides_.screen();
  view_.setResultsList(resultLines(stroke_.samples(), line_, screen, tolerancePercent_));
  view_.place(CanvasPanel::resultsList,
              placeBeside(pen, view_.sizeOf(CanvasPanel::resultsList), screen));
  show(CanvasPanel::resultsList, true);
  results_.store(stroke_.samples(), line_, screen);
  if (fixedSequence_) advanceFixedSequence();
}

void Canvas::advanceFixedSequence() {
  if (line_.index >= GuideLines::count - 1) {
    fixedSequence_ = false;
    showResults();
    return;
  }
  ++line_.index;
  chgrid(line_.index + 1);
}

void Canvas::keepStroke() {
  const auto samples = stroke_.samples();
  if (samples.size() < fewestSamplesKept) return;
  Stroke stroke{pen_.colour, pen_.width, {samples.begin(), samples.end()}};
  if (!tell(parts_.files.write(strokeCounter_, stroke))) return;
  ++strokeCounter_;
  unsaved_ = true;
  held_ = std::move(stroke);
}

void Canvas::showgrid() {
  for (const int index : GuideLines::drawingOrder) {
    const Segment line = guides_.inGrid(index);
    picture_.line(line.from, line.to, gridColour, gridWidth);
  }
  for (const TwipsPoint target : guides_.targets())
    picture_.circle(target, targetRadius, targetColour, gridWidth);
  foreground_ = strayed;
  showerrline();
}

void Canvas::chgrid(int number) {
  if (number < 1 || number > GuideLines::count) return;
  const int index = number - 1;
  const Segment line = guides_.whole(index);
  picture_.line(line.from, line.to, background, gridWidth);
  line_.position = roundedTwips(guides_.position(index));
}

void Canvas::showerrline() {
  if (!toleranceView_) return;
  const Bands bands = bandsOf(guides_.screen(), tolerancePercent_);
  picture_.setLayer(Picture::Layer::toleranceLines);
  for (const int index : GuideLines::drawingOrder) {
    const bool vertical = GuideLines::orientation(index) == Orientation::vertical;
    const float band = vertical ? bands.vertical : bands.horizontal;
    for (const float shift : {-band, band}) {
      const Segment line = guides_.inGrid(index, shift);
      picture_.line(line.from, line.to, toleranceColour, toleranceWidth);
    }
  }
  picture_.setLayer(Picture::Layer::drawing);
  foreground_ = strayed;
}

void Canvas::renewToleranceLines() {
  longPressTimer_->stop();
  const Colour foreground = foreground_;
  picture_.removeLayer(Picture::Layer::toleranceLines);
  if (parts_.switches.grid) showerrline();
  if (penDown_) foreground_ = foreground;
}

void Canvas::showline() {
  drawn_ = true;
  const auto samples = stroke_.samples();
  picture_.point(samples.front(), foreground_, pen_.width);
  foreground_ = paletteColour(pen_.colour);
  for (std::size_t i = 1; i < samples.size(); ++i)
    picture_.line(samples[i - 1], samples[i], foreground_, pen_.width);
}

void Canvas::keyDown(int code) {
  if (const auto action = actionOfKey(code)) perform(*action);
}

void Canvas::choose(const CanvasMenuEntry& entry) {
  show(CanvasPanel::menu, false);
  perform(entry.action);
}

void Canvas::chooseHelp(std::size_t line) {
  if (const auto action = actionOfHelpLine(line)) perform(*action);
}

void Canvas::perform(CanvasAction action) {
  // Whoever presses keys is not waiting for the menu.
  longPressTimer_->stop();
  switch (action) {
    case CanvasAction::escape:
      return escape();
    case CanvasAction::clear:
      return clearDrawing();
    case CanvasAction::leave:
      return leave();
    case CanvasAction::thin:
      pen_.width = 1;
      return;
    case CanvasAction::thick:
      pen_.width = 2;
      return;
    case CanvasAction::nextColour:
      pen_.colour = nextColour(pen_.colour, background);
      foreground_ = paletteColour(pen_.colour);
      return;
    case CanvasAction::undo:
      return undo();
    case CanvasAction::fixedSequence:
      return startFixedSequence();
    case CanvasAction::toggleGrid:
      return toggleGrid();
    case CanvasAction::lineMode:
      pen_.mode = PenMode::lines;
      return;
    case CanvasAction::pointMode:
      pen_.mode = PenMode::points;
      return;
    case CanvasAction::save:
      return save();
    case CanvasAction::showResults:
      return showResults();
    case CanvasAction::view:
      return view();
    case CanvasAction::toggleHelp:
      show(CanvasPanel::help, !isVisible(CanvasPanel::help));
      return;
  }
}

void Canvas::escape() {
  penDown_ = false;
  if (isVisible(CanvasPanel::menu) || isVisible(CanvasPanel::resultsTable)) {
    show(CanvasPanel::menu, false);
    show(CanvasPanel::resultsTable, false);
  } else if (!drawn_) {
    leave();
  } else {
    clearDrawing();
  }
}

// What is left behind in order is not offered again: the working files are for what nobody meant to leave.
void Canvas::leave() {
  if (unsaved_ && strokeCounter_ > 0) {
    const std::string question =
        strokeCounter_ == 1
            ? say("linetest", "This drawing of 1 stroke is not saved. Leave without saving?")
            : filled(
                  say("linetest", "This drawing of %1 strokes is not saved. Leave without saving?"),
                  {std::to_string(strokeCounter_)});
    if (!parts_.prompt.confirm(question)) return;
  }
  tell(parts_.files.clear());
  bannerTimer_->stop();
  view_.leave();
}

void Canvas::clearDrawing() {
  drawn_ = false;
  picture_.clear();
  show(CanvasPanel::resultsList, false);
  strokeCounter_ = 0;
  unsaved_ = false;
  held_.reset();
  tell(parts_.files.clear());
  if (parts_.switches.grid) showgrid();
  // The line that is to be drawn next stays marked.
  if (fixedSequence_) chgrid(line_.index + 1);
}

void Canvas::startFixedSequence() {
  fixedSequence_ = false;
  parts_.switches.grid = true;
  clearDrawing();
  parts_.switches.toleranceTest = true;
  line_.index = 0;
  chgrid(1);
  fixedSequence_ = true;
}

void Canvas::toggleGrid() {
  parts_.switches.grid = !parts_.switches.grid;
  if (parts_.switches.grid) {
    showgrid();
    return;
  }
  if (drawn_ && !parts_.prompt.confirm(parts_.messages.at(clearAllQuestion))) return;
  drawn_ = false;
  picture_.clear();
}

void Canvas::undo() {
  if (!parts_.switches.toleranceTest || !held_) return;
  // As it was drawn, whatever the pen has become and whatever has been touched since.
  const Stroke stroke = *std::exchange(held_, std::nullopt);
  --strokeCounter_;
  // A stroke that was taken back must not come back after a crash.
  parts_.files.remove(strokeCounter_);
  foreground_ = background;
  TwipsPoint from = stroke.samples.front();
  picture_.point(from, foreground_, stroke.width);
  for (const TwipsPoint sample : stroke.samples)
    picture_.line(std::exchange(from, sample), sample, foreground_, stroke.width);
}

void Canvas::save() {
  if (strokeCounter_ == 0 || !parts_.switches.toleranceTest) {
    parts_.prompt.message(say("linetest",
                              "There is nothing to save: strokes are recorded once F has begun "
                              "the test of the lines."));
    return;
  }
  const auto name = view_.askSaveName(parts_.workingFolder, saveFilter);
  if (name.native().size() < shortestSaveName) return;
  const auto file = withDrawingExtension(name);
  // The dialog has asked about the name that was typed, not about the one that this becomes.
  if (file != name && !mayReplace(file)) return;
  const auto strokes = parts_.files.readAll(strokeCounter_);
  if (!strokes) {
    tell(strokes.error());
    return;
  }
  if (tell(writeDrawing(file, *strokes))) unsaved_ = false;
  stroke_.assign(strokes->back().samples);
}

bool Canvas::mayReplace(const std::filesystem::path& file) {
  std::error_code unknown;
  return !std::filesystem::exists(file, unknown) ||
         parts_.prompt.confirm(
             filled(say("linetest", "%1 is there already. Replace it?"), {file.string()}));
}

void Canvas::view() {
  const auto name = view_.askOpenName(parts_.workingFolder, openFilter);
  if (name.native().size() >= shortestOpenName) viewsave(name);
}

void Canvas::viewsave(const std::filesystem::path& file) {
  const auto drawing = readDrawing(file);
  if (!drawing) {
    tell(drawing.error());
    return;
  }
  if (drawing->empty()) {
    parts_.prompt.message(
        filled(say("linetest", "%1 is a drawing without strokes."), {file.string()}));
    return;
  }
  drawn_ = false;
  pen_.width = 1;
  for (const Stroke& stroke : *drawing) {
    pen_.colour = stroke.colour;
    pen_.width = stroke.width;
    stroke_.assign(stroke.samples);
    showline();
  }
}

void Canvas::showResults() {
  if (isVisible(CanvasPanel::resultsTable)) return;
  show(CanvasPanel::resultsList, false);
  view_.setResultsTable(results_.sheet(tolerancePercent_));
  show(CanvasPanel::resultsTable, true);
}

void Canvas::setTolerance(int tenths) {
  tolerancePercent_ = static_cast<float>(tenths) / 10;
  view_.setTolerance(tolerancePercent_);
  if (toleranceView_) renewToleranceLines();
}

void Canvas::setToleranceView(bool on) {
  toleranceView_ = on;
  renewToleranceLines();
}

}  // namespace touch
