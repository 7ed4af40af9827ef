#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "console/settings/timing_bars.h"
#include "core/driver/driver_settings.h"
#include "core/session.h"
#include "support/notice.h"
#include "support/result.h"

namespace touch {

class Prompt;

/// What a setter came to. The controls act on the session's controller, which each opens and
/// closes.
struct SettingAnswer {
  bool opened = false;  ///< false: the driver could not open the controller, and nothing was set
  /// The driver's own result, in 16 bits, where it is kept; nothing where it says nothing.
  std::optional<std::int16_t> result;
};

SettingAnswer enableUpSound(const Access& access, bool on);
SettingAnswer enableDownSound(const Access& access, bool on);
SettingAnswer enableDoubleClick(const Access& access, bool on);
SettingAnswer enableRightClick(const Access& access, bool on);
/// `quarterTurns` from 0 to 3.
SettingAnswer setRotation(const Access& access, int quarterTurns);
/// 1 "Desk Top", 2 "Drawing", 3 "Button".
SettingAnswer setTouchMode(const Access& access, int mode);

/// "Confirm": writes all three. The driver's result for the double-click speed alone decides
/// between message 6 and 7.
SettingAnswer confirmTiming(const Access& access, Prompt& prompt, const ClickTiming& timing);

/// How sensitive the panel is, from 0 "Low sensitive" to 4 "Most sensitive". Nothing is sent, and
/// nothing returned, while `enabled` (the sensitivity-enable flag) is false, or for an index that
/// is not in the list: -1 is "none chosen".
std::optional<SettingAnswer> setSensitivity(const Access& access, bool enabled, int index);

/// Switches the panel's touches off, or on again.
SettingAnswer disableTouchPanel(const Access& access, bool disable);

/// What a controller is attached with, as its name tells. `ps2` is what the others are not.
enum class InterfaceType : std::uint8_t { serial = 1, usb = 2, ps2 = 3 };
InterfaceType interfaceType(std::string_view controllerName);

/// In bytes: a note of several screens is no note.
inline constexpr std::size_t largestCursorNote = std::size_t{1} << 20U;

/// The text of "Hide Cursor": an empty line, then the lines of "cursoroff.txt" in `workingFolder`,
/// if it is there. Lines end with CR LF; the text is UTF-8. An error when it is there and cannot be
/// read.
Result<std::string> cursorNote(const std::filesystem::path& workingFolder);

/// One value that a setting can have.
struct SettingChoice {
  std::string_view name;     ///< as typed in a shell: "desktop"
  std::string_view caption;  ///< as shown in a window: "Desk Top"
  int value = 0;
};

/// One setting, for windows and shells alike.
struct Setting {
  std::string_view name;                   ///< as typed in a shell: "up-sound"
  std::string_view caption;                ///< as its control is labelled: "Enable Up Touch Sound"
  std::string_view label;                  ///< as it is spoken of: "Up touch sound"
  std::span<const SettingChoice> choices;  ///< empty: any number from `lowest` to `highest`
  int lowest = 0;
  int highest = 0;
  std::string_view unit;  ///< of the number, e.g. "ms"; may be empty
  /// The value that the driver reports; null when no driver can tell.
  int (*get)(const DriverSettings& reported) = nullptr;
  /// Notes the value among those that are shown; null when no driver can tell it.
  void (*put)(DriverSettings& shown, int value) = nullptr;
  /// Sets it. The values that go along with this one are taken from `current`.
  SettingAnswer (*set)(const Access& access, Prompt& prompt, const DriverSettings& current,
                       int value) = nullptr;
  /// It is set together with others, which have to be known.
  bool needsCurrent = false;
};

/// Every setting, in the order in which they are shown.
std::span<const Setting> settingTable();
/// The setting of this name, or null.
const Setting* findSetting(std::string_view name);

/// The value that a user means by `text`; else what they may say instead.
Result<int, std::string> parseSetting(const Setting& setting, std::string_view text);
/// The name of a choice in the user's language, or the number with its unit.
std::string settingText(const Setting& setting, int value);

/// What came of setting it to `asked`: "Right button: on"; "Right button: on was asked, the
/// controller cannot be opened".
std::string settingOutcome(const Setting& setting, int asked, const SettingAnswer& answer);

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
