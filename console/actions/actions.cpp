#include "console/actions/actions.h"

#include <algorithm>
#include <utility>

#include "core/driver/driver.h"
#include "support/prompt.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

Actions::Actions(const Access& access, Prompt& prompt, MainModel& model)
    : access_(access),
      prompt_(prompt),
      model_(model),
      gate_(access.clock, [this] { show(std::nullopt); }) {}

Notice Actions::perform(const std::string& what, const Answer& action) {
  if (!gate_.isOpen()) return say("main", "The main window is busy. Try again when it is through.");
  if (const auto why = model_.selected ? refusedForDebugger(model_.selectedName()) : std::nullopt) {
    // A control that was used shows again what holds.
    model_.changed(Part::settings);
    model_.changed(Part::parameters);
    return *why;
  }
  Notice outcome;
  const auto lacked = hold({what}, [this, &action, &outcome] {
    if (!model_.selected) {
      outcome = Notice::error(say("main", "There is no controller to work with."));
      model_.tell(outcome);
      prompt_.message(access_.session.messages[Message::noDevice]);
      return;
    }
    outcome = action();
    model_.changed(Part::settings);
    model_.changed(Part::parameters);
    model_.tell(outcome);
  });
  return lacked ? *lacked : outcome;
}

void Actions::examine(const std::string& what, const Answer& look) {
  if (!gate_.isOpen() || refusedForDebugger()) return;
  hold({what}, [this, &look] { model_.tell(look()); });
}

void Actions::progress(const std::string& what) {
  Work work = model_.work.value_or(Work());
  work.what = what;
  show(work);
}

std::optional<std::string> Actions::hold(const Work& work, const Step& step) {
  std::optional<std::string> lacked;
  gate_.run([&] {
    lacking_.clear();
    show(work);
    attempt(step);
    // Once the program has ended nothing else is done.
    if (!gate_.isShut()) lacked = tellWhatLacks();
  });
  return lacked;
}

void Actions::attempt(const Step& step) {
  try {
    step();
  } catch (const MissingOperation& missing) {
    lacking_.insert(missing.operation());
  }
}

void Actions::begin(const std::string& what, const LastingWindow& window) {
  const auto opening = [&] {
    show(Work{what});
    window.open();
  };
  gate_.begin(opening, window.end);
}

bool Actions::available(std::span<const std::string_view> operations) {
  for (const std::string_view missing : access_.driver.missing())
    if (std::ranges::find(operations, missing) != operations.end()) lacking_.emplace(missing);
  return !tellWhatLacks();
}

std::optional<std::string> Actions::tellWhatLacks() {
  if (lacking_.empty()) return std::nullopt;
  std::string names;
  for (const std::string& operation : std::exchange(lacking_, {}))
    names += (names.empty() ? "" : ", ") + operation;
  const std::string text = filled(
      say("main", "The touch driver library lacks %1. What needs that was not done."), {names});
  // A control that was used shows again what holds.
  model_.changed(Part::settings);
  model_.tell(text);
  prompt_.message(text);
  return text;
}

void Actions::debuggerOpened(DebuggerWindow debugger) {
  debugged_ = {access_.session.controllerName, std::move(debugger)};
}

std::optional<std::string> Actions::debuggerEnded() {
  const auto debugged = std::exchange(debugged_, std::nullopt);
  if (!debugged) return std::nullopt;
  return debugged->controller;
}

std::optional<std::string> Actions::refusedForDebugger(
    const std::optional<std::string>& controller) {
  if (!debugged_) return std::nullopt;
  std::string why;
  if (debugged_->window.isBusy()) {
    why = say("main", "The serial debugger waits for an answer. Try again when it is through.");
  } else if (controller && *controller != debugged_->controller) {
    return std::nullopt;
  } else if (debugged_->controller.empty()) {
    why = say("main", "The serial debugger has a serial port. Leave it first with \"Quit\".");
  } else {
    why =
        filled(say("main", "The serial debugger has the port of %1. Leave it first with \"Quit\"."),
               {toUtf8(debugged_->controller)});
  }
  model_.tell(why);
  return why;
}

void Actions::show(const std::optional<Work>& work) {
  model_.work = work;
  model_.changed(Part::work);
}

}  // namespace touch
