#include "calibration/calibration.h"

#include <fmt/core.h>

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

/// A screen of this size in twips, which nobody sees: 1024 x 768 pixels.
constexpr TwipsSize unseenScreen{1024 * twipsPerPixel, 768 * twipsPerPixel};
constexpr auto fingerTick = 150ms;
constexpr auto longestRun = 15min;

/// The calibration's screen without a window, and the simulated finger that touches what it shows.
class SimulatedFinger final : public CalibrationScreen, private Surface {
 public:
  explicit SimulatedFinger(const Simulation& simulation) : simulation_(simulation) {}

  /// Once each tick: presses the target that is waited for, and lifts when it has been taken.
  void act(const Calibration& calibration) {
    const TwipsPoint* const target = calibration.awaitedTarget();
    if (target != nullptr && !down_) {
      print("  touching {:4.1f} %, {:4.1f} %\n", 100 * target->x / unseenScreen.width,
            100 * target->y / unseenScreen.height);
      simulation_.touch(target->x / unseenScreen.width, target->y / unseenScreen.height);
    } else if (target == nullptr && down_) {
      simulation_.lift();
    }
    down_ = target != nullptr;
  }

  std::optional<CalibrationOutcome> outcome() const { return outcome_; }

  Surface& surface() override { return *this; }
  void showButtons(bool, bool) override {}
  void showTimeBar(float) override {}
  void allowExit(bool) override {}
  void leave() override { simulation_.lift(); }
  void ended(CalibrationOutcome outcome) override { outcome_ = outcome; }

 private:
  void clear() override {}
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint, float, Colour, int) override {}

  Simulation simulation_;
  bool down_ = false;
  std::optional<CalibrationOutcome> outcome_;
};

ExitStatus checkAndCalibrate(Shell& shell, int points) {
  if (!shell.simulation().isThere()) {
    complain(
        "calibrating needs somebody who touches the targets: use touchutility at the panel. "
        "Here only simulated controllers can be calibrated (--simulate).");
    return ExitStatus::failed;
  }
  return onController([points](Shell& chosen) { return calibrate(chosen, points); })(shell);
}

void printPanelError(const char* when, const std::optional<Simulation::PanelError>& error) {
  if (!error) return;
  print("  error {}: {}\n", when, panelErrorText(*error));
}

}  // namespace

std::string panelErrorText(const Simulation::PanelError& error) {
  return fmt::format("mean {:.2f} %, at most {:.2f} % of the panel's width", 100 * error.mean,
                     100 * error.greatest);
}

ExitStatus calibrate(Shell& shell, int points) {
  const Access access = shell.access();
  access.session.calibrationPoints = points;
  const auto before = shell.simulation().panelError(shell.controller());
  print("Calibrating {} with {} points\n", shell.controller(), points);

  SimulatedFinger finger(shell.simulation());
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
  printPanelError("before", before);
  printPanelError("after ", shell.simulation().panelError(shell.controller()));
  return ExitStatus::done;
}

void addCalibrationCommands(const CommandLine& line) {
  addControllerCommand(line, line.app, "calibrate", "Calibrate a simulated controller",
                       [line](CLI::App& calibrate) {
                         const auto* const points =
                             calibrate.add_option("--points", "How many targets: 2, 3, 5 or 9")
                                 ->check(CLI::IsMember({2, 3, 5, 9}))
                                 ->default_str("5")
                                 ->type_name("N");
                         calibrate.callback([line, points] {
                           line.command = [count = points->as<int>()](Shell& shell) {
                             return checkAndCalibrate(shell, count);
                           };
                         });
                       });
}

}  // namespace touch
