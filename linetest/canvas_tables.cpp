#include "linetest/canvas_tables.h"

#include <algorithm>

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
};

// The brace that closes the G is what users have always seen there.
constexpr HelpEntry help[] = {
    {" [ F1  ] : ", 34}, {" [ ESC ] : 1 - ", 35}, {"         : 2 - ", 36}, {" [  1  ] : ", 37},
    {" [  2  ] : ", 38}, {" [  C  ] : ", 39},     {" [  G  } : ", 40},     {" [  L  ] : ", 41},
    {" [  P  ] : ", 42}, {" [  S  ] : ", 43},     {" [  T  ] : ", 44},     {" [  V  ] : ", 45},
    {" [  F  ] : ", 46},
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

}  // namespace touch
