#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "console/actions/actions.h"
#include "console/parameters/parameter_editor.h"
#include "console/settings/touch_settings.h"
#include "core/discovery/port_search.h"
#include "core/driver/driver_settings.h"
#include "core/serial_port.h"
#include "core/session.h"
#include "reports/report_format.h"
#include "support/prompt.h"
#include "support/result.h"

namespace touch {

/// Guards the tools for service; compared case-sensitively.
inline constexpr std::string_view servicePassword = "kqzm";

/// Shows a picture of the working folder, or says what is wrong with it.
using ShowPicture = std::function<Result<void, std::string>(const std::filesystem::path&)>;

/// How the optional pictures of the working folder are shown.
struct Pictures {
  ShowPicture picture;
  ShowPicture icon;
};

/// The main window's rules, which the model shows: start-up, the chosen controller, passwords, and
/// the ways out. One action at a time: what is asked for while another runs is dropped, and closing
/// is put off until it has ended.
class MainConsole {
 public:
  MainConsole(const Access& access, Prompt& prompt, MainModel& model, SerialPort& port,
              std::filesystem::path workFolder);

  /// Finds the controllers and fills the window; the message catalogue is loaded before.
  /// `windowsVersion` is the major version of the operating system where that is Windows.
  void startUp(std::optional<int> windowsVersion, const Pictures& pictures);
  /// Finds the controllers anew. The current one stays when it is still listed and answers.
  void refresh();
  /// Takes the list's controller `index` as the current one and reads it.
  void selectController(std::size_t index);
  /// "Info"
  void information();
  /// "Search COM ports"
  void searchComPorts();
  void cancelSearch() { actions_.gate().cutShort(); }

  /// For whatever else is done with the controller.
  Actions& actions() { return actions_; }
  SettingsPanel& settings() { return settings_; }
  ParameterEditor& parameters() { return parameters_; }

  /// Starts the calibration with `points` targets, whose screen lasts until `calibrationEnded`.
  void calstart(int points, const LastingWindow& screen);
  /// The check of a calibration, whose screen lasts until `calibrationEnded`, too.
  void checkCalibration(const LastingWindow& screen);
  /// Leads through a commissioning; its screens last until `commissionEnded`.
  void commission(const LastingWindow& screens);
  void commissionEnded();
  /// `stored`: the controller has another calibration than before.
  void calibrationEnded(bool stored, const Notice& notice);

  /// A test, which does without the controller and lasts until `testEnded`.
  void openTest(const LastingWindow& test);
  void testEnded();

  /// Ctrl+A. Returns whether the debugger is to be opened, or to come to the front.
  bool requestDebugger();
  /// The debugger has the current controller's port: until it has ended nothing else is done with
  /// that controller, and nothing that would ask all of them.
  void debuggerOpened(DebuggerWindow debugger) { actions_.debuggerOpened(std::move(debugger)); }
  /// The driver has its port again; `exit`: the program is to end, and nothing more is said to the
  /// controller.
  void debuggerEnded(bool exit);
  bool requestPinDefinition();  ///< Ctrl+B. Returns whether the pin definition is to be opened.
  /// The password box after any key. Returns what it is to hold.
  const std::string& passwordEdited(std::string text);
  /// Enter in the password box. Returns whether the debugger is to be opened.
  bool passwordEntered(std::string_view text);
  void passwordDismissed();  ///< Esc in it

  void exit();            ///< "Exit", Ctrl+E
  void releaseAndExit();  ///< "Release comport and Exit"
  void close();           ///< the window is closed

  bool busy() const { return !actions_.gate().isOpen(); }
  /// Those that the working folder adds to the built-in ones.
  const std::vector<ReportFormat>& reportFormats() const { return reportFormats_.formats; }

 private:
  enum class WayOut { exit, close, release, debuggerExit };

  /// `current`: the controller to keep, if it is still there.
  void findControllers(const std::string& current);
  /// What is known of the controller before holds no longer.
  void forgetController();
  void readController();
  void readSettings();
  void readIdentity();
  void showInformation(std::vector<std::string> lines);
  void showPassword(bool wanted);
  void sayWhoIsReady();
  /// An earlier run may have ended before its calibration was checked.
  void settleCalibration();
  /// An optional file of the working folder, if it is there.
  std::optional<std::filesystem::path> workFile(const char* name) const;
  void leave(WayOut way);
  void closingStep(WayOut way);
  void end();

  Access access_;
  Prompt& prompt_;
  MainModel& model_;
  SerialPort& port_;
  std::filesystem::path workFolder_;
  Actions actions_;
  SettingsPanel settings_;
  ParameterEditor parameters_;

  ReportFormats reportFormats_;
};

}  // namespace touch
