#include "drawing/canvas_tables.h"

#include <algorithm>
#include <iterator>

namespace touch {

namespace {

struct KeyBinding {
  int code;
  CanvasAction action;
};

constexpr KeyBinding keys[] = {
    {27, CanvasAction::escape},       {'1', CanvasAction::thin},
    {'2', CanvasAction::thick},       {'C', CanvasAction::nextColour},
    {'D', CanvasAction::undo},        {'F', CanvasAction::fixedSequence},
    {'G', CanvasAction::toggleGrid},  {'L', CanvasAction::lineMode},
    {'P', CanvasAction::pointMode},   {'S', CanvasAction::save},
    {'T', CanvasAction::showResults}, {'V', CanvasAction::view},
    {112, CanvasAction::toggleHelp},
};

struct HelpEntry {
  std::string_view key;
  std::size_t message;
  CanvasAction action;
};

// The brace that closes the G is what users have always seen there.
constexpr HelpEntry help[] = {
    {" [ F1  ] : ", 34, CanvasAction::toggleHelp},    {" [ ESC ] : 1 - ", 35, CanvasAction::clear},
    {"         : 2 - ", 36, CanvasAction::leave},     {" [  1  ] : ", 37, CanvasAction::thin},
    {" [  2  ] : ", 38, CanvasAction::thick},         {" [  C  ] : ", 39, CanvasAction::nextColour},
    {" [  G  } : ", 40, CanvasAction::toggleGrid},    {" [  L  ] : ", 41, CanvasAction::lineMode},
    {" [  P  ] : ", 42, CanvasAction::pointMode},     {" [  S  ] : ", 43, CanvasAction::save},
    {" [  T  ] : ", 44, CanvasAction::showResults},   {" [  V  ] : ", 45, CanvasAction::view},
    {" [  F  ] : ", 46, CanvasAction::fixedSequence},
};

}  // namespace

std::optional<CanvasAction> actionOfKey(int code) {
  const auto* found = std::find_if(std::begin(keys), std::end(keys),
                                   [code](const KeyBinding& key) { return key.code == code; });
  if (found == std::end(keys)) return std::nullopt;
  return found->action;
}

std::vector<std::string> helpLines(const MessageTable& messages) {
  std::vector<std::string> lines;
  for (const HelpEntry& entry : help)
    lines.push_back(std::string(entry.key) + messages.at(entry.message));
  return lines;
}

std::optional<CanvasAction> actionOfHelpLine(std::size_t line) {
  if (line >= std::size(help)) return std::nullopt;
  return help[line].action;
}

}  // namespace touch
