#pragma once

#include <QPointer>
#include <QScreen>
#include <optional>

class QWidget;

namespace touch {

/// Which monitor the panel covers: every full-screen window opens there. A monitor that is not
/// connected is passed over.
class PanelMonitor {
 public:
  /// `number`, counted from 1, is what the user said at the start.
  explicit PanelMonitor(std::optional<int> number = std::nullopt) : number_(number) {}

  /// The driver has taken monitor `number` for the panel's. It stays that one, whatever number it
  /// has later.
  void assign(int number);
  /// The assigned one, else the one said at the start, else that of `window`.
  const QScreen& of(const QWidget& window) const;

 private:
  std::optional<int> number_;
  QPointer<QScreen> assigned_;
};

}  // namespace touch
