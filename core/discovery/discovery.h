#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/session.h"

namespace touch {

class Prompt;

/// The controllers that the driver knows of and that are ours, in driver order; at most 21.
struct ControllerList {
  static constexpr std::size_t limit = 21;
  std::vector<std::string> names{};
  std::optional<std::size_t> answered{};   ///< the one that answered the probe and was chosen
  std::optional<std::size_t> lastAsked{};  ///< the one that was probed last; nothing: none was

  /// Where the name stands in the list.
  std::optional<std::size_t> find(const std::string& name) const;
};

/// What the driver lists, in its order, until 21 of ours are found.
struct KnownControllers {
  int count = 0;                      ///< as the driver says; 0 to 255
  std::vector<std::string> served{};  ///< ours
  std::vector<std::string> others{};  ///< other makers'
};
KnownControllers knownControllers(Driver& driver);

/// Told the name of each controller before it is probed, so that the user sees what the waiting is
/// for; returns false to break the search off.
using ProbeProgress = std::function<bool(const std::string& name)>;

/// Builds the list and chooses the first controller that answers "UT" with more than 5 bytes; each
/// gets two tries. `preferred`, when it is listed, is asked before the others. The session's
/// controller name is then the chosen one's, or the last one tried. Message 0 when the driver knows
/// none.
ControllerList getctrname(const Access& access, Prompt& prompt,
                          const ProbeProgress& progress = nullptr,
                          const std::string& preferred = {});

/// The list alone, without asking the controllers; message 0 when the driver knows none.
ControllerList getctrnameo(const Access& access, Prompt& prompt);

/// True for names of controllers that this system serves: "RS232" or "USB" in it, and "DEVICE"
/// after its third character.
bool isServedName(std::string_view name);

}  // namespace touch
