#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/session.h"
#include "reports/report_format.h"
#include "serial/debugger/debugger_port.h"
#include "serial/scripts/script_run.h"

namespace touch {

class ConsoleLog;
class Prompt;

/// A script in the debugger. What passes the port, its notes and how it ends stand in the console's
/// log.
class ScriptPlayer {
 public:
  /// All of them outlive it.
  ScriptPlayer(const Access& access, Prompt& prompt, DebuggerPort& port, ConsoleLog& log,
               const std::vector<ReportFormat>& formats)
      : access_(access), prompt_(prompt), port_(port), log_(log), formats_(formats) {}

  /// Reads `file`. What was chosen before stays when it is no script.
  Status choose(const std::filesystem::path& file);
  /// The chosen one; null before.
  const Script* script() const { return script_ ? &*script_ : nullptr; }

  /// Reads the chosen file anew, asks if the script changes the controller, and carries it out.
  /// Says how it ended; nothing was done when that is empty. Afterwards the port has its usual
  /// line settings, whatever the script has set.
  std::string run();
  bool isRunning() const { return state_ != State::idle; }
  void pause(bool on);
  bool isPaused() const { return state_ == State::paused; }
  /// Nothing is sent from now on. Closing the debugger does the same.
  void stop();

  /// The line in hand, or the one at which the last run failed; 0: there is none.
  int line() const { return line_; }

 private:
  enum class State : std::uint8_t { idle, running, paused, stopping };

  std::string readAndRun();
  std::string carryOut();
  ScriptWatcher watcher();

  Access access_;
  Prompt& prompt_;
  DebuggerPort& port_;
  ConsoleLog& log_;
  const std::vector<ReportFormat>& formats_;
  std::filesystem::path file_;
  std::optional<Script> script_;
  State state_ = State::idle;
  int line_ = 0;
};

}  // namespace touch
