#pragma once

#include <QColor>
#include <QPalette>

namespace touch {

/// Of words that say whether something passed: green or red, light on a dark window and dark on a
/// light one.
inline QColor verdictColour(bool passed, const QPalette& window) {
  const bool dark = window.color(QPalette::Base).lightness() < 128;
  if (passed) return dark ? QColor(143, 220, 143) : QColor(0, 100, 0);
  return dark ? QColor(255, 138, 128) : QColor(200, 0, 0);
}

}  // namespace touch
