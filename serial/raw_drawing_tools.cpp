#include "serial/raw_drawing_tools.h"

#include "linetest/guide_lines.h"
#include "linetest/pen.h"

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

void RawDrawingTools::keyDown(int code) {
  if (const auto action = actionOfKey(code)) perform(*action);
}

void RawDrawingTools::perform(CanvasAction action) {
  Pen& pen = drawing_.pen;
  switch (action) {
    case CanvasAction::escape:
      escape();
      break;
    case CanvasAction::clear:
      clear();
      break;
    case CanvasAction::leave:
      onLeave_();
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
      gridShown_ = !gridShown_;
      gridShown_ ? drawGrid() : clear();
      break;
    case CanvasAction::toggleHelp:
      helpShown_ = !helpShown_;
      break;
    default:
      break;
  }
}

void RawDrawingTools::escape() {
  if (helpShown_) {
    helpShown_ = false;
  } else if (drawing_.reports() > cleared_) {
    clear();
  } else {
    onLeave_();
  }
}

void RawDrawingTools::clear() {
  drawing_.clearDrawing();
  cleared_ = drawing_.reports();
  if (gridShown_) drawGrid();
}

void RawDrawingTools::drawGrid() {
  const GuideLines guides(area_);
  for (const int line : GuideLines::drawingOrder) {
    const auto [from, to] = guides.inGrid(line);
    surface_.line(from, to, lightGrey, gridWidth);
  }
  constexpr float targetRadius = 250;
  for (const TwipsPoint target : guides.targets())
    surface_.circle(target, targetRadius, white, gridWidth);
}

}  // namespace touch
