#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace touch {

/// The signals with which this system asks a program to end.
std::vector<int> endingSignals();

/// From `endWaits` on each wait of the program for a file, a pipe or a device ends within a second,
/// also one that begins later: a signal ends only what is waited for when it comes.
/// `prepareToEndWaits` goes before, when no driver is bound yet; the other may be called by a
/// signal handler.
void prepareToEndWaits();
void endWaits();

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
