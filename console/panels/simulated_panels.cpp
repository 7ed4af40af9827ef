#include "console/panels/simulated_panels.h"

namespace touch {

SimulatedPanels::SimulatedPanels(const Simulation& simulation, const Session& session,
                                 MainModel& model)
    : simulation_(simulation), session_(session), model_(model) {
  model.watch([this](Part part) {
    if (part == Part::parameters || part == Part::identity) show();
  });
}

void SimulatedPanels::switchFault(const SimulatedFault& fault, bool on) {
  touch::switchFault(simulation_, fault, on, model_.controllers);
  show();
}

std::optional<Simulation::PanelError> SimulatedPanels::error() const {
  return simulation_.panelError(session_.controllerName);
}

void SimulatedPanels::show(const std::optional<Simulation::PanelError>& before) {
  model_.panelErrors = {before, error()};
  model_.changed(Part::panelErrors);
}

}  // namespace touch
