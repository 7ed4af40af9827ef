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
  for (const int signal : {SIGINT, SIGTERM}) {
    std::signal(signal, [](int caught) {
      interruptFlag() = 1;
      std::signal(caught, SIG_DFL);
    });
  }
}

}  // namespace touch
