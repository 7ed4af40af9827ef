#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "serial/scripts/script.h"

namespace touch {

/// Hears a script as a controller would, without running it: all that its steps send, one after the
/// other, however often a loop is repeated and whenever an answer is given. Where it cannot know
/// how often or when, it takes all of it for possible.
class ScriptListener {
 public:
  /// The first step with which the controller may have heard a command that changes it; null: none.
  const ScriptStep* firstChange(const std::vector<ScriptStep>& steps);

 private:
  /// What may have come of a command, from its first byte on; empty: nothing of one that matters.
  using Begun = std::set<std::string>;

  const ScriptStep* walk(const std::vector<ScriptStep>& steps);
  const ScriptStep* hearAnswers();
  static bool hear(Begun& begun, std::span<const std::uint8_t> bytes);

  Begun now_;
  std::map<std::size_t, Begun> anew_;  ///< where a loop begins again, by place
  bool hasMore_ = false;               ///< the last walk found more there than the one before
  std::vector<const ScriptStep*> answers_;
};

}  // namespace touch
