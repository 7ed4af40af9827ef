#pragma once

namespace touch {

/// Lives as long as main() of a program. Writing that cannot be done fails then, and ends nothing;
/// and whatever ends the program by `exit` or `quick_exit` before main() has come to its end,
/// such as a touch driver, never looks like success.
class OrderlyProcess {
 public:
  /// `program` is what it calls itself when it says so.
  explicit OrderlyProcess(const char* program);
  OrderlyProcess(const OrderlyProcess&) = delete;
  OrderlyProcess& operator=(const OrderlyProcess&) = delete;
  ~OrderlyProcess();
};

/// No pipe that nobody reads and no limit of a file's size ends this process.
void ignoreWriteSignals();

/// Has `handler` called when the process ends by `quick_exit`; false when that cannot be had.
bool atQuickExit(void (*handler)());

}  // namespace touch
