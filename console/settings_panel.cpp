#include "console/settings_panel.h"

#include "core/language.h"

namespace touch {

void SettingsPanel::take(const DriverSettings& reported) {
  sensitivityEnabled_ = false;
  sensitivity_.reset();
  reported_ = reported;
  bars_ = TimingBars(reported);
}

void SettingsPanel::readAgain() {
  reported_ = readset(access_);
}

std::string SettingsPanel::change(const Setting& setting, int value) {
  const SettingAnswer answer = setting.set(access_, prompt_, reported_, value);
  // Bars that the user has moved and not yet confirmed stay where he put them.
  readAgain();
  return settingOutcome(setting, value, answer, reported_);
}

std::string SettingsPanel::confirm() {
  const ClickTiming asked = bars_.timing();
  const SettingAnswer answer = confirmTiming(access_, prompt_, asked);
  readAgain();
  bars_ = TimingBars(reported_);
  if (!answer.opened) return say("console", "Timing: the controller cannot be opened");
  if (bars_.timing() == asked) return say("console", "Double click and right click timing: set");
  return say(
      "console",
      "Double click and right click timing: the driver reports other values than were asked");
}

std::optional<std::string> SettingsPanel::changeSensitivity(int index) {
  const auto answer = setSensitivity(access_, sensitivityEnabled_, index);
  if (!answer) return std::nullopt;
  sensitivity_ = index;
  return settingOutcome(*findSetting("sensitivity"), index, *answer, reported_);
}

}  // namespace touch
