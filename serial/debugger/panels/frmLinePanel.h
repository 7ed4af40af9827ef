#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "serial/debugger/debugger.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace touch {

/// The debugger's side for the line itself: its settings, the wires of the plug, and what was
/// counted on it.
class frmLinePanel final : public QWidget {
  Q_OBJECT

 public:
  explicit frmLinePanel(QWidget* parent = nullptr);

  /// `possible`: the port is open and may be changed now.
  void show(const LineView& view, bool possible);

 signals:
  void settingsChosen(const LineSettings& line);
  void switched(LineSwitch which, bool on);
  void breakRequested();

 private:
  void chooseSettings(const LineSettings& line);

  std::array<QComboBox*, 4> settings_{};  ///< speed, data bits, parity, stop bits
  QPushButton* use_;
  QCheckBox* dtr_;
  QCheckBox* rts_;
  QPushButton* break_;
  QLabel* wires_;
  QLabel* counters_;
  std::optional<LineSettings> shown_;
};

}  // namespace touch
