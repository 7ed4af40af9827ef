#pragma once

#include <optional>

#include "drawing/canvas_tables.h"

class QKeyEvent;

namespace touch {

/// The upper-case letter or the digit that a key stands for on whatever keyboard: what it types,
/// where that is one; else what is on the same place of an American keyboard, for layouts that have
/// other letters (Cyrillic, Greek …) or type their digits with Shift (French). 0 for all other
/// keys.
int letterOrDigit(const QKeyEvent& key);

/// What a key does on a canvas, on whatever keyboard. With Ctrl, Alt or Meta it is for somebody
/// else.
std::optional<CanvasAction> canvasActionOf(const QKeyEvent& key);

}  // namespace touch
