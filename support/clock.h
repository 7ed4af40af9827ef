#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace touch {

/// A periodic timer on the thread of its clock; it ticks only while the clock waits. Stops when
/// destroyed.
class Timer {
 public:
  Timer() = default;
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  virtual ~Timer() = default;

  /// Ticks every `interval`. Setting the interval that it already runs at changes nothing: the next
  /// tick stays due.
  virtual void start(std::chrono::milliseconds interval) = 0;
  virtual void stop() = 0;
};

/// Time, waits and timers. Waiting lets timers and, in a window, the user's events run; it uses no
/// processor time.
class Clock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  virtual TimePoint now() const = 0;
  /// Waits until `duration` has passed, or until `cutShort` says true. It is asked after every
  /// event.
  virtual void delay(std::chrono::milliseconds duration,
                     const std::function<bool()>& cutShort = nullptr) = 0;
  /// Lets what is due run, `passes` times over. Many passes count as a short rest.
  virtual void yield(int passes = 1) = 0;
  /// Waits in the middle of what nothing may interrupt: windows are painted and can be
  /// closed, but no timer ticks and nothing else that the user begins arrives. `arrives` waits
  /// itself, at most as long as it is told, and says whether what is waited for is there.
  virtual void stand(std::chrono::milliseconds longest,
                     const std::function<bool(std::chrono::milliseconds)>& arrives) = 0;
  virtual std::unique_ptr<Timer> makeTimer(std::function<void()> onTick) = 0;
};

}  // namespace touch
