#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "app/options.h"
#include "core/discovery/discovery.h"
#include "core/driver/bound_driver.h"
#include "core/driver/host/driver_patience.h"
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
  std::chrono::milliseconds driverTimeout = std::chrono::seconds(10);
};

/// Gives an operation of the driver the time that the command line says, and none when the user has
/// pressed Ctrl+C. Once a driver is lost, no other is started for this command.
class ShellPatience final : public DriverPatience {
 public:
  explicit ShellPatience(std::chrono::milliseconds limit) : limit_(limit) {}

  Next stillWaiting(const DriverWait& wait) override;
  bool isEnding() const override;
  void lost(const std::string& text) override;
  bool startsAfresh() const override { return !lost_; }
  bool hasLost() const { return lost_; }

 private:
  std::chrono::milliseconds limit_;
  bool lost_ = false;
};

/// Everything a command needs, made once the driver is bound.
class Shell {
 public:
  /// The driver bound and the texts loaded, or the status to end with after the reason was printed.
  static Result<std::unique_ptr<Shell>, ExitStatus> open(const ShellOptions& options);

  Access access() { return {session_, driver_, clock()}; }
  Prompt& prompt() { return prompt_; }
  SystemClock& clock() { return footing_->clock; }
  /// A serial port of its own, traced like the driver.
  std::unique_ptr<SerialPort> makeSerialPort();
  const Simulation& simulation() const { return simulation_; }
  /// The driver was lost on the way; that has been said.
  bool hasLostDriver() const { return footing_->patience.hasLost(); }
  Trace& trace() { return trace_; }
  /// Why the trace ended early, once.
  std::optional<std::string> takeTraceBreak() { return trace_.takeBreak(); }
  const ShellOptions& options() const { return options_; }
  const std::string& controller() const { return session_.controllerName; }

  /// Makes the controller that the user named, or else the first that answers, the current one.
  /// False after saying why there is none.
  bool chooseController();

 private:
  /// What the driver refers to, and so is there before it is bound.
  struct Footing {
    explicit Footing(const ShellOptions& options) : patience(options.driverTimeout) {}
    SystemClock clock;
    ShellPatience patience;
  };
  Shell(const ShellOptions& options, std::unique_ptr<Footing> footing,
        std::unique_ptr<BoundDriver> bound, MessageTable messages);

  ShellOptions options_;
  std::unique_ptr<Footing> footing_;
  std::unique_ptr<BoundDriver> bound_;
  Simulation simulation_;
  Trace trace_;
  TracingDriver driver_;
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
