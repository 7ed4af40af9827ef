#pragma once

namespace touch {

/// Lives as long as main() of a program. Writing that cannot be done fails then, and ends nothing;
/// and whatever ends the program by `exit` before main() has come to its end, such as a touch
/// driver, never looks like success.
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

}  // namespace touch
