#include "console/settings/settings_panel.h"

#include "support/text/language.h"

namespace touch {

namespace {

Notice answered(const SettingAnswer& answer, const std::string& line) {
  return {answer.opened ? NoticeKind::success : NoticeKind::error, line};
}

}  // namespace

void SettingsPanel::take(const DriverSettings& reported) {
  sensitivityEnabled_ = false;
  sensitivity_.reset();
  shown_ = reported;
  bars_ = TimingBars(reported);
}

Notice SettingsPanel::change(const Setting& setting, int value) {
  const SettingAnswer answer = setting.set(access_, prompt_, shown_, value);
  setting.put(shown_, value);
  Notice status = answered(answer, settingOutcome(setting, value, answer));
  // Nothing but the keyboard takes it back where the panel is all there is.
  if (answer.opened && setting.name == "touch-panel" && value == 0)
    status.text += ". " + say("settings", "Press Space to enable it again.");
  return status;
}

Notice SettingsPanel::confirm() {
  if (!shown_.timingRead)
    return Notice::error(say("settings",
                             "Timing: nothing was sent, since it was not read from the "
                             "controller. \"Refresh\" (F5) reads it."));
  const SettingAnswer answer = confirmTiming(access_, prompt_, bars_.timing());
  if (!answer.opened)
    return Notice::error(say("settings", "Timing: the controller cannot be opened"));
  if (answer.result == 0)
    return Notice::error(say("settings", "Timing: the driver did not take it"));
  bars_.confirmed();
  return Notice::success(say("settings", "Double click and right click timing: set"));
}

std::optional<Notice> SettingsPanel::changeSensitivity(int index) {
  const auto answer = setSensitivity(access_, sensitivityEnabled_, index);
  if (!answer) return std::nullopt;
  sensitivity_ = index;
  return answered(*answer, settingOutcome(*findSetting("sensitivity"), index, *answer));
}

}  // namespace touch
