#pragma once

#include <QWidget>

namespace touch {

class frmWindows;
class SimulatedPanels;

/// The page "Tests": drawing and measuring; in a simulated run the faults of the
/// simulated panels, too.
class frmTestsPage final : public QWidget {
  Q_OBJECT

 public:
  /// `panels` are null where the panels are real ones.
  frmTestsPage(frmWindows& windows, SimulatedPanels* panels);

 private:
  QWidget* makeTests(frmWindows& windows);
  QWidget* makeFaults(SimulatedPanels& panels);
};

}  // namespace touch
