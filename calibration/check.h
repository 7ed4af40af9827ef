#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing/surface.h"
#include "support/clock.h"
#include "support/notice.h"
#include "support/result.h"

namespace touch {

/// A distance in hundredths of the screen's diagonal.
struct DiagonalPercent {
  double value = 0;
  friend constexpr bool operator<=(DiagonalPercent a, DiagonalPercent b) {
    return a.value <= b.value;
  }
};

/// A touch that lands within it is good. On a screen of 10 inches these are 5 mm, half of a large
/// button, of which an unsteady finger alone uses up half.
inline constexpr DiagonalPercent usualCheckLimit{2};
/// What lands farther away was not meant for the cross: no larger limit makes sense.
inline constexpr DiagonalPercent nowhereNear{10};

/// Where the five crosses stand: well away from the targets of every calibration, and no touch that
/// is mirrored or turned lands near enough.
std::array<TwipsPoint, 5> checkCrosses(TwipsSize screen);

/// The calibration that was in force before the one that is checked.
class WayBack {
 public:
  WayBack() = default;
  WayBack(const WayBack&) = delete;
  WayBack& operator=(const WayBack&) = delete;
  virtual ~WayBack() = default;

  /// Why it cannot be put back, in a sentence for the user; empty: it can.
  virtual std::string whyNone() const = 0;
  /// Puts it in force, reads it back, and says how that went. No more is needed than time.
  virtual Notice putBack() = 0;
  /// The new calibration is the one to have. Returns what could not be tidied up.
  virtual Status settle() = 0;
};

enum class CheckOutcome : std::uint8_t {
  kept,     ///< the calibration that was checked stays in force
  putBack,  ///< the old one is in force again
  bad,      ///< what was checked is not good, and there was no way back
};

struct CheckResult {
  CheckOutcome outcome = CheckOutcome::bad;
  Notice notice;
};

/// How far the touch for a cross landed from it.
struct Residual {
  TwipsPoint cross;
  TwipsPoint landed;
  DiagonalPercent off;
  bool good = false;
};

/// The screen that a check runs on.
class CheckScreen {
 public:
  CheckScreen() = default;
  CheckScreen(const CheckScreen&) = delete;
  CheckScreen& operator=(const CheckScreen&) = delete;
  virtual ~CheckScreen() = default;

  virtual Surface& surface() = 0;
  /// What the user is to do now.
  virtual void tell(const std::string& text) = 0;
  virtual void showResidual(const Residual& residual) = 0;
  /// `width` twips of the time for the next touch are used up.
  virtual void showTimeBar(float width) = 0;
  /// Which buttons can be pressed.
  virtual void allow(bool keep, bool putBack) = 0;
  /// Nothing runs any more; the check may be destroyed once this has returned to the event loop.
  virtual void ended(const CheckResult& result) = 0;
};

/// The check of a calibration: five crosses to touch, one after the other. It ends by itself: kept
/// when all five touches landed within the limit, and put back when three landed nowhere near or
/// none came for 20 s. So nobody needs a pointer that works to get out of a bad calibration.
class Check {
 public:
  /// All outlive the check.
  Check(Clock& clock, CheckScreen& screen, TwipsSize size, DiagonalPercent limit, WayBack& wayBack);

  void begin();
  /// A touch has landed as a pointer event.
  void touch(TwipsPoint at);
  void keep();     ///< "Keep": once all five crosses have been touched
  void putBack();  ///< "Put back", Esc, or the window is closed

  /// Where the user is to touch now; nothing when all five are done.
  std::optional<TwipsPoint> awaited() const;
  /// All five are done and not all are good: the user is to say what is to be done.
  bool awaitsDecision() const { return stage_ == Stage::deciding; }

 private:
  using Milliseconds = std::chrono::milliseconds;
  enum class Stage : std::uint8_t {
    touching,  ///< crosses are left
    passed,    ///< all are good; kept in a moment
    deciding,  ///< all are done, not all are good
    ended,
  };

  void tick();
  void miss(TwipsPoint at);
  void finishCrosses();
  void enter(Stage stage, const std::string& text);
  void showCrosses();
  Milliseconds patience() const;
  /// `reason` is said before what came of it.
  void putBackBecause(const std::string& reason);
  CheckResult wentBack(const std::string& reason);
  CheckResult settled();
  void end(const std::string& text, const std::function<CheckResult()>& work);

  Clock& clock_;
  CheckScreen& screen_;
  TwipsSize size_;
  DiagonalPercent limit_;
  WayBack& wayBack_;
  std::array<TwipsPoint, 5> crosses_;
  std::unique_ptr<Timer> timer_;
  Clock::TimePoint lastTouch_{};
  Stage stage_ = Stage::touching;
  std::vector<Residual> residuals_;
  int misses_ = 0;
};

}  // namespace touch
