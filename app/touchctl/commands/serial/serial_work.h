#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/touchctl/command_line.h"
#include "app/touchctl/shell.h"
#include "core/serial_port.h"
#include "reports/report_format.h"
#include "serial/debugger/debugger_port.h"
#include "serial/debugger/returning_port.h"
#include "serial/recording/recording_ports.h"

namespace touch {

/// What the commands on a serial port are told beside what they are to do.
struct SerialOptions {
  std::optional<int> port = DebuggerPort::startPort;  ///< none: the command opens what it wants
  std::optional<LineSettings> line;                   ///< none: as usual
  bool withoutDriver = false;                         ///< the driver is left alone
  CommandSet set = CommandSet::quorvane;
  std::optional<double> seconds;                   ///< how long to listen
  std::optional<std::filesystem::path> recording;  ///< of all that passes the port
  /// What must be right before the port is taken; false ends the command.
  std::function<bool(Prompt&)> prepare;
};

/// What a command on a serial port works with. The port is open and the driver has let go of it,
/// but for a command that looks for the port itself.
struct SerialWork {
  Access access;
  Prompt& prompt;
  RecordedPort& line;
  DebuggerPort& port;
  const ShellOptions& shell;
  const SerialOptions& serial;
};
using SerialAction = std::function<ExitStatus(const SerialWork&)>;

/// Lets `command` be told the port and the set, and do `action` on the port. `serial` outlives the
/// running.
void onSerialPort(const CommandLine& line, CLI::App& command,
                  const std::shared_ptr<SerialOptions>& serial, const SerialAction& action);
/// Refuses the set that knows no parameter words, for a `command` that has been told of the sets.
void refuseSetWithoutWords(CLI::App& command);
/// Lets `command` do `action`, which takes and opens ports itself.
void onAnySerialPort(const CommandLine& line, CLI::App& command, const SerialAction& action);
void addSet(CLI::App& command, const std::shared_ptr<SerialOptions>& serial);

/// The report formats that "zevrik.fmt" adds; what is wrong with the file is printed.
std::vector<ReportFormat> addedFormats(const std::filesystem::path& workFolder);

/// Looks after a port that may go while a command listens, and takes it up again.
class PortWatch {
 public:
  /// `endKey` is what ends the waiting; where there is none the command does not wait.
  PortWatch(const SerialWork& work, std::optional<std::string> endKey)
      : clock_(work.access.clock),
        port_(work.port),
        endKey_(std::move(endKey)),
        returning_(work.port, work.access.clock,
                   [&ports = work.shell.comPorts] { return knownHardware(ports); }) {}

  /// To be asked after each reading. False when the port has gone and is not waited for, which was
  /// said.
  bool goesOn();

 private:
  const Clock& clock_;
  DebuggerPort& port_;
  std::optional<std::string> endKey_;
  ReturningPort returning_;
  Clock::TimePoint tried_{};
};

/// How long `time` is behind `start`; what came before that came with it.
std::chrono::microseconds since(Clock::TimePoint start, Clock::TimePoint time);

/// Runs `step` every 10 ms until it says false, the time is over, or the user presses Ctrl+C.
void listen(Clock& clock, const std::optional<double>& seconds, const std::function<bool()>& step);

}  // namespace touch
