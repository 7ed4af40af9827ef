#pragma once

#include <QColor>
#include <QPalette>
#include <optional>

namespace touch {

/// All colours of the windows. A name says what a colour is for; "soft" ones are grounds that text
/// of their namesake stands on.
struct Colours {
  QColor ground;  ///< of a window
  QColor card;    ///< what things on the ground lie on
  QColor shade;   ///< of a card's parts: grooves, pressed buttons
  QColor line;    ///< around cards and controls
  QColor edge;    ///< of what can be used: 3 to 1 against its ground
  QColor text;
  QColor quiet;  ///< text that explains, and what cannot be used
  QColor accent;
  QColor onAccent;
  QColor accentSoft;
  QColor good;
  QColor goodSoft;
  QColor remark;
  QColor remarkSoft;
  QColor problem;
  QColor problemSoft;
};

/// The light ones or the dark ones, whichever `window` is.
const Colours& coloursOf(const QPalette& window);

/// Gives the whole program the light or the dark colours; without a choice those of the system's
/// theme, and they change with it.
void applyTheme(std::optional<bool> dark);

}  // namespace touch
