#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "support/clock.h"

namespace touch {

/// Runs `work` and then `after`, which is run as well when `work` throws. For what may throw itself
/// and so must not stand in a destructor.
void runThen(const std::function<void()>& work, const std::function<void()>& after);

/// Lets in one action at a time: what else is asked for while one holds it is dropped, and a way
/// out is put off until the action has ended. An action that throws has ended as well.
class Gate {
 public:
  using Step = std::function<void()>;

  /// `onFree` is run when an action has ended, before a way out that was put off. The clock
  /// outlives the gate.
  explicit Gate(Clock& clock, Step onFree = nullptr);

  /// An action may begin.
  bool isOpen() const { return state_ == State::open; }
  /// An action is under way.
  bool isHeld() const { return state_ == State::running || state_ == State::lasting; }
  /// Nothing gets in any more.
  bool isShut() const { return state_ == State::shut; }

  /// Runs `action`, or drops it. Returns whether it was run.
  bool run(const Step& action);
  /// Runs a part of the action that holds the gate; where none does, an action of its own.
  void runWithin(const Step& part);
  /// Begins an action that lasts until `end`, as one of the user's in a window does: `opening`
  /// opens it, `hurry` has it end soon. Dropped like any other.
  void begin(const Step& opening, Step hurry);
  /// Runs `last` and ends what `begin` has begun. Without that nothing is done.
  void end(const Step& last);

  /// The action under way is to end soon: it is told so, or asks for it between its steps.
  void cutShort();
  bool isCutShort() const { return cutShort_; }

  /// Takes the way out when the gate is open; else it is put off, in place of an earlier one, and
  /// the action is cut short.
  void leave(Step wayOut);
  /// Puts a way out off even when no action is under way, until `takeWayOut` or the end of the next
  /// action.
  void putOff(Step wayOut);
  bool isLeaving() const { return wayOut_ != nullptr; }
  /// Takes the way out that was put off, unless an action is under way.
  void takeWayOut();

  /// For good: nothing gets in, and no other way out is taken. The action under way may still come
  /// to its end.
  void shut();

 private:
  enum class State : std::uint8_t { open, running, lasting, shut };

  void letGo();
  void finish(const Step& last);

  Step onFree_;
  State state_ = State::open;
  bool cutShort_ = false;
  Step hurry_;
  Step wayOut_;
  std::unique_ptr<Timer> afterError_;
};

}  // namespace touch
