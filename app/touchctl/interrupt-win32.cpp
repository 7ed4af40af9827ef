#include <windows.h>

#include <atomic>

#include "app/touchctl/interrupt.h"

namespace touch {

namespace {

std::atomic<bool>& interruptFlag() {
  static std::atomic<bool> flag = false;
  return flag;
}

/// Runs on a thread of the system's. FALSE ends the program.
BOOL WINAPI onConsoleEvent(DWORD event) {
  const bool again = interruptFlag().exchange(true);
  if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) return again ? FALSE : TRUE;
  // The console is being closed. The program ends when this returns, or of its own accord while
  // this waits; the system waits for neither longer than five seconds.
  Sleep(INFINITE);
  return TRUE;
}

}  // namespace

bool interrupted() {
  return interruptFlag();
}

void catchInterrupt() {
  SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

}  // namespace touch
