#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/messages/messages.h"
#include "drawing/surface.h"

namespace touch {

/// What the user can have the canvas do.
enum class CanvasAction : std::uint8_t {
  escape,         ///< puts panels away, else clears, else leaves
  clear,          ///< clears the drawing and the working files
  leave,          ///< back to the main window
  thin,           ///< width 1
  thick,          ///< width 2
  nextColour,     ///< the pen's next colour
  undo,           ///< takes the last recorded stroke back
  fixedSequence,  ///< the ten guide lines one after the other
  toggleGrid,     ///< guide lines on or off
  lineMode,       ///< joined lines
  pointMode,      ///< separate points
  save,           ///< saves the recorded strokes
  showResults,    ///< shows the results table
  view,           ///< draws a saved drawing
  toggleHelp,     ///< help panel on or off
};

/// What a key does, by its key code: letters and digits have their upper-case character's code, ESC
/// 27, F1 112.
std::optional<CanvasAction> actionOfKey(int code);

/// The help panel's lines, one for each key that the user is told of.
std::vector<std::string> helpLines(const MessageTable& messages);

/// What a line of the help panel does when it is tapped: what its key does, the two lines of ESC
/// each its part.
std::optional<CanvasAction> actionOfHelpLine(std::size_t line);

/// On this grey black, white, yellow, red and blue stand out alike.
inline constexpr Colour canvasPaper = {0xB4, 0xB4, 0xB4};

/// An entry of the right-button menu; its text is message `message`.
struct CanvasMenuEntry {
  std::size_t message;
  CanvasAction action;
};

inline constexpr std::array<CanvasMenuEntry, 11> canvasMenu = {{
    {35, CanvasAction::clear},
    {39, CanvasAction::nextColour},
    {37, CanvasAction::thin},
    {38, CanvasAction::thick},
    {41, CanvasAction::lineMode},
    {42, CanvasAction::pointMode},
    {40, CanvasAction::toggleGrid},
    {43, CanvasAction::save},
    {45, CanvasAction::view},
    {44, CanvasAction::showResults},
    {36, CanvasAction::leave},
}};

/// "Clear All Drawing ?"
inline constexpr std::size_t clearAllQuestion = 21;

}  // namespace touch
