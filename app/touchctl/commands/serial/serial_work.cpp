#include "app/touchctl/commands/serial/serial_work.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <tuple>

#include "app/options.h"
#include "app/touchctl/interrupt.h"
#include "core/discovery/discovery.h"
#include "core/driver/driver.h"
#include "serial/debugger/console_log.h"
#include "serial/port/asio_serial_port.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

/// Stands in where no driver is bound: it knows of no controller and does nothing.
class NoDriver final : public Driver {
 public:
#define TOUCH_NOTHING(name, parameters, arguments) \
  std::int32_t name parameters override {          \
    std::ignore = std::tie arguments;              \
    return 0;                                      \
  }
  NEXAPI_OPERATIONS(TOUCH_NOTHING)
#undef TOUCH_NOTHING
};

/// Nothing is asked, and true, where there is nothing to record.
bool startRecording(const SerialWork& work) {
  if (!work.serial.recording) return true;
  const std::filesystem::path& file = *work.serial.recording;
  std::error_code ignored;
  if (std::filesystem::exists(file, ignored) &&
      !work.prompt.confirm(file.string() + " is there already. Replace it?")) {
    return false;
  }
  RecordingHead head{.controller = work.access.session.controllerName, .program = programVersion()};
  if (work.serial.port) {
    head.port = "COM" + std::to_string(work.port.selected());
    head.line = describe(work.port.line());
  }
  const auto started = work.line.startRecording(file, std::move(head));
  if (!started) complain(started.error().describe());
  return started.has_value();
}

ExitStatus runOnPort(const SerialWork& work, const SerialAction& action) {
  DebuggerPort& port = work.port;
  if (work.serial.prepare && !work.serial.prepare(work.prompt)) return ExitStatus::failed;
  if (work.serial.port) {
    if (const auto taken = port.take(*work.serial.port, work.serial.line); !taken) {
      complain(taken.error());
      return ExitStatus::failed;
    }
    if (const std::string sharing = work.line.sharedWith(); !sharing.empty()) complain(sharing);
  }
  if (!startRecording(work)) return ExitStatus::failed;
  ExitStatus status = action(work);
  if (const auto recorded = work.line.stopRecording(); !recorded) {
    complain(recorded.error().describe());
    status = ExitStatus::failed;
  }
  port.noteDamage();
  if (port.damaged() > 0) {
    complain(std::to_string(port.damaged()) +
             " of the bytes that came were damaged on the line (parity, stop bit or break)");
  }
  return status;
}

ExitStatus runOn(const Access& access, Prompt& prompt, SerialPort& line, const ShellOptions& shell,
                 const SerialOptions& serial, const SerialAction& action) {
  access.session.commandSet = serial.set;
  catchInterrupt();  // the driver is to get its port back then as well
  ConsoleLog log(access.clock);
  RecordedPort recorded(line, access.clock);
  DebuggerPort port(access, prompt, recorded, log);
  ExitStatus status = ExitStatus::failed;
  runThen(
      [&] {
        status = runOnPort({access, prompt, recorded, port, shell, serial}, action);
      },
      [&] { port.giveBack(); });
  return status;
}

/// Makes the controller current whose driver holds a serial port, without asking any. Without one
/// no driver holds it.
bool chooseSerialController(Shell& shell) {
  if (!shell.options().controller.empty()) return shell.chooseController();
  const Access access = shell.access();
  const auto names = getctrnameo(access, shell.prompt()).names;
  const auto serial = std::ranges::find_if(
      names, [](const std::string& name) { return name.find("RS232") != std::string::npos; });
  access.session.controllerName = serial == names.end() ? std::string() : *serial;
  return true;
}

/// Lets `command` be run with or without a driver.
void addRunning(const CommandLine& line, CLI::App& command,
                const std::shared_ptr<SerialOptions>& serial, const SerialAction& action) {
  command.add_flag("--no-driver", serial->withoutDriver,
                   "Bind no driver: nobody else has the port");
  // The command that records has its file already.
  if (command.get_name() != "record") {
    command
        .add_option_function<std::string>(
            "--record",
            [serial](const std::string& name) { serial->recording = absolutePathNamed(name); },
            "Record everything that passes the port meanwhile")
        ->type_name("FILE");
  }
  command.callback([line, serial, action] {
    if (serial->withoutDriver) {
      line.fileCommand = [serial, action, &options = line.options] {
        Session session;
        NoDriver driver;
        SystemClock clock;
        ShellPrompt prompt(options.assumeYes);
        const auto port = AsioSerialPort::withTrueTimes(options.comPorts);
        return runOn({session, driver, clock}, prompt, *port, options, *serial, action);
      };
      return;
    }
    line.command = [serial, action](Shell& shell) {
      for (const std::string_view missing : shell.access().driver.missing())
        if (std::ranges::find(portLoanOperations, missing) != portLoanOperations.end())
          throw MissingOperation(missing);
      if (!chooseSerialController(shell)) return ExitStatus::noController;
      const auto port = shell.makeSerialPort();
      return runOn(shell.access(), shell.prompt(), *port, shell.options(), *serial, action);
    };
  });
}

}  // namespace

void refuseSetWithoutWords(CLI::App& command) {
  command.get_option("--set")->check(
      [](const std::string& set) {
        return set == "e02" ? std::string(
                                  "the E02 set has no command for a parameter word: "
                                  "expected m01 or quorvane")
                            : std::string();
      },
      "");
}

void addSet(CLI::App& command, const std::shared_ptr<SerialOptions>& serial) {
  const std::map<std::string, CommandSet> sets = {
      {"m01", CommandSet::m01}, {"e02", CommandSet::e02}, {"quorvane", CommandSet::quorvane}};
  command
      .add_option_function<std::string>(
          "--set", [serial, sets](const std::string& name) { serial->set = sets.at(name); },
          "The command set, which also tells how touches are reported: m01, e02 or quorvane "
          "(default)")
      ->check(CLI::IsMember({"m01", "e02", "quorvane"}));
}

void onSerialPort(const CommandLine& line, CLI::App& command,
                  const std::shared_ptr<SerialOptions>& serial, const SerialAction& action) {
  addSet(command, serial);
  command
      .add_option_function<int>(
          "--port", [serial](int number) { serial->port = number; }, "The COM port's number")
      ->check(CLI::Range(1, ComPorts::greatestNumber))
      ->default_str(std::to_string(DebuggerPort::startPort));
  command.add_option_function<std::string>(
      "--line",
      [serial](const std::string& text) {
        const auto settings = parseLineSettings(text);
        if (!settings) refuseArgument("--line", settings.error());
        serial->line = *settings;
      },
      "Baud rate, parity, data bits and stop bits (default: " + std::string(normalLineSettings) +
          ')');
  addRunning(line, command, serial, action);
}

void onAnySerialPort(const CommandLine& line, CLI::App& command, const SerialAction& action) {
  const auto serial = std::make_shared<SerialOptions>();
  serial->port.reset();
  addRunning(line, command, serial, action);
}

std::vector<ReportFormat> addedFormats(const std::filesystem::path& workFolder) {
  auto read = rdformad(workFolder);
  if (const std::string problems = describeProblems(read); !problems.empty()) complain(problems);
  return std::move(read.formats);
}

bool PortWatch::goesOn() {
  constexpr auto pause = 500ms;
  const std::string name = "COM" + std::to_string(port_.selected());
  const auto now = clock_.now();
  if (port_.tellLoss()) {
    if (!endKey_) return false;
    complain("waiting for " + name + ", which is opened as soon as it is there; " + *endKey_ +
             " ends");
    tried_ = now;
  } else if (port_.isAwaited() && now - tried_ >= pause) {
    tried_ = now;
    if (returning_.takeUpAgain()) {
      const std::string present = "COM" + std::to_string(port_.selected());
      complain(name + " is there again" + (present == name ? "" : " as " + present));
    }
  }
  if (endKey_) returning_.remember();
  return true;
}

void listen(Clock& clock, const std::optional<double>& seconds, const std::function<bool()>& step) {
  constexpr auto pause = 10ms;
  const auto start = clock.now();
  while (!interrupted() && step()) {
    if (seconds && std::chrono::duration<double>(clock.now() - start).count() >= *seconds) return;
    clock.delay(pause, interrupted);
  }
}

std::chrono::microseconds since(Clock::TimePoint start, Clock::TimePoint time) {
  return std::max(std::chrono::duration_cast<std::chrono::microseconds>(time - start),
                  std::chrono::microseconds(0));
}

}  // namespace touch
