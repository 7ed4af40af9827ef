#pragma once

#include <QWidget>
#include <cstdint>
#include <optional>
#include <vector>

#include "ports/port_list.h"

class QListWidget;
class QPushButton;

namespace touch {

/// The debugger's side for the machine's serial ports: what is behind each, whether it can be
/// opened, and what takes one.
class frmPortsPanel final : public QWidget {
  Q_OBJECT

 public:
  explicit frmPortsPanel(QWidget* parent = nullptr);

  /// What can be done with the ports now.
  enum class State : std::uint8_t { usable, unusable, searched };
  /// Shows the ports as they are now; the chosen one stays chosen. Returns what was plugged in
  /// since they were shown last.
  QString show(std::vector<PortFacts> ports, State state);

 signals:
  void chosen(const ListedPort& port);
  void searchRequested();
  void stopRequested();

 private:
  void use();

  QListWidget* list_;
  QPushButton* use_;
  QPushButton* search_;
  State state_ = State::unusable;
  std::optional<std::vector<PortFacts>> shown_;
};

}  // namespace touch
