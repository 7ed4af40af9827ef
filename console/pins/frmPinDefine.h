#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "console/pins/pin_editor.h"

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace touch {

class SensorDrawing;
class StatusLine;

/// The sensor with its wires: each wire's analogue channel and I/O bit are chosen beside the wire.
/// What is used twice is marked at once, and "Update" stays shut until nothing is.
class frmPinDefine final : public QDialog {
  Q_OBJECT

 public:
  /// Runs an action on the controller, where that can be done now. Returns the line that it answers
  /// with, or why it was not run.
  using Perform =
      std::function<Notice(const std::string& what, const std::function<Notice()>& action)>;

  frmPinDefine(PinEditor& editor, Perform perform, QWidget* parent);

  /// Reads the controller's definition and shows it, unless the user has one in hand.
  void open() override;

 private:
  struct WireControls {
    QGroupBox* box;
    QSpinBox* channel;
    QSpinBox* bit;
  };

  void placeWires();
  void fill();
  void showProblems();
  void reload();
  void run(const QString& what, const std::function<Notice()>& action);

  PinEditor& editor_;
  Perform perform_;
  QRadioButton* fourWire_;
  QRadioButton* fiveWire_;
  SensorDrawing* drawing_;
  std::vector<WireControls> wires_;
  QLabel* controller_;
  QLabel* problems_;
  StatusLine* statusLine_;
  QPushButton* update_;
  QPushButton* putBack_;
};

}  // namespace touch
