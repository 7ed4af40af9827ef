#pragma once

#include <functional>
#include <memory>

namespace touch {

/// Hears when the system or somebody at another terminal asks the program to end: SIGINT and SIGTERM.
class EndingSignals {
 public:
  /// `onSignal` runs on a thread of its own, each time.
  explicit EndingSignals(std::function<void()> onSignal);
  EndingSignals(const EndingSignals&) = delete;
  EndingSignals& operator=(const EndingSignals&) = delete;
  ~EndingSignals();

 private:
  class Watch;
  std::unique_ptr<Watch> watch_;
};

}  // namespace touch
