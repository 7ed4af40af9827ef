#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "core/driver/connection.h"
#include "core/session.h"
#include "drawing/surface.h"
#include "drawing/target_places.h"
#include "support/clock.h"
#include "support/gate.h"
#include "support/prompt.h"
#include "support/quantity.h"

namespace touch {

/// How a calibration ended. Only `stored` has changed the controller's calibration.
enum class CalibrationOutcome { stored, cancelled, timedOut, failed };

/// The screen that a calibration runs on.
class CalibrationScreen {
 public:
  CalibrationScreen() = default;
  CalibrationScreen(const CalibrationScreen&) = delete;
  CalibrationScreen& operator=(const CalibrationScreen&) = delete;
  virtual ~CalibrationScreen() = default;

  virtual Surface& surface() = 0;
  /// `Command1` and `Command2`.
  virtual void showButtons(bool start, bool cancel) = 0;
  /// `Label3`, `width` twips long: visible from the first call on.
  virtual void showTimeBar(float width) = 0;
  /// `Label1`: reads "EXIT" and can be pressed, or says that the calibration is being stored and
  /// cannot.
  virtual void allowExit(bool allowed) = 0;
  /// The main window is back, this one is gone. A procedure may still be ending.
  virtual void leave() = 0;
  /// Nothing runs any more and the controller is closed; the calibration may be destroyed once this
  /// has returned to the event loop.
  virtual void ended(CalibrationOutcome outcome) = 0;
};

/// The calibration with 2, 3, 5 or 9 targets, on the session's controller and with the session's
/// point count. The procedure runs inside timer ticks and button presses, waiting on the clock;
/// Cancel, Esc and EXIT reach it while it waits, as its reason to stop.
class Calibration {
 public:
  Calibration(const Access& access, Prompt& prompt, CalibrationScreen& screen, TwipsSize size);

  /// The screen is shown: places the targets and starts by itself 600 ms later.
  void activate();
  void start();   ///< "Start"
  void cancel();  ///< "Cancel", "EXIT", or the window is closed
  void escape();  ///< Esc: as cancel, and the controller is reset, whether or not it was begun

  /// A procedure is on its way; it ends soon after a cancel.
  bool running() const { return gate_.isHeld(); }
  /// Where the user is to touch now; nothing while no touch is waited for.
  const TwipsPoint* awaitedTarget() const;

 private:
  using Milliseconds = std::chrono::milliseconds;
  enum class Phase : std::uint8_t {
    beforeStart,
    working,        ///< between two touches, or entering the calibration
    awaitingTouch,  ///< the time bar runs
    storing         ///< nothing can be given up any more
  };
  /// Why a procedure ends before its last target.
  enum class Stop : std::uint8_t { none, cancelled, timedOut, escaped };
  /// The controller's own numbers of the place that was touched: any that the driver's type holds.
  using Counts = Quantity<struct ReadingUnit, std::int32_t>;
  struct Reading {
    Counts x;
    Counts y;
  };

  void tickStartDelay();  // Timer2
  void tickPulse();       // Timer1
  void showgrid();
  void endcal();
  /// A procedure from its first driver call to its last, after which the windows are as they were
  /// before.
  void calibrate();
  void docal(Connection& connection);
  void docal2pts(Connection& connection);
  bool enterCalibration(Connection& connection, const char* command, int attempts);
  /// Waits until `isReady` says true, with pulse and time bar. False when cancelled or timed out.
  bool awaitTouch(const std::function<bool()>& isReady);
  void takeReading(Reading reading);
  void awaitPenUp(const Connection& connection);
  void awaitPenUpAtEnd(const Connection& connection);
  void finishPoint(const Connection& connection);
  void resetController(Connection& connection);
  void abandon(Stop reason);
  void leave();

  /// The timed wait: ends early when cancelled.
  void wait(Milliseconds duration);
  bool stopped() const { return stop_ != Stop::none; }
  /// A procedure is on its way to its last target.
  bool isProceeding() const { return running() && phase_ != Phase::beforeStart && !stopped(); }
  /// Pulse and mark belong to a target.
  bool isAtTarget() const {
    return phase_ != Phase::beforeStart && !stopped() && index_ < targets_.size();
  }
  void drawTarget(std::size_t target, int ring, Colour colour);

  Access access_;
  Prompt& prompt_;
  CalibrationScreen& screen_;
  TwipsSize size_;
  std::unique_ptr<Timer> pulseTimer_;
  std::unique_ptr<Timer> startTimer_;

  std::uint8_t count_ = 0;  ///< the point count that this run began with
  std::vector<TwipsPoint> targets_;
  std::array<Reading, 26> readings_{};
  std::uint8_t index_ = 0;  ///< of the current target
  Phase phase_ = Phase::beforeStart;
  Stop stop_ = Stop::none;
  int ring_ = 0;
  bool pulseStopped_ = false;
  float progress_ = 0;  ///< of the time bar, twips
  int startTicks_ = 0;
  int penUpPolls_ = 0;
  bool left_ = false;
  CalibrationOutcome outcome_ = CalibrationOutcome::cancelled;
  Gate gate_;  ///< shut when all has ended
};

}  // namespace touch
