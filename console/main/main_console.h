#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "console/parameters/parameter_editor.h"
#include "console/settings/settings_panel.h"
#include "core/discovery/discovery.h"
#include "core/discovery/identity.h"
#include "core/discovery/port_search.h"
#include "core/driver/driver_settings.h"
#include "core/serial_port.h"
#include "core/session.h"
#include "reports/report_format.h"
#include "support/gate.h"
#include "support/notice.h"
#include "support/prompt.h"

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
  /// The search of the ports has nothing left that could be stopped.
  virtual void endSearching() {}
  /// What has just happened, in the window's status line.
  virtual void showStatus(const Notice& status) = 0;
  /// Which controller is the current one, and how it is: what was said of another no longer holds.
  virtual void showReady(const Notice& status) = 0;

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
  /// Beside the main window, which stays in use; one that is open comes to the front.
  virtual void openDebugger() = 0;
  /// It waits for an answer, or has a message box up.
  virtual bool debuggerIsBusy() const { return false; }
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
/// One action at a time: what is asked for while another runs is dropped, and closing is put off
/// until it has ended.
class MainConsole {
 public:
  MainConsole(const Access& access, Prompt& prompt, MainView& view, SerialPort& port,
              std::filesystem::path workFolder);

  /// Finds the controllers and fills the window; the message catalogue is loaded before.
  /// `windowsVersion` is the major version of the operating system where that is Windows.
  void startUp(std::optional<int> windowsVersion);
  /// Finds the controllers anew. The current one stays when it is still listed and answers.
  void refresh();
  /// Takes the list's controller `index` as the current one and reads it.
  void selectController(std::size_t index);
  /// "Info"
  void information();
  /// "Search COM ports"
  void searchComPorts();
  void cancelSearch() { gate_.cutShort(); }

  /// Any other action on the controller: runs it when no other runs, and shows the line that it
  /// answers with. Returns that line, or why nothing was done.
  Notice perform(const std::string& what, const std::function<Notice()>& action);

  /// Something that needs no controller: runs it when no other action runs, and shows the line that
  /// it answers with.
  void examine(const std::string& what, const std::function<Notice()>& look);

  SettingsPanel& settings() { return settings_; }
  ParameterEditor& parameters() { return parameters_; }

  /// Starts the calibration with `points` targets.
  void calstart(int points);
  /// `stored`: the controller has another calibration than before.
  void calibrationEnded(bool stored, const Notice& status);

  void openTest(TestScreen test);
  void testEnded();

  void requestDebugger(std::string_view passwordBox);  ///< Ctrl+A
  /// The debugger has the current controller's port: until it has ended nothing else is done with
  /// that controller, and nothing that would ask all of them.
  void debuggerOpened();
  /// The driver has its port again; `exit`: the program is to end, and nothing more is said to the
  /// controller.
  void debuggerEnded(bool exit);
  void requestPinDefinition();  ///< Ctrl+B
  /// The password box after any key: what it is to hold.
  static std::string passwordEdited(std::string text);
  void passwordEntered(std::string_view text);  ///< Enter in the password box

  void exit();            ///< "Exit", Ctrl+E
  void releaseAndExit();  ///< "Release comport and Exit"
  void close();           ///< the window is closed

  bool busy() const { return !gate_.isOpen(); }
  const std::vector<std::string>& controllers() const { return list_.names; }
  /// Those that the working folder adds to the built-in ones.
  const std::vector<ReportFormat>& reportFormats() const { return reportFormats_.formats; }

 private:
  enum class WayOut { exit, close, release, debuggerExit };

  /// Runs `work` while nothing else starts. What the driver library lacked for it is told then, and
  /// returned.
  std::optional<std::string> hold(const std::string& what, const std::function<void()>& work);
  /// Runs `step`, which ends where it needs an operation that the driver library lacks.
  void attempt(const std::function<void()>& step);
  std::optional<std::string> tellWhatLacks();
  /// True when the driver library has all of them; else the user is told.
  bool available(std::span<const std::string_view> operations);

  /// `current`: the controller to keep, if it is still there.
  void findControllers(const std::string& current);
  /// What is known of the controller before holds no longer.
  void forgetController();
  void readController();
  void readSettings();
  void readIdentity();
  void sayWhoIsReady();
  /// An optional file of the working folder, if it is there.
  std::optional<std::filesystem::path> workFile(const char* name) const;
  void leave(WayOut way);
  void closingStep(WayOut way);
  std::string selectedName() const;
  /// The reason, which is shown as well, when the debugger stands in the way of an action on
  /// `controller`; without one on all of them.
  std::optional<std::string> refusedForDebugger(
      const std::optional<std::string>& controller = std::nullopt);

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
  std::optional<std::string>
      debugged_;  ///< the controller whose port the debugger has; empty: no controller
  std::set<std::string> lacking_;  ///< operations that the running action needed in vain
  Gate gate_;
};

}  // namespace touch
