#include <csignal>
#include <initializer_list>

#include "app/touchctl/interrupt.h"

namespace touch {

namespace {

volatile std::sig_atomic_t& interruptFlag() {
  static volatile std::sig_atomic_t flag = 0;
  return flag;
}

}  // namespace

bool interrupted() {
  return interruptFlag() != 0;
}

void catchInterrupt() {
  // Writing then fails, and the command ends by itself.
  std::signal(SIGPIPE, SIG_IGN);
  // A closed terminal may say so twice, its shell once more. Whoever has had it ignored wants the program to stay.
  const auto onHangUp = [](int) { interruptFlag() = 1; };
  if (std::signal(SIGHUP, onHangUp) == SIG_IGN) std::signal(SIGHUP, SIG_IGN);
  for (const int signal : {SIGINT, SIGTERM}) {
    std::signal(signal, [](int caught) {
      interruptFlag() = 1;
      std::signal(caught, SIG_DFL);
    });
  }
}

}  // namespace touch
