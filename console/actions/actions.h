#pragma once

#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "console/actions/main_model.h"
#include "core/session.h"
#include "support/gate.h"

namespace touch {

class Prompt;

/// A window that an action opens; the action lasts until that window has ended.
struct LastingWindow {
  std::function<void()> open;
  std::function<void()> end;  ///< asks it to end soon
};

/// The debugger while it is open.
struct DebuggerWindow {
  std::function<bool()> isBusy;  ///< it waits for an answer, or has a message box up
  std::function<void()> end;
};

/// Runs the main window's actions, one at a time, and has the model show what each waits for and
/// what came of it. What is asked for while another runs is dropped, as is what the open debugger
/// stands in the way of; what the driver library lacks is told.
class Actions {
 public:
  using Step = std::function<void()>;
  using Answer = std::function<Notice()>;

  Actions(const Access& access, Prompt& prompt, MainModel& model);

  /// An action on the controller. Shows the line that it answers with, and returns it, or why
  /// nothing was done.
  Notice perform(const std::string& what, const Answer& action);
  /// Something that needs no controller; shows the line that it answers with.
  void examine(const std::string& what, const Answer& look);
  /// Shows the line of something that needed no action.
  void tell(const Notice& notice) { model_.tell(notice); }
  /// What the running action waits for now.
  void progress(const std::string& what);

  /// Runs `step` while nothing else starts. What the driver library lacked for it is told then, and
  /// returned.
  std::optional<std::string> hold(const Work& work, const Step& step);
  /// Runs a part of what is held, which ends where it needs an operation that the driver library
  /// lacks.
  void attempt(const Step& step);
  /// Begins an action that lasts as long as `window`, until the gate is told of its end.
  void begin(const std::string& what, const LastingWindow& window);
  /// True when the driver library has all of them; else the user is told.
  bool available(std::span<const std::string_view> operations);

  /// The debugger has the current controller's port.
  void debuggerOpened(DebuggerWindow debugger);
  /// Returns the controller whose port the debugger had, if it was open.
  std::optional<std::string> debuggerEnded();
  /// The reason, which is shown as well, when the debugger stands in the way of an action on
  /// `controller`; without one on all of them.
  std::optional<std::string> refusedForDebugger(
      const std::optional<std::string>& controller = std::nullopt);
  bool hasDebugger() const { return debugged_.has_value(); }
  void endDebugger() const { debugged_->window.end(); }

  Gate& gate() { return gate_; }
  const Gate& gate() const { return gate_; }

 private:
  struct Debugged {
    std::string controller;  ///< whose port the debugger has; empty: no controller
    DebuggerWindow window;
  };

  void show(const std::optional<Work>& work);
  std::optional<std::string> tellWhatLacks();

  Access access_;
  Prompt& prompt_;
  MainModel& model_;
  std::optional<Debugged> debugged_;
  std::set<std::string> lacking_;  ///< operations that the running action needed in vain
  Gate gate_;
};

}  // namespace touch
