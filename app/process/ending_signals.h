#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace touch {

/// The signals with which this system asks a program to end.
std::vector<int> endingSignals();

/// Hears when the system or somebody at another terminal asks the program to end.
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
