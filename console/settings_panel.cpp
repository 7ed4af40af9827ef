#include "console/settings_panel.h"

#include "core/language.h"

namespace touch {

namespace {

Status answered(const SettingAnswer& answer, const std::string& line) {
  return {answer.opened ? StatusKind::success : StatusKind::error, line};
}

}  // namespace

void SettingsPanel::take(const DriverSettings& reported) {
  sensitivityEnabled_ = false;
  sensitivity_.reset();
  panelSwitched_.reset();
  reported_ = reported;
  bars_ = TimingBars(reported);
}

std::optional<DriverSettings> SettingsPanel::readAgain() {
  const auto now = reportedSettings(access_);
  if (now) reported_ = *now;
  // Touches are switched by a command past the driver, which need not notice. A box that went back by itself would send
  // the same command at every click, and never the one that takes it back.
  if (panelSwitched_) reported_.reporting = *panelSwitched_;
  return now;
}

Status SettingsPanel::change(const Setting& setting, int value) {
  const SettingAnswer answer = setting.set(access_, prompt_, reported_, value);
  if (answer.opened && setting.name == "touch-panel") panelSwitched_ = value != 0;
  // Bars that the user has moved and not yet confirmed stay where he put them.
  Status status = answered(answer, settingOutcome(setting, value, answer, readAgain()));
  // Nothing but the keyboard takes it back where the panel is all there is.
  if (answer.opened && setting.name == "touch-panel" && value == 0)
    status.text += ". " + say("console", "Press Space to enable it again.");
  return status;
}

Status SettingsPanel::confirm() {
  const ClickTiming asked = bars_.timing();
  const SettingAnswer answer = confirmTiming(access_, prompt_, asked);
  const auto now = readAgain();
  if (!answer.opened || !now)
    return Status::error(say("console", "Timing: the controller cannot be opened"));
  bars_ = TimingBars(*now);
  if (bars_.timing() == asked)
    return Status::success(say("console", "Double click and right click timing: set"));
  return Status::error(
      say("console",
          "Double click and right click timing: the driver reports other values than were asked"));
}

std::optional<Status> SettingsPanel::changeSensitivity(int index) {
  const auto answer = setSensitivity(access_, sensitivityEnabled_, index);
  if (!answer) return std::nullopt;
  sensitivity_ = index;
  return answered(*answer, settingOutcome(*findSetting("sensitivity"), index, *answer, reported_));
}

}  // namespace touch
