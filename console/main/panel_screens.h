#pragma once

#include <functional>
#include <memory>
#include <string>

#include "calibration/calibration.h"
#include "calibration/check.h"
#include "measure/windows/measure_setup.h"
#include "ui/screens/full_screen_window.h"

namespace touch {

/// The full-screen windows that take somebody at the panel, for one that leads through several of
/// them. Each opens in front of that one, and is gone when it tells that it has ended.
class PanelScreens {
 public:
  PanelScreens() = default;
  PanelScreens(const PanelScreens&) = delete;
  PanelScreens& operator=(const PanelScreens&) = delete;
  virtual ~PanelScreens() = default;

  virtual void calibrateFor(int points, std::function<void(CalibrationOutcome)> ended) = 0;
  virtual void checkFor(std::unique_ptr<WayBack> wayBack,
                        std::function<void(const CheckResult&)> ended) = 0;
  virtual void measureFor(measure::GuidedMeasuring guided, std::function<void()> ended) = 0;
  /// Has the driver take `monitor`, counted from 1, for the panel's; the user is told how that
  /// went. Returns the one that all of them open on now.
  virtual const QScreen& chooseMonitor(int monitor) = 0;
  /// Has the one that is open end soon, as its own way out does.
  virtual void endScreen() = 0;
};

/// What a window needs that leads through a commissioning of the current controller's panel.
struct CommissionCall {
  PanelScreens& screens;
  const QScreen& screen;
  std::optional<QSize> size;
  std::function<void()> onLeft;
};
using MakeCommission = std::function<FullScreenWindow*(const CommissionCall& call)>;

}  // namespace touch
