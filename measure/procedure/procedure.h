#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "measure/figures/coverage.h"
#include "measure/measurement.h"

namespace touch::measure {

/// The tests that lead from one place to the next.
enum class TouchTest : std::uint8_t { rest, taps, coverage, directions };
/// All tests of a plan, in their order. Nothing stands for the lines, which have a procedure of
/// their own.
std::vector<std::optional<TouchTest>> testsOf(const Plan& plan);

/// A target to touch, a line to draw, or, of neither, the whole panel to rub.
struct Task {
  std::string name;
  Place at{};
  const Guide* guide = nullptr;
};

/// What came of a touch when the finger was lifted.
enum class TouchResult : std::uint8_t {
  kept,
  tooShort,  ///< the finger has to rest longer; nothing is kept
  doubled,   ///< it came so soon after a tap that it is the same one, reported twice
  farOff,    ///< kept, but somebody has to say who led it away from its line
};

/// Leads through one test and puts what the panel reports into a measurement. What is done anew
/// replaces what there was.
class Procedure {
 public:
  /// `measurement` outlives it.
  Procedure(Measurement& measurement, TouchTest test);
  /// What samples and missed taps are of from now on; to be said before the first one.
  void use(const Source& source);

  TouchTest test() const { return test_; }
  std::span<const Task> tasks() const { return tasks_; }
  /// Nothing when all tasks have been gone through.
  const Task* current() const { return at_ < tasks_.size() ? &tasks_[at_] : nullptr; }
  std::size_t number() const { return at_; }
  bool isDone(const Task& task) const;
  /// Something has been kept of it.
  bool wasTouched(const Task& task) const;
  std::size_t tapsMade() const;
  /// How much of the time a finger has rested, 0 to 1.
  double rested() const;
  /// Cells that were touched, while they are rubbed too.
  const CoverageFigures& cells() const { return cells_; }
  /// A stroke of the current line left it, and nobody has said why.
  bool asksWhoDidThat() const;
  bool isTouched() const { return open_.has_value(); }

  void down(const Sample& sample);
  /// The cell that is touched for the first time, while the panel is rubbed.
  std::optional<std::size_t> move(const Sample& sample);
  TouchResult up();

  /// A tap that the panel did not report.
  void nothingCame();
  void decide(Blame blame);
  void next();
  void back();
  /// The current task anew; the one before if nothing has been done for this one.
  void repeat();

 private:
  bool isFarOff(const Trace& trace) const;
  void forget(const Task& task);
  void keep(Trace trace);
  void go(std::size_t number);

  Measurement& measurement_;
  TouchTest test_;
  std::size_t source_ = 0;
  std::vector<Task> tasks_;
  std::size_t at_ = 0;
  bool visitBegins_ = true;  ///< the next touch replaces what an earlier visit left
  std::optional<Trace> open_;
  std::string lastTap_;  ///< the target of it
  Seconds lastLift_{};
  CoverageFigures cells_;
};

}  // namespace touch::measure
