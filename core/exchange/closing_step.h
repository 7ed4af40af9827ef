#pragma once

#include <optional>
#include <string>

#include "core/session.h"

namespace touch {

/// What the main window shows when the system ends.
struct ShownAtClosing {
  std::string listedController;  ///< at the list's current position; empty: the list is empty
  std::string firmware;          ///< the firmware label
  std::optional<ParameterWord>
      parameter01;  ///< the two parameter labels; nothing: they show no word
};

/// The closing step: locks the controller's parameters with "PL". Before that, the newer model with
/// firmware 30100 gets its parameter 01 written once more, as the window shows it; when it shows
/// none, the word is read first, and a controller that does not answer that gets none. A driver
/// library that lacks an operation for that part still sends the lock. Returns the word that is
/// shown then. Says nothing to the user, since the system is ending. Without a controller there is
/// nothing to lock.
std::optional<ParameterWord> plcmd(const Access& access, const ShownAtClosing& shown);

}  // namespace touch
