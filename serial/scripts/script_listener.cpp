#include "serial/scripts/script_listener.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "serial/commands/command_sets.h"

namespace touch {

namespace {

constexpr char frameStart = '\x01';
constexpr char frameEnd = '\r';
// An E02 packet that resets begins so and ends with its last letter. How long it is does not count:
// numbers of loops are not in their places yet.
constexpr std::string_view resetPacket = "UR";
constexpr char packetEnd = 'S';
constexpr std::size_t longestWord = 2;

bool writes(std::string_view begun) {
  return begun.size() > longestWord && writesParameter(begun.substr(1, longestWord));
}

/// Whether it has just become a command that changes the controller.
bool changesController(std::string_view begun) {
  if (begun.starts_with(resetPacket)) return begun.back() == packetEnd;
  if (!begun.starts_with(frameStart) || !begun.ends_with(frameEnd)) return false;
  return writes(begun) || resetsController(begun.substr(1, begun.size() - 2));
}

/// Keeps as much of it as decides whether it can still become one.
void keepDecisive(std::string& begun) {
  if (begun.starts_with(resetPacket)) {
    begun.resize(resetPacket.size());
  } else if (begun.front() != frameStart) {
    begun.assign(begun.back() == resetPacket.front() ? 1 : 0, resetPacket.front());
  } else if (writes(begun)) {
    begun.resize(1 + longestWord);
  } else if (begun.back() == frameEnd || begun.size() > 1 + longestWord) {
    begun.clear();
  }
}

}  // namespace

const ScriptStep* ScriptListener::firstChange(const std::vector<ScriptStep>& steps) {
  do {
    hasMore_ = false;
    if (const ScriptStep* const change = walk(steps)) return change;
  } while (hasMore_);
  return nullptr;
}

const ScriptStep* ScriptListener::walk(const std::vector<ScriptStep>& steps) {
  now_ = {std::string()};
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const ScriptStep& step = steps[i];
    if (const auto* const send = std::get_if<SendStep>(&step.action)) {
      // Numbers of loops need not stand in their places: no command's word has two such digits.
      if (const auto bytes = parseBytes(send->bytes); bytes && hear(now_, *bytes)) return &step;
    } else if (std::holds_alternative<AnswerStep>(step.action)) {
      if (std::ranges::find(answers_, &step) == answers_.end()) answers_.push_back(&step);
    } else if (std::holds_alternative<RepeatStep>(step.action)) {
      now_.insert(anew_[i].begin(), anew_[i].end());
    } else if (const auto* const end = std::get_if<EndStep>(&step.action)) {
      Begun& anew = anew_[end->repeat];
      const std::size_t known = anew.size();
      anew.insert(now_.begin(), now_.end());
      hasMore_ = hasMore_ || anew.size() > known;
    }
    if (const ScriptStep* const change = hearAnswers()) return change;
  }
  return nullptr;
}

/// Each answer may be given here, any number of times and in any order.
const ScriptStep* ScriptListener::hearAnswers() {
  std::size_t known = 0;
  while (known < now_.size()) {
    known = now_.size();
    for (const ScriptStep* const step : answers_) {
      Begun answered = now_;
      if (hear(answered, std::get<AnswerStep>(step->action).answer)) return step;
      now_.merge(answered);
    }
  }
  return nullptr;
}

/// True when the controller is changed by what it hears.
bool ScriptListener::hear(Begun& begun, std::span<const std::uint8_t> bytes) {
  Begun after;
  for (std::string command : begun) {
    for (const std::uint8_t byte : bytes) {
      const char letter = static_cast<char>(byte);
      if (letter == frameStart) command.clear();
      command += letter;
      if (changesController(command)) return true;
      keepDecisive(command);
    }
    after.insert(std::move(command));
  }
  begun = std::move(after);
  return false;
}

}  // namespace touch
