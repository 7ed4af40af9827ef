#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/driver/simulation.h"
#include "measure/measurement.h"

namespace touch {

/// What a plan wants to be drawn, tapped and rubbed, by the names of guides and targets, in its
/// order.
std::vector<std::string> tasksOf(const measure::Plan& plan);

/// A hand that never errs, on a simulated panel. What it does is reported as pointer events, as
/// often as the controller reports touches.
class SimulatedHand {
 public:
  SimulatedHand(const Simulation& simulation, std::string controller,
                const measure::PanelSize& size)
      : simulation_(simulation),
        controller_(std::move(controller)),
        size_(size),
        rate_(simulation_.reportRate(controller_)) {}

  /// The only one of a measurement that it makes.
  static measure::Source source();
  /// Nothing comes of it where the panel feels no touch.
  std::vector<measure::Trace> carryOut(std::string_view task, const measure::Plan& plan);
  /// Touches nothing for this long.
  void pause(measure::Seconds time);

 private:
  using Traces = std::vector<measure::Trace>;
  Traces move(std::string_view task, const measure::Plan& plan);
  Traces draw(const measure::Guide& guide);
  Traces tap(const measure::Target& target);
  Traces rest(const measure::Target& target);
  /// The whole panel, row by row.
  Traces rub();
  /// A report of a finger at this place; where none comes, the trace breaks.
  void move(Traces& traces, std::string_view task, measure::Place at);
  void lift();
  void pass(measure::Seconds time);
  int reportsIn(measure::Seconds time) const;

  Simulation simulation_;
  std::string controller_;
  measure::PanelSize size_;
  double rate_;  ///< reports a second
  measure::Seconds time_{};
  bool down_ = false;
};

}  // namespace touch
