#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/messages/messages.h"
#include "drawing/canvas_tables.h"
#include "drawing/drawing_switches.h"
#include "serial/rawdrawing/raw_drawing.h"
#include "support/prompt.h"
#include "support/text/language.h"

namespace touch {

/// A line of the raw drawing's help list, and what its key does.
struct RawDrawingHelp {
  std::string text;
  CanvasAction action;
};
/// Those of the canvas's keys that mean something here.
std::vector<RawDrawingHelp> rawDrawingHelp(const MessageTable& messages);

inline constexpr std::string_view rawDrawingNotice = marked("rawdrawing", "F1 for Hot Key Help");

/// The raw drawing's hot keys: pen, grid, help, clear and leave, as the canvas has them.
class RawDrawingTools {
 public:
  /// What they work on; all of it outlives the tools.
  struct Parts {
    RawDrawing& drawing;
    Surface& surface;
    Prompt& prompt;
    const MessageTable& messages;
    DrawingSwitches& switches;      ///< shared with the canvas
    std::function<void()> onLeave;  ///< run when the user wants to leave
  };
  explicit RawDrawingTools(Parts parts);
  ~RawDrawingTools() { parts_.drawing.onCleared = {}; }
  RawDrawingTools(const RawDrawingTools&) = delete;
  RawDrawingTools& operator=(const RawDrawingTools&) = delete;

  /// The screen is shown, with the grid if the last drawing screen was left so.
  void activate();
  void perform(CanvasAction action);
  bool helpIsShown() const { return helpShown_; }

 private:
  bool isDrawnOn() const { return parts_.drawing.reports() > cleared_; }
  void escape();
  void clear();
  void toggleGrid();
  void drawGrid();

  Parts parts_;
  bool helpShown_ = false;
  std::uint64_t cleared_ = 0;  ///< reports that were drawn before the last clearing
};

}  // namespace touch
