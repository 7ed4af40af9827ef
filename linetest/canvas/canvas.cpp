#include "linetest/canvas/canvas.h"

#include <algorithm>
#include <utility>

#include "support/text/language.h"

namespace touch {

namespace {

constexpr Colour nextLineColour = palette[0];
constexpr Colour gridColour = palette[8];
constexpr Colour targetColour = palette[15];
constexpr Colour toleranceColour = palette[14];
constexpr Colour inBand = {0, 0, 255};
constexpr Colour strayed = {255, 0, 0};

constexpr int gridWidth = 2;
// Around the line to draw, so that it is seen from afar.
constexpr Colour haloColour = palette[15];
constexpr int haloWidth = 10;
constexpr int toleranceWidth = 1;
constexpr float targetRadius = 250;
constexpr int bannerTicks = 6;

}  // namespace

Canvas::Canvas(CanvasParts parts, CanvasView& view, TwipsSize screen)
    : parts_(std::move(parts)),
      view_(view),
      guides_(screen),
      picture_(view.surface(), parts_.clock),
      bannerTimer_(parts_.clock.makeTimer([this] { tickBanner(); })),
      viewTimer_(parts_.clock.makeTimer([this] { viewOn(); })) {}

void Canvas::activate() {
  show(CanvasPanel::help, false);
  view_.setHelp(helpLines(parts_.messages));
  view_.showTolerance(tolerance_.percent);
  picture_.clear();
  // The switch outlives the screen: what it says is what is seen.
  if (parts_.switches.grid) showgrid();
  raiseBanner();
  renewEscape();
}

void Canvas::raiseBanner() {
  placeBanner();
  bannerTicks_ = 0;
  show(CanvasPanel::banner, true);
  bannerTimer_->start(bannerTick);
}

void Canvas::announce(std::string_view text) {
  view_.setBanner(text);
  raiseBanner();
}

void Canvas::placeBanner() {
  const TwipsSize screen = guides_.screen();
  const TwipsSize size = view_.sizeOf(CanvasPanel::banner);
  view_.place(CanvasPanel::banner,
              {(screen.width - size.width) / 2, (screen.height - size.height) / 2});
}

void Canvas::resize(TwipsSize screen) {
  if (screen == guides_.screen()) return;
  guides_ = GuideLines(screen);
  const Colour foreground = foreground_;
  for (const auto layer :
       {Picture::Layer::grid, Picture::Layer::toleranceLines, Picture::Layer::nextLine})
    picture_.forgetLayer(layer);
  if (parts_.switches.grid) showgrid();
  if (fixedSequence_) markNextLine();
  picture_.showAnew();
  foreground_ = foreground;
  placeBanner();
}

void Canvas::show(CanvasPanel panel, bool shown) {
  visible_[static_cast<std::size_t>(panel)] = shown;
  view_.show(panel, shown);
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
  renewEscape();
}

void Canvas::toggleMenu(TwipsPoint at) {
  if (viewing_) return;
  endStroke();
  if (isVisible(CanvasPanel::menu)) return escape();
  openMenu(at);
}

void Canvas::renewEscape() {
  view_.setEscape(escapeHint());
}

std::string Canvas::escapeHint() const {
  if (viewing_)
    return filled(say("canvas", "Esc: stop opening %1 (%2 %)"),
                  {viewing_->file.filename().string(), std::to_string(viewing_->reader.percent())});
  if (isVisible(CanvasPanel::menu)) return say("canvas", "Esc: close the menu");
  if (isVisible(CanvasPanel::resultsTable)) return say("canvas", "Esc: close the table");
  if (ink_ == Ink::none) return say("canvas", "Esc: leave");
  if (shownStrokes_ == 0) return say("canvas", "Esc: clear the drawing");
  if (shownStrokes_ == 1) return say("canvas", "Esc: clear 1 stroke");
  return filled(say("canvas", "Esc: clear %1 strokes"), {std::to_string(shownStrokes_)});
}

void Canvas::pointerDown(PointerButton button, TwipsPoint at) {
  if (isVisible(CanvasPanel::banner)) hideBanner();
  if (isVisible(CanvasPanel::menu) || viewing_) return;
  if (button == PointerButton::right && menuAllowed_) {
    openMenu(at);
    return;
  }
  foreground_ = paletteColour(pen_.colour);
  testStart(at);
  ink_ = Ink::flowing;
  position_ = at;
  picture_.point(at, foreground_, pen_.width);
  stroke_.begin(at);
  ++shownStrokes_;
  renewEscape();
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
  // While lines are tested, a held touch that the driver turns into a right click must not open the
  // menu.
  menuAllowed_ = !line;
  tested_ = StrokeTested::no;
  if (!line) return;
  line_ = *line;
  tested_ = line->orientation() == Orientation::vertical ? StrokeTested::vertical
                                                         : StrokeTested::horizontal;
}

void Canvas::pointerMove(TwipsPoint at) {
  if (ink_ != Ink::flowing || isVisible(CanvasPanel::menu)) return;
  if (pen_.mode == PenMode::lines) {
    picture_.line(position_, at, foreground_, pen_.width);
  } else {
    picture_.point(at, foreground_, pen_.width);
  }
  position_ = at;
  if (!parts_.switches.toleranceTest) return;
  stroke_.add(at);
  if (tested_ != StrokeTested::no) tint(at);
}

// The ink changes from the next piece on: it shows where the stroke went after it had left the
// band.
void Canvas::tint(TwipsPoint at) {
  foreground_ = matcher().hasStrayed(line_.index, at) ? strayed : inBand;
}

void Canvas::endStroke() {
  pointerUp(position_);
}

void Canvas::pointerUp(TwipsPoint at) {
  if (ink_ != Ink::flowing || isVisible(CanvasPanel::menu)) return;
  liftPen();
  if (tested_ != StrokeTested::no) listStroke(at);
  if (parts_.switches.toleranceTest) keepStroke();
  renewEscape();
}

void Canvas::liftPen() {
  if (ink_ == Ink::flowing) ink_ = Ink::dry;
}

void Canvas::listStroke(TwipsPoint pen) {
  const TwipsSize screen = guides_.screen();
  view_.setResultsList(resultLines(stroke_.samples(), line_, screen, tolerance_.percent));
  show(CanvasPanel::resultsList, true);
  results_.store(stroke_.samples(), line_, screen);
  if (fixedSequence_) advanceFixedSequence();
  placeResultsList(pen);
}

// Beside the pen, but never on the tools, nor on what tells the line to draw next.
void Canvas::placeResultsList(TwipsPoint pen) {
  const TwipsSize screen = guides_.screen();
  const TwipsSize size = view_.sizeOf(CanvasPanel::resultsList);
  auto needed = view_.tools();
  if (fixedSequence_) {
    needed.push_back(aroundLine(guides_, line_.index));
    needed.push_back({captionCorner(), view_.sizeOf(CanvasPanel::caption)});
  }
  view_.place(CanvasPanel::resultsList,
              clearOf(placeBeside(pen, size, screen), size, screen, needed));
}

void Canvas::advanceFixedSequence() {
  if (line_.index >= GuideLines::count - 1) {
    endFixedSequence();
    showResults();
    return;
  }
  ++line_.index;
  markNextLine();
}

// Over the grid, and away again from a line that is done.
void Canvas::markNextLine() {
  picture_.removeLayer(Picture::Layer::nextLine);
  picture_.setLayer(Picture::Layer::nextLine);
  const Segment line = guides_.whole(line_.index);
  picture_.line(line.from, line.to, haloColour, haloWidth);
  chgrid(line_.index + 1);
  picture_.setLayer(Picture::Layer::drawing);
  view_.setCaption(filled(say("canvas", "%1, from edge to edge"), {lineTitle(line_.index)}));
  view_.place(CanvasPanel::caption, captionCorner());
  show(CanvasPanel::caption, true);
}

// In the middle of a field on the other half of the screen, above the tools.
TwipsPoint Canvas::captionCorner() const {
  const bool vertical = GuideLines::orientation(line_.index) == Orientation::vertical;
  const bool inFirstHalf =
      line_.index % GuideLines::perOrientation < GuideLines::perOrientation / 2;
  const int away = inFirstHalf ? 2 : 0;
  const int column = vertical ? away : 1;
  const int row = vertical ? 1 : away;
  const TwipsSize size = view_.sizeOf(CanvasPanel::caption);
  return {(guides_.V(column) + guides_.V(column + 1) - size.width) / 2,
          (guides_.H(row) + guides_.H(row + 1) - size.height) / 2};
}

void Canvas::endFixedSequence() {
  fixedSequence_ = false;
  picture_.removeLayer(Picture::Layer::nextLine);
  show(CanvasPanel::caption, false);
}

void Canvas::showgrid() {
  picture_.setLayer(Picture::Layer::grid);
  for (const int index : GuideLines::drawingOrder) {
    const Segment line = guides_.inGrid(index);
    picture_.line(line.from, line.to, gridColour, gridWidth);
  }
  for (const TwipsPoint target : guides_.targets())
    picture_.circle(target, targetRadius, targetColour, gridWidth);
  picture_.setLayer(Picture::Layer::drawing);
  foreground_ = strayed;
  showerrline();
}

void Canvas::chgrid(int number) {
  if (number < 1 || number > GuideLines::count) return;
  const int index = number - 1;
  const Segment line = guides_.whole(index);
  picture_.line(line.from, line.to, nextLineColour, gridWidth);
  line_.position = roundedTwips(guides_.position(index));
}

void Canvas::showerrline() {
  if (!tolerance_.isShown) return;
  const Bands bands = bandsOf(guides_.screen(), tolerance_.percent);
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
  const Colour foreground = foreground_;
  picture_.removeLayer(Picture::Layer::toleranceLines);
  if (parts_.switches.grid) showerrline();
  if (ink_ == Ink::flowing) foreground_ = foreground;
}

void Canvas::showline() {
  if (ink_ == Ink::none) ink_ = Ink::dry;
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
  const bool goesOn = action == CanvasAction::escape || action == CanvasAction::leave ||
                      action == CanvasAction::toggleHelp;
  if (viewing_ && !goesOn) return;
  carryOut(action);
  renewEscape();
}

void Canvas::carryOut(CanvasAction action) {
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
      pen_.colour = nextColour(pen_.colour, canvasPaper);
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
  liftPen();
  if (viewing_) {
    endViewing(true);
  } else if (isVisible(CanvasPanel::menu) || isVisible(CanvasPanel::resultsTable)) {
    show(CanvasPanel::menu, false);
    show(CanvasPanel::resultsTable, false);
  } else if (ink_ == Ink::none) {
    leave();
  } else {
    clearDrawing();
  }
}

// Nothing is deleted: the strokes are here again when the screen is entered the next time.
void Canvas::leave() {
  endStroke();
  parts_.files.finish();
  goAtOnce();
}

void Canvas::goAtOnce() {
  bannerTimer_->stop();
  viewTimer_->stop();
  view_.leave();
}

void Canvas::clearDrawing() {
  liftPen();
  show(CanvasPanel::resultsList, false);
  parts_.switches.recorded.strokes = 0;
  parts_.switches.recorded.unsaved = false;
  held_.reset();
  tell(parts_.files.clear());
  clearPicture();
}

void Canvas::clearPicture() {
  ink_ = Ink::none;
  shownStrokes_ = 0;
  picture_.clear();
  if (parts_.switches.grid) showgrid();
  // The line that is to be drawn next stays marked.
  if (fixedSequence_) markNextLine();
}

void Canvas::startFixedSequence() {
  fixedSequence_ = false;
  parts_.switches.grid = true;
  clearDrawing();
  parts_.switches.toleranceTest = true;
  line_.index = 0;
  fixedSequence_ = true;
  markNextLine();
}

void Canvas::toggleGrid() {
  parts_.switches.grid = !parts_.switches.grid;
  if (parts_.switches.grid) {
    showgrid();
    return;
  }
  if (ink_ != Ink::none) {
    endStroke();
    if (!parts_.prompt.confirm(parts_.messages.at(clearAllQuestion))) return;
  }
  clearPicture();
}

void Canvas::undo() {
  if (!parts_.switches.toleranceTest || !held_) return;
  // As it was drawn, whatever the pen has become and whatever has been touched since.
  const Stroke stroke = *std::exchange(held_, std::nullopt);
  --parts_.switches.recorded.strokes;
  shownStrokes_ = std::max(shownStrokes_ - 1, 0);
  // A stroke that was taken back must not come back after a crash.
  parts_.files.remove(parts_.switches.recorded.strokes);
  foreground_ = canvasPaper;
  TwipsPoint from = stroke.samples.front();
  picture_.point(from, foreground_, stroke.width);
  for (const TwipsPoint sample : stroke.samples)
    picture_.line(std::exchange(from, sample), sample, foreground_, stroke.width);
}

void Canvas::showResults() {
  if (isVisible(CanvasPanel::resultsTable)) return;
  show(CanvasPanel::resultsList, false);
  view_.setResultsTable(results_.sheet(tolerance_.percent));
  show(CanvasPanel::resultsTable, true);
}

void Canvas::setTolerance(int tenths) {
  tolerance_.percent = {static_cast<float>(tenths) / 10};
  view_.showTolerance(tolerance_.percent);
  if (tolerance_.isShown) renewToleranceLines();
}

void Canvas::setToleranceView(bool on) {
  tolerance_.isShown = on;
  renewToleranceLines();
}

}  // namespace touch
