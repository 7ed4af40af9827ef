#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/parameter_editor.h"
#include "console/settings_panel.h"
#include "core/discovery.h"
#include "core/driver_settings.h"
#include "core/identity.h"
#include "core/port_search.h"
#include "core/prompt.h"
#include "core/serial_port.h"
#include "core/session.h"
#include "core/status.h"
#include "serial/report_format.h"

namespace touch {

/// Guards the tools for service; compared case-sensitively.
inline constexpr std::string_view servicePassword = "kqzm";

/// The full-screen windows for tests, which do without the controller.
enum class TestScreen : std::uint8_t { drawing, linearity };

/// The main window as its logic sees it: what it can show and which other windows it can open.
class MainView {
 public:
  MainView() = default;
  MainView(const MainView&) = delete;
  MainView& operator=(const MainView&) = delete;
  virtual ~MainView() = default;

  /// While busy no control can be used, and `what` says what is being waited for.
  virtual void showBusy(const std::string& what) = 0;
  virtual void showIdle() = 0;
  /// What has just happened, in the window's status line.
  virtual void showStatus(const Status& status) = 0;
  /// Which controller is the current one, and how it is: what was said of another no longer holds.
  virtual void showReady(const Status& status) = 0;

  virtual void showControllers(const std::vector<std::string>& names,
                               std::optional<std::size_t> selected) = 0;
  /// Puts what the settings panel holds into the controls.
  virtual void showSettings() = 0;
  /// Puts what the parameter editor holds into the table.
  virtual void showParameters() = 0;
  virtual void showIdentity(const Identity& identity) = 0;
  virtual void showInformation(const std::vector<std::string>& lines) = 0;
  /// Returns what is wrong with the file; empty when it is shown.
  virtual std::string showPicture(const std::filesystem::path& file) = 0;
  virtual std::string showIcon(const std::filesystem::path& file) = 0;

  virtual void showAdvancedFrame() = 0;
  virtual void showPasswordFrame(bool shown) = 0;
  virtual void openDebugger() = 0;
  virtual void openPinDefinition() = 0;
  /// Full screen, in front of the main window; `calibrationEnded()` is called when it is gone.
  virtual void openCalibration() = 0;
  /// Ends a calibration that is on its way.
  virtual void cancelCalibration() = 0;
  /// Full screen, in front of the main window; `testEnded()` is called when it is gone.
  virtual void openTest(TestScreen test) = 0;
  /// Ends a test that is open.
  virtual void closeTest() = 0;
  /// Ends a debugger that is open.
  virtual void closeDebugger() = 0;
  /// Nothing more is to be done with the controller: the program may go.
  virtual void endProgram() = 0;
};

/// The main window's rules: start-up, the chosen controller, passwords, and the ways out.
/// One action at a time: what is asked for while another runs is dropped, and closing is put off until it has ended.
class MainConsole {
 public:
  MainConsole(const Access& access, Prompt& prompt, MainView& view, SerialPort& port,
              std::filesystem::path workFolder);

  /// Finds the controllers and fills the window; the message catalogue is loaded before. `systemVersion` is the major
  /// version of the operating system.
  void startUp(int systemVersion);
  /// Finds the controllers anew.
  void refresh();
  /// Takes the list's controller `index` as the current one and reads it.
  void selectController(std::size_t index);
  /// "Info"
  void information();
  /// "Search COM ports"
  void searchComPorts();
  void cancelSearch() { cutShort_ = true; }

  /// Any other action on the controller: runs it when no other runs, and shows the line that it answers with.
  enum class Afterwards { nothing, readSettings };
  void perform(const std::string& what, const std::function<Status()>& action,
               Afterwards afterwards = Afterwards::nothing);

  /// Something that needs no controller: runs it when no other action runs, and shows the line that it answers with.
  void examine(const std::string& what, const std::function<Status()>& look);

  SettingsPanel& settings() { return settings_; }
  ParameterEditor& parameters() { return parameters_; }

  /// Starts the calibration with `points` targets.
  void calstart(int points);
  /// `stored`: the controller has another calibration than before.
  void calibrationEnded(bool stored, const Status& status);

  void openTest(TestScreen test);
  void testEnded();

  void requestDebugger(std::string_view passwordBox);  ///< Ctrl+A
  /// The debugger has the serial port: until it has ended nothing else is done with the controller.
  void debuggerOpened();
  /// The driver has its port again; `exit`: the program is to end.
  void debuggerEnded(bool exit);
  void requestPinDefinition();  ///< Ctrl+B
  /// The password box after any key: what it is to hold.
  static std::string passwordEdited(std::string text);
  void passwordEntered(std::string_view text);  ///< Enter in the password box

  void exit();            ///< "Exit", Ctrl+E
  void releaseAndExit();  ///< "Release comport and Exit"
  void close();           ///< the window is closed

  bool busy() const { return busy_; }
  const std::vector<std::string>& controllers() const { return list_.names; }
  /// Those that the working folder adds to the built-in ones.
  const std::vector<ReportFormat>& reportFormats() const { return reportFormats_.formats; }

 private:
  class Action;
  enum class WayOut { none, exit, close };

  void findControllers();
  void readSettings();
  void readIdentity();
  void sayWhoIsReady();
  /// An optional file of the working folder, if it is there.
  std::optional<std::filesystem::path> workFile(const char* name) const;
  void leave(WayOut way);
  void closingStep();
  std::string selectedName() const;

  Access access_;
  Prompt& prompt_;
  MainView& view_;
  SerialPort& port_;
  std::filesystem::path workFolder_;
  SettingsPanel settings_;
  ParameterEditor parameters_;

  ControllerList list_;
  std::optional<std::size_t> selected_;
  std::string firmware_;
  bool answers_ = false;
  ReportFormats reportFormats_;
  bool busy_ = false;
  bool calibrating_ = false;
  bool testing_ = false;
  bool debugging_ = false;
  bool cutShort_ = false;
  bool gone_ = false;
  WayOut putOff_ = WayOut::none;
};

}  // namespace touch
