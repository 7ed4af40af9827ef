#include "app/orderly_process.h"
#include "app/parsing.h"
#include "app/system_text.h"
#include "app/touchctl/arguments.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"

namespace {

using namespace touch;

ExitStatus run(const Arguments& arguments) {
  if (arguments.fileCommand()) return arguments.fileCommand()();
  if (!arguments.command()) {
    complain("no command was given; 'touchctl --help' lists them");
    return ExitStatus::wrongUse;
  }
  // A block that is half written, or a controller left open, is worse than a second of patience.
  catchInterrupt();
  auto status = ExitStatus::done;
  const auto shell = Shell::open(arguments.options(), status);
  if (!shell) return status;
  status = arguments.command()(*shell);
  if (const auto reason = shell->takeTraceBreak()) complain(*reason);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  const OrderlyProcess process("touchctl");
  const SystemText text(argc, argv);
  Arguments arguments;
  if (const auto status = parseCommandLine(arguments.app(), touchctlManual, arguments.known(), argc,
                                           argv, [&arguments] { arguments.declareAll(); })) {
    return *status;
  }
  auto status = run(arguments);
  if (!flushOutput()) {
    complain("the output could not be written: nobody reads it any more, or the disk is full");
    if (status == ExitStatus::done) status = ExitStatus::failed;
  }
  return static_cast<int>(status);
}
