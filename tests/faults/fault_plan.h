#include "tests/doubles/test.h"
#pragma once

namespace touch::test {

/// How an outside operation fails.
enum class Fault {
  refused,   ///< once, with the operation's own error value
  nonsense,  ///< once, with an answer that nothing should ever give
  gone,      ///< from here on, whatever is asked
};

/// Counts the operations with which a program reaches outside, and says which of them fails.
struct FaultPlan {
  int failing = 0;  ///< counted from 1; 0: none
  Fault fault = Fault::refused;
  int passed = 0;       ///< operations so far
  bool paused = false;  ///< nothing counts or fails

  /// What is to befall the operation that comes now; nothing: it works.
  std::optional<Fault> next() {
    if (paused) return std::nullopt;
    ++passed;
    const bool strikes =
        passed == failing || (fault == Fault::gone && failing > 0 && passed > failing);
    return strikes ? std::optional(fault) : std::nullopt;
  }
};

/// What a test does itself does not count.
class Pause {
 public:
  explicit Pause(FaultPlan& plan)
      : paused_(plan.paused), before_(std::exchange(plan.paused, true)) {}
  ~Pause() { paused_ = before_; }
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;

 private:
  bool& paused_;
  bool before_;
};

/// What this program's calls of the operating system for files and serial ports obey: they count in
/// it, and fail where it says so, with a full disk for what writes files and an input/output error
/// for the rest. Null: they all work. The calls are the C library's for the whole program, so it
/// cannot be handed to them.
inline FaultPlan* planObeyed = nullptr;
/// Whether a folder holds a name whose loss in a power cut nobody has prevented.
inline bool namesAreOnDisk = true;
/// Whether every file had its name only when its bytes were safe from a power cut.
inline bool bytesCameFirst = true;
/// Bytes that have really gone to terminals since this was last set to 0.
inline std::size_t sentBytes = 0;

}  // namespace touch::test
