#include "serial/rawdrawing/raw_drawing_tools.h"

#include <utility>

#include "drawing/guide_lines.h"
#include "drawing/pen.h"

namespace touch {

namespace {

constexpr Colour background = palette[0];
constexpr int gridWidth = 2;

/// Strokes are neither tested nor kept here.
bool meansSomething(CanvasAction action) {
  switch (action) {
    case CanvasAction::undo:
    case CanvasAction::fixedSequence:
    case CanvasAction::save:
    case CanvasAction::showResults:
    case CanvasAction::view:
      return false;
    default:
      return true;
  }
}

}  // namespace

std::vector<RawDrawingHelp> rawDrawingHelp(const MessageTable& messages) {
  const auto lines = helpLines(messages);
  std::vector<RawDrawingHelp> help;
  for (std::size_t line = 0; line < lines.size(); ++line) {
    const auto action = actionOfHelpLine(line);
    if (action && meansSomething(*action)) help.push_back({lines[line], *action});
  }
  return help;
}

RawDrawingTools::RawDrawingTools(Parts parts) : parts_(std::move(parts)) {
  parts_.drawing.onCleared = [this] { activate(); };
}

void RawDrawingTools::activate() {
  if (parts_.switches.grid) drawGrid();
}

void RawDrawingTools::perform(CanvasAction action) {
  Pen& pen = parts_.drawing.pen;
  switch (action) {
    case CanvasAction::escape:
      escape();
      break;
    case CanvasAction::clear:
      clear();
      break;
    case CanvasAction::leave:
      parts_.onLeave();
      break;
    case CanvasAction::thin:
      pen.width = 1;
      break;
    case CanvasAction::thick:
      pen.width = 2;
      break;
    case CanvasAction::nextColour:
      pen.colour = nextColour(pen.colour, background);
      break;
    case CanvasAction::lineMode:
      pen.mode = PenMode::lines;
      break;
    case CanvasAction::pointMode:
      pen.mode = PenMode::points;
      break;
    case CanvasAction::toggleGrid:
      toggleGrid();
      break;
    case CanvasAction::toggleHelp:
      helpShown_ = !helpShown_;
      break;
    default:
      break;
  }
}

void RawDrawingTools::escape() {
  if (isDrawnOn()) {
    clear();
  } else {
    parts_.onLeave();
  }
}

void RawDrawingTools::clear() {
  parts_.drawing.clearDrawing();
  cleared_ = parts_.drawing.reports();
}

void RawDrawingTools::toggleGrid() {
  parts_.switches.grid = !parts_.switches.grid;
  if (parts_.switches.grid) {
    drawGrid();
  } else if (!isDrawnOn() || parts_.prompt.confirm(parts_.messages.at(clearAllQuestion))) {
    clear();
  }
}

void RawDrawingTools::drawGrid() {
  const GuideLines guides(parts_.drawing.area());
  for (const int line : GuideLines::drawingOrder) {
    const auto [from, to] = guides.inGrid(line);
    parts_.surface.line(from, to, lightGrey, gridWidth);
  }
  constexpr float targetRadius = 250;
  for (const TwipsPoint target : guides.targets())
    parts_.surface.circle(target, targetRadius, white, gridWidth);
}

}  // namespace touch
