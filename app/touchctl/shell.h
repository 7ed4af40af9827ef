#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/options.h"
#include "core/discovery/discovery.h"
#include "core/driver/nexapi.h"
#include "core/driver/simulation.h"
#include "core/driver/trace.h"
#include "core/session.h"
#include "support/prompt.h"
#include "support/system_clock.h"

namespace touch {

/// How touchctl ends; scripts rely on the numbers.
enum class ExitStatus {
  done = 0,
  failed = 1,
  wrongUse = 2,
  noDriver = 3,
  noController = 4,
  incomplete = 5,
};

/// Says messages on the error output; a question is asked only at a terminal and is otherwise
/// answered as the command line said, which is said too. Ctrl+C leaves it without an answer.
class ShellPrompt final : public Prompt {
 public:
  explicit ShellPrompt(bool assumeYes, bool withoutBackup = false)
      : assumeYes_(assumeYes), withoutBackup_(withoutBackup) {}
  void message(std::string_view text, std::string_view title) override;
  bool await(std::string_view text, std::string_view title) override;
  bool proceed(std::string_view text, std::string_view title) override;
  Answer ask(std::string_view text, std::string_view title) override;
  bool goWithoutWayBack(std::string_view text) override;
  std::optional<std::string> input(std::string_view prompt, std::string_view title) override;

 private:
  bool assumeYes_;
  bool withoutBackup_;  ///< writing without a way back was asked for
};

/// What all commands take beside the options of both programs.
struct ShellOptions : Options {
  bool json = false;
  bool assumeYes = false;
  bool withoutBackup = false;
  std::string controller;  ///< empty: the first that answers
};

/// Everything a command needs, made once the driver is bound.
class Shell {
 public:
  /// The driver bound and the texts loaded, or the status to end with after the reason was printed.
  static Result<std::unique_ptr<Shell>, ExitStatus> open(const ShellOptions& options);

  Access access() { return {session_, driver_, clock_}; }
  Prompt& prompt() { return prompt_; }
  SystemClock& clock() { return clock_; }
  /// A serial port of its own, traced like the driver.
  std::unique_ptr<SerialPort> makeSerialPort();
  const Simulation& simulation() const { return simulation_; }
  /// Why the trace ended early, once.
  std::optional<std::string> takeTraceBreak() { return trace_.takeBreak(); }
  const ShellOptions& options() const { return options_; }
  const std::string& controller() const { return session_.controllerName; }

  /// Makes the controller that the user named, or else the first that answers, the current one.
  /// False after saying why there is none.
  bool chooseController();

 private:
  Shell(const ShellOptions& options, std::unique_ptr<NexapiDriver> nexapi, MessageTable messages);

  ShellOptions options_;
  std::unique_ptr<NexapiDriver> nexapi_;
  Simulation simulation_;
  Trace trace_;
  TracingDriver driver_;
  SystemClock clock_;
  ShellPrompt prompt_;
  Session session_;
};

/// What to do when the driver knows of no controller.
inline constexpr const char* noControllerAdvice =
    "the driver knows of no controller, so there is nothing to work with; check cable and power, "
    "and see 'touchctl "
    "doctor'";

/// Prints to the error output, with the program's name in front.
void complain(const std::string& text);

}  // namespace touch
