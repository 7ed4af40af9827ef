#include "app/touchctl/shell.h"

#include <fmt/core.h>

#include <algorithm>
#include <iostream>

#include "app/driver_choice.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "app/touchctl/terminal.h"
#include "core/messages/messages.h"
#include "serial/port/asio_serial_port.h"
#include "support/text/text_encoding.h"

namespace touch {

void complain(const std::string& text) {
  printError("touchctl: " + text + '\n');
}

namespace {

/// What the user types; nothing when they end the input or the program instead, also in the middle
/// of a line.
std::optional<std::string> answeredLine() {
  std::string answer;
  if (awaitInput() && std::getline(std::cin, answer) && !interrupted()) return answer;
  printError("\n");
  complain("no answer came");
  return std::nullopt;
}

}  // namespace

void ShellPrompt::message(std::string_view text, std::string_view title) {
  complain(title == defaultTitle ? std::string(text) : fmt::format("{}: {}", title, text));
}

bool ShellPrompt::await(std::string_view text, std::string_view title) {
  message(text, title);
  if (assumeYes_) {
    complain("taken as done, as --yes says");
    return true;
  }
  return isTerminalInput() && input("Press Enter when that is done.", title);
}

bool ShellPrompt::proceed(std::string_view text, std::string_view title) {
  return confirm(text, title);
}

Answer ShellPrompt::ask(std::string_view text, std::string_view) {
  if (assumeYes_) {
    complain(fmt::format("{} Yes, as --yes says.", text));
    return Answer::yes;
  }
  if (!isTerminalInput()) {
    complain(fmt::format("{} Not at a terminal: say --yes to go on.", text));
    return Answer::none;
  }
  printError(printable(text) + " [y/N] ");
  const auto answer = answeredLine();
  if (!answer) return Answer::none;
  return answer == "y" || answer == "Y" || answer == "yes" ? Answer::yes : Answer::no;
}

bool ShellPrompt::goWithoutWayBack(std::string_view text) {
  complain(fmt::format("{} {}", text,
                       withoutBackup_ ? "Yes, as --without-backup says."
                                      : "No: say --without-backup to go on all the same."));
  return withoutBackup_;
}

std::optional<std::string> ShellPrompt::input(std::string_view prompt, std::string_view) {
  printError(printable(prompt) + ' ');
  return answeredLine();
}

DriverPatience::Next ShellPatience::stillWaiting(const DriverWait& wait) {
  return wait.waited < limit_ ? Next::wait : Next::giveUp;
}

bool ShellPatience::isEnding() const {
  return interrupted();
}

void ShellPatience::lost(const std::string& text) {
  lost_ = true;
  complain(text);
}

Shell::Shell(const ShellOptions& options, std::unique_ptr<Footing> footing,
             std::unique_ptr<BoundDriver> bound, MessageTable messages)
    : options_(options),
      footing_(std::move(footing)),
      bound_(std::move(bound)),
      simulation_(*bound_),
      driver_(*bound_, trace_),
      prompt_(options.assumeYes, options.withoutBackup) {
  session_.messages = std::move(messages);
  addSimulatedPort(*bound_, options_.comPorts);
}

Result<std::unique_ptr<Shell>, ExitStatus> Shell::open(const ShellOptions& options) {
  auto messages = loadMessages(options.workFolder);
  if (!messages) {
    complain(messages.error().describe());
    return tl::unexpected(ExitStatus::failed);
  }
  auto footing = std::make_unique<Footing>(options);
  auto driver = bindChosenDriver(options, footing->clock, footing->patience);
  if (!driver) {
    complain(driver.error().describe() +
             ".\nWithout it no controller can be reached. Install the driver of your controller, "
             "name its library "
             "with --driver, or try --simulate; 'touchctl doctor' says where it was looked for.");
    return tl::unexpected(ExitStatus::noDriver);
  }
  std::unique_ptr<Shell> shell(
      new Shell(options, std::move(footing), std::move(*driver), std::move(*messages)));
  if (options.trace) {
    if (const auto started = shell->trace_.start(*options.trace); !started) {
      complain(started.error());
      return tl::unexpected(ExitStatus::failed);
    }
  }
  return shell;
}

std::unique_ptr<SerialPort> Shell::makeSerialPort() {
  return std::make_unique<TracingSerialPort>(AsioSerialPort::withTrueTimes(options_.comPorts),
                                             trace_);
}

bool Shell::chooseController() {
  if (options_.controller.empty()) {
    const ControllerList list = getctrname(access(), prompt_);
    if (list.answered) return true;
    if (hasLostDriver()) return false;  // which has been said, and explains the rest
    complain(list.names.empty()
                 ? noControllerAdvice
                 : "no controller answers; see 'touchctl list' and 'touchctl doctor'");
    return false;
  }
  const ControllerList list = getctrnameo(access(), prompt_);
  if (hasLostDriver()) return false;
  const auto& names = list.names;
  if (std::find(names.begin(), names.end(), options_.controller) == names.end()) {
    complain(names.empty() ? noControllerAdvice
                           : fmt::format("there is no controller \"{}\"; see 'touchctl list'",
                                         printable(options_.controller)));
    return false;
  }
  session_.controllerName = options_.controller;
  return true;
}

}  // namespace touch
