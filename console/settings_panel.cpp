#include "console/settings_panel.h"

#include "core/language.h"

namespace touch {

void SettingsPanel::take(const DriverSettings& reported) {
  sensitivityEnabled_ = false;
  sensitivity_.reset();
  shown_ = reported;
  bars_ = TimingBars(reported);
}

std::string SettingsPanel::change(const Setting& setting, int value) {
  const SettingAnswer answer = setting.set(access_, prompt_, shown_, value);
  setting.put(shown_, value);
  return settingOutcome(setting, value, answer);
}

std::string SettingsPanel::confirm() {
  const SettingAnswer answer = confirmTiming(access_, prompt_, bars_.timing());
  if (!answer.opened) return say("console", "Timing: the controller cannot be opened");
  if (answer.result == 0) return say("console", "Timing: the driver did not take it");
  bars_.confirmed();
  return say("console", "Double click and right click timing: set");
}

std::optional<std::string> SettingsPanel::changeSensitivity(int index) {
  const auto answer = setSensitivity(access_, sensitivityEnabled_, index);
  if (!answer) return std::nullopt;
  sensitivity_ = index;
  return settingOutcome(*findSetting("sensitivity"), index, *answer);
}

}  // namespace touch
