#pragma once

#include <optional>

namespace touch::test {

/// How an outside operation fails.
enum class Fault {
  refused,   ///< once, with the operation's own error value
  nonsense,  ///< once, with an answer that nothing should ever give
  gone,      ///< from here on, whatever is asked
};

/// Counts the operations with which a program reaches outside, and says which of them fails.
class FaultPlan {
 public:
  FaultPlan() = default;
  FaultPlan(int failing, Fault fault) : failing_(failing), fault_(fault) {}

  /// What is to befall the operation that comes now; nothing: it works.
  std::optional<Fault> next() {
    if (paused_) return std::nullopt;
    ++passed_;
    const bool strikes =
        passed_ == failing_ || (fault_ == Fault::gone && failing_ > 0 && passed_ > failing_);
    return strikes ? std::optional(fault_) : std::nullopt;
  }
  /// Operations so far.
  int passed() const { return passed_; }
  bool isPaused() const { return paused_; }
  /// From here on all works.
  void heal() { failing_ = 0; }

  /// What a test does itself does not count.
  class Pause {
   public:
    explicit Pause(FaultPlan& plan) : plan_(plan), before_(plan.paused_) { plan_.paused_ = true; }
    ~Pause() { plan_.paused_ = before_; }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    FaultPlan& plan_;
    bool before_;
  };

 private:
  int failing_ = 0;  ///< counted from 1; 0: none
  Fault fault_ = Fault::refused;
  int passed_ = 0;
  bool paused_ = false;
};

}  // namespace touch::test
