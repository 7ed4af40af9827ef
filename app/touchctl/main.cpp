#include "app/parsing.h"
#include "app/process/guarded_run.h"
#include "app/process/orderly_process.h"
#include "app/process/system_text.h"
#include "app/simulated_source.h"
#include "app/touchctl/arguments.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "core/driver/driver.h"
#include "core/driver/nexapi.h"

namespace {

using namespace touch;

ExitStatus run(Arguments& arguments) {
  if (const auto read = readSimulatedSource(arguments.options(), "touchctl"); !read) {
    complain(read.error().describe());
    return ExitStatus::failed;
  }
  if (arguments.fileCommand()) return arguments.fileCommand()();
  if (!arguments.command()) {
    complain("no command was given; 'touchctl --help' lists them");
    return ExitStatus::wrongUse;
  }
  // A block that is half written, or a controller left open, is worse than a second of patience.
  catchInterrupt();
  const auto shell = Shell::open(arguments.options());
  if (!shell) return shell.error();
  auto status = ExitStatus::done;
  try {
    status = arguments.command()(**shell);
  } catch (const MissingOperation& missing) {
    complain(std::string(missing.what()) + "; see 'touchctl doctor'");
    status = ExitStatus::failed;
  }
  if ((*shell)->hasLostDriver()) status = ExitStatus::noDriver;
  if (const auto reason = (*shell)->takeTraceBreak()) complain(*reason);
  return status;
}

int runProgram(int argc, char** argv) {
  const OrderlyProcess process("touchctl");
  trustOwnFoldersAlone();
  const SystemText text(argc, argv);
  Arguments arguments;
  if (const auto status = parseCommandLine(arguments.app(), touchctlManual, arguments.known(), argc,
                                           argv, [&arguments] { arguments.declareAll(); })) {
    return *status;
  }
  auto status = run(arguments);
  if (!flushOutput()) {
    complain(lostOutput);
    if (status == ExitStatus::done) status = ExitStatus::failed;
  }
  return static_cast<int>(status);
}

}  // namespace

int main(int argc, char** argv) {
  return guardedRun("touchctl", [&] { return runProgram(argc, argv); });
}
