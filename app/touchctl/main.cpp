#include "app/parsing.h"
#include "app/system_text.h"
#include "app/touchctl/arguments.h"
#include "app/touchctl/interrupt.h"

int main(int argc, char** argv) {
  using namespace touch;

  const SystemText text(argc, argv);
  Arguments arguments;
  if (const auto status =
          parseCommandLine(arguments.app(), touchctlManual, arguments.known(), argc, argv)) {
    return *status;
  }
  if (arguments.fileCommand()) return static_cast<int>(arguments.fileCommand()());
  if (!arguments.command()) {
    complain("no command was given; 'touchctl --help' lists them");
    return static_cast<int>(ExitStatus::wrongUse);
  }
  // A block that is half written, or a controller left open, is worse than a second of patience.
  catchInterrupt();
  auto status = ExitStatus::done;
  const auto shell = Shell::open(arguments.options(), status);
  return static_cast<int>(shell ? arguments.command()(*shell) : status);
}
