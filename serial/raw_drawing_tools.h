#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/messages.h"
#include "linetest/canvas_tables.h"
#include "serial/raw_drawing.h"

namespace touch {

/// A line of the raw drawing's help list, and what its key does.
struct RawDrawingHelp {
  std::string text;
  CanvasAction action;
};
/// Those of the canvas's keys that mean something here.
std::vector<RawDrawingHelp> rawDrawingHelp(const MessageTable& messages);

inline constexpr std::string_view rawDrawingNotice = "F1 for Hot Key Help";

/// The raw drawing's hot keys: pen, grid, help, clear and leave.
class RawDrawingTools {
 public:
  /// `onLeave` is run when the user wants to leave. All that is given outlives the tools.
  RawDrawingTools(RawDrawing& drawing, Surface& surface, TwipsSize area,
                  std::function<void()> onLeave)
      : drawing_(drawing), surface_(surface), area_(area), onLeave_(std::move(onLeave)) {}

  /// `code` as actionOfKey() has it; others do nothing.
  void keyDown(int code);
  void perform(CanvasAction action);
  bool helpIsShown() const { return helpShown_; }
  bool gridIsShown() const { return gridShown_; }
  /// Wipes the drawing but for the grid.
  void clear();

 private:
  void escape();
  void drawGrid();

  RawDrawing& drawing_;
  Surface& surface_;
  TwipsSize area_;
  std::function<void()> onLeave_;
  bool helpShown_ = false;
  bool gridShown_ = false;
  std::uint64_t cleared_ = 0;  ///< reports that were drawn before the last clearing
};

}  // namespace touch
