#include "console/pins/pin_editor.h"

#include <algorithm>
#include <utility>

#include "support/prompt.h"
#include "support/text/language.h"

namespace touch {

void PinEditor::setType(SensorType type) {
  definition_.type = type;
  const std::size_t count = wireNames(type).size();
  while (definition_.wires.size() < count) {
    const int next = static_cast<int>(definition_.wires.size());
    definition_.wires.push_back({next, next});
  }
  definition_.wires.resize(count);
}

std::vector<PinProblem> PinEditor::problems() const {
  return checkPins(access_.session.messages, definition_);
}

Notice PinEditor::read() {
  if (isEdited() && !prompt_.proceed(say("pins", "Read again? Your changes to the pins are lost.")))
    return say("pins", "Nothing was read; your changes are kept.");
  auto read = readPins(access_);
  if (!read) {
    prompt_.message(read.error().reason);
    if (!read.error().undefined) return Notice::error(read.error().reason);
  } else {
    definition_ = std::move(*read);
    settle();
  }
  // What an update replaced on another controller is no way back for this one.
  if (std::exchange(controller_, access_.session.controllerName) != controller_) old_.clear();
  return read ? Notice::success(say("pins", "The pin definition is read."))
              : Notice(say("pins",
                           "The controller holds no pin definition; what you write is its first."));
}

Result<void, std::string> PinEditor::mayWrite() const {
  if (controller_ == access_.session.controllerName) return {};
  return tl::unexpected(
      filled(say("pins", "Nothing was written: these are not the pins of %1. Read them first."),
             {access_.session.controllerName}));
}

Notice PinEditor::update() {
  if (const auto may = mayWrite(); !may) return Notice::error(may.error());
  const PinsWrite write = updatePins(access_, prompt_, backup_, definition_);
  const bool isPutBack = write.putBack && write.putBack->complete();
  if (write.end == PinsEnd::done || (write.end == PinsEnd::brokenOff && !isPutBack)) {
    remember(write.report.oldWords());
  }
  if (write.end == PinsEnd::done) settle();
  return outcome(write);
}

void PinEditor::remember(const std::vector<WordValue>& before) {
  for (const WordValue& word : before) {
    const auto same = [&word](const WordValue& kept) { return kept.address == word.address; };
    if (std::none_of(old_.begin(), old_.end(), same)) old_.push_back(word);
  }
}

Notice PinEditor::putBack() {
  if (const auto may = mayWrite(); !may) return Notice::error(may.error());
  const PinsWrite write = putBackPins(access_, prompt_, backup_, old_);
  if (write.end == PinsEnd::done) {
    old_.clear();
    if (auto now = readPins(access_)) definition_ = std::move(*now);
    settle();
  }
  return outcome(write);
}

Notice PinEditor::outcome(const PinsWrite& write) {
  switch (write.end) {
    case PinsEnd::done:
      return Notice::success(say("pins", "The pin definition is written."));
    case PinsEnd::declined:
      return say("pins", "Nothing was written.");
    case PinsEnd::invalid:
    case PinsEnd::typeUnreadable:
      return Notice::error(filled(say("pins", "Nothing was written: %1"), {write.reason}));
    case PinsEnd::brokenOff:
      break;
  }
  return Notice::error(say("pins", "The write broke off.") + ' ' + write.reason);
}

}  // namespace touch
