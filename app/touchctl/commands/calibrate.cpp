#include "calibration/calibration.h"

#include <fmt/core.h>

#include <cmath>
#include <optional>
#include <string>

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "calibration/check.h"
#include "console/parameters/kept_calibration.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

/// A screen of this size in twips, which nobody sees: 1024 x 768 pixels.
constexpr TwipsSize unseenScreen{1024 * twipsPerPixel, 768 * twipsPerPixel};
constexpr auto fingerTick = 150ms;
constexpr auto crossTick = 500ms;
constexpr auto longestRun = 15min;
constexpr double smallestLimit = 0.1;  // of the diagonal, in percent

/// The calibration's screen without a window, and the simulated finger that touches what it shows.
class SimulatedFinger final : public CalibrationScreen, private Surface {
 public:
  explicit SimulatedFinger(const Shell& shell) : shell_(shell) {}

  /// Once each tick: presses the target that is waited for, and lifts when it has been taken.
  void act(const Calibration& calibration) {
    const TwipsPoint* const target = calibration.awaitedTarget();
    if (target != nullptr && !down_) {
      tell(shell_, "  touching {:4.1f} %, {:4.1f} %\n", 100 * target->x / unseenScreen.width,
           100 * target->y / unseenScreen.height);
      shell_.simulation().touch(target->x / unseenScreen.width, target->y / unseenScreen.height);
    } else if (target == nullptr && down_) {
      shell_.simulation().lift();
    }
    down_ = target != nullptr;
  }

  std::optional<CalibrationOutcome> outcome() const { return outcome_; }

  Surface& surface() override { return *this; }
  void showButtons(bool, bool) override {}
  void showTimeBar(float) override {}
  void allowExit(bool) override {}
  void leave() override { shell_.simulation().lift(); }
  void ended(CalibrationOutcome outcome) override { outcome_ = outcome; }

 private:
  void clear() override {}
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint, float, Colour, int) override {}

  const Shell& shell_;
  bool down_ = false;
  std::optional<CalibrationOutcome> outcome_;
};

/// The same for a check. The hand behind the finger sees whether touches land well.
class CheckingFinger final : public CheckScreen, private Surface {
 public:
  explicit CheckingFinger(const Shell& shell) : shell_(shell) {}

  /// Once each tick: touches the cross that is waited for, or decides.
  void act(Check& check) {
    if (check.awaitsDecision()) return check.putBack();
    const auto cross = check.awaited();
    if (!cross) return;
    const auto landed = shell_.simulation().report(
        static_cast<double>(cross->x / unseenScreen.width),
        static_cast<double>(cross->y / unseenScreen.height), shell_.controller());
    if (!landed) return;
    const TwipsPoint at{static_cast<float>(landed->x) * unseenScreen.width,
                        static_cast<float>(landed->y) * unseenScreen.height};
    touch::tell(shell_, "  touching {:4.1f} %, {:4.1f} %: landed at {:4.1f} %, {:4.1f} %\n",
                100 * cross->x / unseenScreen.width, 100 * cross->y / unseenScreen.height,
                100 * landed->x, 100 * landed->y);
    check.touch(at);
  }

  const std::optional<CheckResult>& result() const { return result_; }

  Surface& surface() override { return *this; }
  void tell(const std::string&) override {}
  void showResidual(const Residual& residual) override {
    touch::tell(shell_, "    {:.2f} % of the diagonal off\n", residual.off.value);
  }
  void showTimeBar(float) override {}
  void allow(bool, bool) override {}
  void ended(const CheckResult& result) override { result_ = result; }

 private:
  void clear() override {}
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint, float, Colour, int) override {}

  const Shell& shell_;
  std::optional<CheckResult> result_;
};

ExitStatus sayNotice(const Notice& notice) {
  if (notice.kind == NoticeKind::error) {
    complain(notice.text);
    return ExitStatus::failed;
  }
  print("{}\n", notice.text);
  return ExitStatus::done;
}

ExitStatus checkAndSay(Shell& shell, DiagonalPercent limit, WayBack& wayBack) {
  const auto result = checkCalibration(shell, limit, wayBack);
  if (!result) return ExitStatus::failed;
  const auto said = sayNotice(result->notice);
  return result->outcome == CheckOutcome::kept ? said : ExitStatus::failed;
}

/// `limit`: the calibration is checked afterwards.
ExitStatus calibrateChosen(Shell& shell, int points, const std::optional<DiagonalPercent>& limit) {
  const Backup backup(shell.options().workFolder);
  if (const auto settled = settleUnchecked(shell.access(), shell.prompt(), backup))
    sayNotice(*settled);
  std::optional<KeptCalibration> kept;
  if (limit) kept.emplace(shell.access(), backup);
  const auto status = calibrate(shell, points);
  if (status == ExitStatus::done && kept) return checkAndSay(shell, *limit, *kept);
  const auto tidied = kept                         ? kept->settle()
                      : status == ExitStatus::done ? dropUnchecked(shell.controller(), backup)
                                                   : Status();
  if (!tidied) complain(tidied.error().describe());
  return status;
}

ExitStatus calibrateSimulated(Shell& shell, int points,
                              const std::optional<DiagonalPercent>& limit) {
  if (!shell.simulation().isThere()) {
    complain(
        std::string("calibrating needs somebody who touches the targets: use touchutility at the "
                    "panel") +
        (limit ? ", page \"Calibration\", \"Check after calibrating\"" : "") +
        ". Here only simulated controllers can be calibrated (--simulate).");
    return ExitStatus::failed;
  }
  return onController(
      [points, limit](Shell& chosen) { return calibrateChosen(chosen, points, limit); })(shell);
}

void tellPanelError(const Shell& shell, const char* when,
                    const std::optional<Simulation::PanelError>& error) {
  if (error) tell(shell, "  error {}: {}\n", when, panelErrorText(*error));
}

}  // namespace

std::string panelErrorText(const Simulation::PanelError& error) {
  return fmt::format("mean {:.2f} %, at most {:.2f} % of the panel's width", 100 * error.mean,
                     100 * error.greatest);
}

std::optional<CheckResult> checkCalibration(Shell& shell, DiagonalPercent limit, WayBack& wayBack) {
  tell(shell, "Checking with five crosses, within {} % of the diagonal\n", limit.value);
  CheckingFinger finger(shell);
  Check check(shell.clock(), finger, unseenScreen, limit, wayBack);
  const auto tick = shell.clock().makeTimer([&] {
    if (interrupted()) return check.putBack();
    finger.act(check);
  });
  tick->start(crossTick);
  check.begin();
  shell.clock().delay(longestRun, [&finger] { return finger.result().has_value(); });
  return finger.result();
}

ExitStatus calibrate(Shell& shell, int points) {
  const Access access = shell.access();
  access.session.calibrationPoints = points;
  const auto before = shell.simulation().panelError(shell.controller());
  tell(shell, "Calibrating {} with {} points\n", shell.controller(), points);

  SimulatedFinger finger(shell);
  Calibration calibration(access, shell.prompt(), finger, unseenScreen);
  const auto tick = access.clock.makeTimer([&] {
    finger.act(calibration);
    if (interrupted()) calibration.escape();
  });
  tick->start(fingerTick);
  calibration.activate();
  access.clock.delay(longestRun, [&finger] { return finger.outcome().has_value(); });

  if (finger.outcome() != CalibrationOutcome::stored) {
    complain("the calibration was not completed; nothing was stored");
    return ExitStatus::failed;
  }
  tellPanelError(shell, "before", before);
  tellPanelError(shell, "after ", shell.simulation().panelError(shell.controller()));
  return ExitStatus::done;
}

void addCalibrationCommands(const CommandLine& line) {
  addControllerCommand(
      line, line.app, "calibrate", "Calibrate a simulated controller", [line](CLI::App& calibrate) {
        const auto* const points =
            calibrate.add_option("--points", "How many targets: 2, 3, 5 or 9")
                ->check(CLI::IsMember({2, 3, 5, 9}))
                ->default_str("5")
                ->type_name("N");
        const std::string purpose =
            "Touch five crosses afterwards; unless all touches land near enough, put back the "
            "parameters from before and end with status 1";
        auto* const check = calibrate.add_flag("--check", purpose);
        const auto* const limit =
            calibrate
                .add_option("--check-limit",
                            "How far a touch may land from its cross, in percent of the diagonal")
                ->check(CLI::Range(smallestLimit, nowhereNear.value))
                ->default_str(fmt::format("{}", usualCheckLimit.value))
                ->type_name("PERCENT")
                ->needs(check);
        calibrate.callback([line, points, check, limit] {
          std::optional<DiagonalPercent> within;
          if (check->count() > 0) within = DiagonalPercent{limit->as<double>()};
          // The range lets through what is no number.
          if (within && std::isnan(within->value))
            refuseArgument("--check-limit", "expected a number, found \"nan\"");
          line.command = [count = points->as<int>(), within](Shell& shell) {
            return calibrateSimulated(shell, count, within);
          };
        });
      });
}

}  // namespace touch
