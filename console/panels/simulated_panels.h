#pragma once

#include <optional>

#include "console/actions/main_model.h"
#include "console/panels/simulated_faults.h"
#include "core/driver/simulation.h"
#include "core/session.h"

namespace touch {

/// The panels of a simulated run: what is wrong with them, and how far touches miss, which the
/// model shows.
class SimulatedPanels {
 public:
  /// All outlive this.
  SimulatedPanels(const Simulation& simulation, const Session& session, MainModel& model);
  SimulatedPanels(const SimulatedPanels&) = delete;
  SimulatedPanels& operator=(const SimulatedPanels&) = delete;
  ~SimulatedPanels() = default;

  /// Switches the fault of all controllers' panels. Off is what a panel was like when new.
  void switchFault(const SimulatedFault& fault, bool on);
  void calibrationBegins() { errorBefore_ = error(); }
  void calibrationEnded(bool stored) { show(stored ? errorBefore_ : std::nullopt); }

 private:
  std::optional<Simulation::PanelError> error() const;
  void show(const std::optional<Simulation::PanelError>& before = std::nullopt);

  Simulation simulation_;
  const Session& session_;
  MainModel& model_;
  std::optional<Simulation::PanelError> errorBefore_;  ///< the calibration that began last
};

}  // namespace touch
