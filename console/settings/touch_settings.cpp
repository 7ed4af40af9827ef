#include "console/settings/touch_settings.h"

#include <algorithm>
#include <charconv>
#include <type_traits>

#include "core/exchange/exchange.h"
#include "support/clock.h"
#include "support/files/whole_file.h"
#include "support/prompt.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr auto betweenModeCommands = 30ms;

using Flag = std::int32_t (Driver::*)(std::int32_t handle, std::int32_t on);

SettingAnswer setFlag(const Access& access, Flag operation, bool on) {
  Connection connection(access);
  const std::int32_t result = (access.driver.*operation)(connection.handle(), on ? 1 : 0);
  return {connection.isOpen(), static_cast<std::int16_t>(result)};
}

int lowByte(int value) {
  return value & 0xFF;
}

template <auto enable>
SettingAnswer setSwitch(const Access& access, Prompt&, const DriverSettings&, int value) {
  return enable(access, value != 0);
}

template <auto set>
SettingAnswer setChoice(const Access& access, Prompt&, const DriverSettings&, int value) {
  return set(access, value);
}

template <auto member>
SettingAnswer setTiming(const Access& access, Prompt& prompt, const DriverSettings& current,
                        int value) {
  ClickTiming timing = timingOf(current);
  putMember<member>(timing, value);
  return confirmTiming(access, prompt, timing);
}

SettingAnswer setPanel(const Access& access, Prompt&, const DriverSettings&, int value) {
  return disableTouchPanel(access, value == 0);
}

SettingAnswer setSensitivityChoice(const Access& access, Prompt&, const DriverSettings&,
                                   int value) {
  return setSensitivity(access, true, value).value_or(SettingAnswer{});
}

constexpr std::array<SettingChoice, 2> onOff = {
    {{marked("settings", "on"), "on", 1}, {marked("settings", "off"), "off", 0}}};
constexpr std::array<SettingChoice, 4> rotations = {
    {{"0", " 0", 0}, {"90", "90", 1}, {"180", "180", 2}, {"270", "270", 3}}};
constexpr std::array<SettingChoice, 3> touchModes = {
    {{marked("settings", "desktop"), marked("settings", "Desk Top"), 1},
     {marked("settings", "drawing"), marked("settings", "Drawing"), 2},
     {marked("settings", "button"), marked("settings", "Button"), 3}}};
constexpr std::array<SettingChoice, 5> sensitivities = {
    {{marked("settings", "low"), marked("settings", "Low sensitive"), 0},
     {marked("settings", "normal"), marked("settings", "Normal touch (default)"), 1},
     {marked("settings", "more"), marked("settings", "More sensitive"), 2},
     {marked("settings", "very"), marked("settings", "Very sensitive"), 3},
     {marked("settings", "most"), marked("settings", "Most sensitive"), 4}}};

constexpr std::array settings = {
    Setting{"up-sound", marked("settings", "Enable Up Touch Sound"),
            marked("settings", "Up touch sound"), onOff, 0, 1, "",
            getMember<&DriverSettings::upSound>, putMember<&DriverSettings::upSound>,
            setSwitch<enableUpSound>},
    Setting{"down-sound", marked("settings", "Enable Down Touch Sound"),
            marked("settings", "Down touch sound"), onOff, 0, 1, "",
            getMember<&DriverSettings::downSound>, putMember<&DriverSettings::downSound>,
            setSwitch<enableDownSound>},
    Setting{"double-click", marked("settings", "Enable Double  Click"),
            marked("settings", "Double click"), onOff, 0, 1, "",
            getMember<&DriverSettings::doubleClick>, putMember<&DriverSettings::doubleClick>,
            setSwitch<enableDoubleClick>},
    Setting{"right-click", marked("settings", "Enable Right Mouse Button"),
            marked("settings", "Right button"), onOff, 0, 1, "",
            getMember<&DriverSettings::rightClick>, putMember<&DriverSettings::rightClick>,
            setSwitch<enableRightClick>},
    Setting{"rotation", marked("settings", "Rotation :"), marked("settings", "Rotation"), rotations,
            0, 3, "", getMember<&DriverSettings::rotation>, putMember<&DriverSettings::rotation>,
            setChoice<setRotation>},
    Setting{"touch-mode", marked("settings", "Touch mode"), marked("settings", "Touch mode"),
            touchModes, 1, 3, "", getMember<&DriverSettings::touchMode>,
            putMember<&DriverSettings::touchMode>, setChoice<setTouchMode>},
    Setting{"double-click-speed",
            marked("settings", "Double Click Speed"),
            marked("settings", "Double click speed"),
            {},
            0,
            255,
            "x 100 ms",
            getMember<&DriverSettings::doubleClickSpeed>,
            putMember<&DriverSettings::doubleClickSpeed>,
            setTiming<&ClickTiming::doubleClickSpeed>,
            true},
    Setting{"double-click-area",
            marked("settings", "Double Click Area"),
            marked("settings", "Double click area"),
            {},
            0,
            255,
            "",
            getMember<&DriverSettings::doubleClickArea>,
            putMember<&DriverSettings::doubleClickArea>,
            setTiming<&ClickTiming::doubleClickArea>,
            true},
    Setting{"right-click-time",
            marked("settings", "Right Click Response Time"),
            marked("settings", "Right click response time"),
            {},
            int{shortestRightClick.count()},
            int{longestRightClick.count()},
            "ms",
            getMember<&DriverSettings::rightClickTime>,
            putMember<&DriverSettings::rightClickTime>,
            setTiming<&ClickTiming::rightClickTime>,
            true},
    Setting{"sensitivity", marked("settings", "Touch Sensitivity"),
            marked("settings", "Touch sensitivity"), sensitivities, 0, 4, "", nullptr, nullptr,
            setSensitivityChoice},
    Setting{"touch-panel", marked("settings", "Disable Touch Panel"),
            marked("settings", "Touch panel"), onOff, 0, 1, "",
            getMember<&DriverSettings::reporting>, putMember<&DriverSettings::reporting>, setPanel},
};

std::string allowedValues(const Setting& setting) {
  if (setting.choices.empty()) {
    return "a number from " + std::to_string(setting.lowest) + " to " +
           std::to_string(setting.highest);
  }
  std::string text;
  for (const SettingChoice& choice : setting.choices) {
    if (!text.empty()) text += &choice == &setting.choices.back() ? " or " : ", ";
    text += choice.name;
  }
  return text;
}

Notice answered(const SettingAnswer& answer, const std::string& line) {
  return {answer.opened ? NoticeKind::success : NoticeKind::error, line};
}

}  // namespace

SettingAnswer enableUpSound(const Access& access, bool on) {
  return {setFlag(access, &Driver::EnableUpSound, on).opened, std::nullopt};
}

SettingAnswer enableDownSound(const Access& access, bool on) {
  return {setFlag(access, &Driver::EnableDownSound, on).opened, std::nullopt};
}

SettingAnswer enableDoubleClick(const Access& access, bool on) {
  return setFlag(access, &Driver::EnableDoubleClick, on);
}

SettingAnswer enableRightClick(const Access& access, bool on) {
  return setFlag(access, &Driver::EnableRightClick, on);
}

SettingAnswer setRotation(const Access& access, int quarterTurns) {
  Connection connection(access);
  access.driver.SetRotation(connection.handle(), lowByte(quarterTurns));
  return {connection.isOpen(), std::nullopt};
}

SettingAnswer setTouchMode(const Access& access, int mode) {
  Connection connection(access);
  access.driver.SetReportMode(connection.handle(), lowByte(mode));
  return {connection.isOpen(), std::nullopt};
}

SettingAnswer confirmTiming(const Access& access, Prompt& prompt, const ClickTiming& timing) {
  SettingAnswer answer;
  {
    Connection connection(access);
    const std::int32_t handle = connection.handle();
    access.driver.SetRightClickTime(handle, getMember<&ClickTiming::rightClickTime>(timing));
    const std::int32_t speedSet =
        access.driver.SetDoubleClickSpeed(handle, lowByte(timing.doubleClickSpeed.count()));
    access.driver.SetDoubleClickArea(handle, lowByte(timing.doubleClickArea));
    answer = {connection.isOpen(), static_cast<std::int16_t>(speedSet != 0 ? 1 : 0)};
  }
  prompt.message(
      access.session.messages[answer.result != 0 ? Message::updateOk : Message::updateError]);
  return answer;
}

std::optional<SettingAnswer> setSensitivity(const Access& access, bool enabled, int index) {
  if (!enabled || index < 0 || index >= static_cast<int>(sensitivities.size())) {
    return std::nullopt;
  }
  Connection connection(access);
  connection.write(commandFrame("SE" + std::to_string(index)));
  access.clock.delay(commandWait);
  connection.flush();
  return SettingAnswer{connection.isOpen(), std::nullopt};
}

SettingAnswer disableTouchPanel(const Access& access, bool disable) {
  Connection connection(access);
  const bool ps2 = interfaceType(access.session.controllerName) == InterfaceType::ps2;
  connection.write(commandFrame(ps2 ? "MP" : "MS"));
  access.clock.delay(betweenModeCommands);
  ask(connection, access.clock, commandFrame(disable ? "MI" : "MS"), {.wait = commandWait});
  return {connection.isOpen(), std::nullopt};
}

InterfaceType interfaceType(std::string_view controllerName) {
  if (controllerName.find("RS232") != controllerName.npos) return InterfaceType::serial;
  if (controllerName.find("USB") != controllerName.npos) return InterfaceType::usb;
  return InterfaceType::ps2;
}

Result<std::string> cursorNote(const std::filesystem::path& workingFolder) {
  std::string note = "\r\n";
  const auto file = workingFolder / "cursoroff.txt";
  if (std::error_code unknown; !std::filesystem::exists(file, unknown) && !unknown) return note;
  const auto content = readWholeFile(file, largestCursorNote);
  if (!content) return tl::unexpected(content.error());
  const std::string text = toUtf8(withoutByteOrderMark(*content));
  for (const std::string_view line : linesOf(text))
    note.append(line).append("\r\n");
  return note;
}

std::span<const Setting> settingTable() {
  return settings;
}

const Setting* findSetting(std::string_view name) {
  const auto found = std::find_if(settings.begin(), settings.end(),
                                  [name](const Setting& setting) { return setting.name == name; });
  return found == settings.end() ? nullptr : &*found;
}

Result<int, std::string> parseSetting(const Setting& setting, std::string_view text) {
  for (const SettingChoice& choice : setting.choices) {
    if (choice.name == text) return choice.value;
  }
  if (setting.choices.empty()) {
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, value);
    const bool number = parsed.ec == std::errc() && parsed.ptr == end;
    if (number && value >= setting.lowest && value <= setting.highest) return value;
  }
  return tl::unexpected(std::string(setting.name) + ": expected " + allowedValues(setting) +
                        ", found " + (text.empty() ? "nothing" : foundText(text)));
}

std::string settingText(const Setting& setting, int value) {
  for (const SettingChoice& choice : setting.choices) {
    if (choice.value == value) return say("settings", choice.name);
  }
  std::string text = std::to_string(value);
  if (!setting.unit.empty()) text.append(" ").append(setting.unit);
  return text;
}

std::string settingOutcome(const Setting& setting, int asked, const SettingAnswer& answer) {
  const std::string label = say("settings", setting.label);
  const std::string wanted = settingText(setting, asked);
  if (answer.opened) return label + ": " + wanted;
  return filled(say("settings", "%1: %2 was asked, the controller cannot be opened"),
                {label, wanted});
}

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
