#include <csignal>
#include <initializer_list>

#include "app/process/ending_signals.h"
#include "app/touchctl/interrupt.h"

namespace touch {

namespace {

volatile std::sig_atomic_t& interruptFlag() {
  static volatile std::sig_atomic_t flag = 0;
  return flag;
}

volatile std::sig_atomic_t& askedFlag() {
  static volatile std::sig_atomic_t flag = 0;
  return flag;
}

void onHangUp(int) {
  interruptFlag() = 1;
  endWaits();
}

void onAsked(int caught) {
  onHangUp(caught);
  if (askedFlag() != 0) {
    std::signal(caught, SIG_DFL);
    std::raise(caught);
  }
  askedFlag() = 1;
}

/// Without SA_RESTART: a wait for a file, a pipe or a device ends, and does not begin anew.
void catchSignal(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, nullptr);
}

}  // namespace

bool interrupted() {
  return interruptFlag() != 0;
}

void catchInterrupt() {
  prepareToEndWaits();
  // A closed terminal may say so twice, its shell once more. Whoever has had it ignored wants the
  // program to stay.
  struct sigaction hangUp {};
  if (sigaction(SIGHUP, nullptr, &hangUp) == 0 && hangUp.sa_handler != SIG_IGN)
    catchSignal(SIGHUP, onHangUp);
  for (const int number : {SIGINT, SIGTERM})
    catchSignal(number, onAsked);
}

}  // namespace touch
