#pragma once

#include <optional>
#include <string>

#include "console/settings/touch_settings.h"
#include "core/driver/driver_settings.h"
#include "core/session.h"
#include "support/notice.h"

namespace touch {

class Prompt;

/// The page "Settings" without its window: what its controls show, what the scroll bars hold, and
/// what each control does when the user changes it. It then shows what was sent, whatever the
/// driver makes of it; the others keep what they show until the settings are read again. The answer
/// is one line for the user.
class SettingsPanel {
 public:
  using Bar = TimingBars::Bar;

  SettingsPanel(const Access& access, Prompt& prompt) : access_(access), prompt_(prompt) {}

  /// What the driver reports, to be put into the controls. Changes of the sensitivity list are not
  /// acted on until `filled()`: they come from the filling then, not from the user.
  void take(const DriverSettings& reported);
  void filled() { sensitivityEnabled_ = true; }

  /// What the controls show: as read, but for what has been changed since.
  const DriverSettings& shown() const { return shown_; }
  /// The sensitivity that was set last on this controller, since no driver can tell it; nothing
  /// after `take()`.
  std::optional<int> sensitivity() const { return sensitivity_; }
  const TimingBars& bars() const { return bars_; }
  void moveBar(Bar bar, int position) { bars_.move(bar, position); }

  /// Any setting but the timing and the sensitivity.
  Notice change(const Setting& setting, int value);
  /// "Confirm": the three scroll bars. Refused while the timing was not read: whoever moves one bar
  /// would send what the others stand at, which nobody has chosen.
  Notice confirm();
  /// The sensitivity list; nothing happens, and nothing is said, while it is being filled.
  std::optional<Notice> changeSensitivity(int index);

 private:
  Access access_;
  Prompt& prompt_;
  DriverSettings shown_;
  TimingBars bars_{DriverSettings{}};
  std::optional<int> sensitivity_;
  bool sensitivityEnabled_ = false;
};

}  // namespace touch
