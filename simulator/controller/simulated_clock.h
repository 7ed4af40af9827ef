#pragma once

#include <chrono>
#include <optional>

namespace touch::simulator {

using TimePoint = std::chrono::steady_clock::time_point;

/// The controllers' time: the real one, or one that stands until it is moved. It never goes
/// backwards.
class SimulatedClock {
 public:
  TimePoint now() const { return held_ ? *held_ : std::chrono::steady_clock::now() + shift_; }
  bool isManual() const { return held_.has_value(); }

  void setManual() { held_ = now(); }
  void setReal() {
    if (!held_) return;
    shift_ = *held_ - std::chrono::steady_clock::now();
    held_.reset();
  }
  /// Moves the manual time on; real time moves by itself.
  void advance(std::chrono::microseconds duration) {
    if (held_) *held_ += duration;
  }

 private:
  std::optional<TimePoint> held_;
  std::chrono::steady_clock::duration shift_{};
};

}  // namespace touch::simulator
