#include "app/process/orderly_process.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace touch {

namespace {

/// The program that is under way; null when main() has come to its end.
std::atomic<const char*>& underWay() {
  static std::atomic<const char*> program = nullptr;
  return program;
}

void refuseEarlyExit() {
  const char* const program = underWay();
  if (program == nullptr) return;
  std::fflush(stdout);
  std::fprintf(stderr,
               "%s: ended from within, by the touch driver or the display, in the middle of its "
               "work\n",
               program);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

OrderlyProcess::OrderlyProcess(const char* program) {
  ignoreWriteSignals();
  underWay() = program;
  if (std::atexit(refuseEarlyExit) != 0 || !atQuickExit(refuseEarlyExit)) std::_Exit(EXIT_FAILURE);
}

OrderlyProcess::~OrderlyProcess() {
  underWay() = nullptr;
}

}  // namespace touch
