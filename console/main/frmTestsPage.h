#pragma once

#include <QWidget>

namespace touch {

struct SimulatedFault;

/// The page "Tests": drawing and the linearity tester; in a simulated run the faults of the
/// simulated panels, too.
class frmTestsPage final : public QWidget {
  Q_OBJECT

 public:
  explicit frmTestsPage(bool simulated, QWidget* parent = nullptr);

 signals:
  void drawRequested();
  void linearityRequested();
  void faultSwitched(const touch::SimulatedFault* fault, bool on);

 private:
  QWidget* makeTests();
  QWidget* makeFaults();
};

}  // namespace touch
