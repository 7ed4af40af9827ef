#pragma once

#include <QPointer>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "core/driver/simulation.h"
#include "drawing/drawing_switches.h"
#include "serial/commands/typed_line.h"
#include "serial/debugger/debugger.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QSocketNotifier;
class QTabWidget;

namespace touch {

class frmBytesPanel;
class frmCommandPanel;
class frmConsolePanel;
class frmLinePanel;
class frmPlotPanel;
class frmPortsPanel;
class frmRatePanel;
class frmReplayBar;
class frmRsDraw;
class frmScriptPanel;
class PanelMonitor;

/// How the user leaves the debugger.
enum class DebuggerEnd {
  quit,  ///< back to the main window
  exit   ///< the whole program ends
};

/// What the debugger's windows need beside the controller.
struct DebuggerSurroundings {
  std::filesystem::path workFolder;
  std::vector<ReportFormat> formats;
  DrawingSwitches& switches;  ///< outlive the windows
  Simulation simulation;
  std::optional<QSize> fullScreenSize;  ///< logical pixels, in place of the full screen
  const PanelMonitor& panelMonitor;     ///< outlives the windows
  const QWidget& mainWindow;  ///< outlives the windows; what is drawn stays on its monitor
  SendHistory& history;       ///< outlives the windows
  std::string program;        ///< its name and version
  /// The main window, which is in use beside the debugger, is in the middle of an action: no
  /// exchange begins then.
  std::function<bool()> mainIsBusy{};
  ComPorts comPorts{};
  /// The folder in which those to replay are sought first; empty: the working folder.
  std::filesystem::path recordings{};

  const std::filesystem::path& recordingsFolder() const {
    return recordings.empty() ? workFolder : recordings;
  }
};

/// The serial debugger: commands to the controller past the driver, a console of what passes the
/// port, the report rate, recordings. It has the port from `open` until it has ended, in whatever
/// way.
class frmRSDebug final : public QWidget {
  Q_OBJECT

 public:
  /// `onEnded` is run when the driver has its port again; the window is of no use any more then.
  frmRSDebug(const Access& access, Prompt& prompt, SerialPort& serial,
             const DebuggerSurroundings& surroundings, std::function<void(DebuggerEnd)> onEnded);
  ~frmRSDebug() override;

  /// Shows the window and takes the port.
  void open();
  /// Gives the port back and ends, as soon as an exchange under way has ended.
  void leave(DebuggerEnd end);
  /// Shows whichever of its windows is open in front of the others.
  void comeToFront();
  /// No other exchange is to begin now.
  bool isBusy() const { return debugger_.isBusy(); }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* makeHead();
  QWidget* makeReceiveBar();
  QWidget* makeRecordBar();
  QWidget* makeFoot();
  void arrange();
  QPushButton* makeButton(const char* name, const QString& caption,
                          const std::function<void()>& action);

  /// Runs something that waits, and says so: meanwhile `unusable` can be used as little as a way
  /// out, which is put off.
  void whileBusy(const QString& waiting, const std::vector<QWidget*>& unusable,
                 const std::function<void()>& action);
  /// Runs an exchange: meanwhile no control can be used but those that end the window.
  void whileBusy(const std::function<void()>& action);
  void takePort();
  void send();
  void sendBytes(const std::vector<std::uint8_t>& bytes);
  void runScript();
  void draw();
  void record();
  void replay();
  void renew();
  void showState();
  /// The curves want to be told of what comes in while they are seen.
  void listenForPlot();
  void showPorts(bool possible);
  void searchEverywhere();
  /// Has `renew` called when there is something to see: again and again while something is under
  /// way, else when the line has something to say. A debugger that is left alone does not wake.
  void awaitNews();
  void stopAwaiting();

  Access access_;
  Prompt& prompt_;
  DebuggerSurroundings surroundings_;
  Clock::TimePoint opened_ = access_.clock.now();
  std::function<void(DebuggerEnd)> onEnded_;
  Debugger debugger_;

  QWidget* head_ = nullptr;
  QWidget* body_;
  QTabWidget* tabs_;                 ///< what stands beside the console where there is room
  std::optional<int> measuringTab_;  ///< where the console leaves no room for the rate
  frmCommandPanel* commands_;
  frmBytesPanel* bytes_;
  frmScriptPanel* script_;
  frmLinePanel* line_;
  frmPortsPanel* ports_;
  std::vector<PortFacts> portFacts_;
  Clock::TimePoint portsSeen_{};
  frmPlotPanel* plot_;
  frmConsolePanel* console_;
  QLabel* portState_;
  QPushButton* takePort_ = nullptr;
  QPushButton* searchPort_ = nullptr;
  QPushButton* receive_ = nullptr;  // Command3
  QPushButton* debug_ = nullptr;    // Command4
  QCheckBox* rate_;                 // Check1
  QPushButton* record_ = nullptr;
  QPushButton* replay_ = nullptr;
  QWidget* receiveBar_ = nullptr;
  frmReplayBar* replayBar_;
  frmRatePanel* ratePanel_;
  QWidget* touchPad_;
  QLabel* statusLine_;
  QPointer<frmRsDraw> drawing_;
  std::unique_ptr<Timer> timer_;
  std::unique_ptr<QSocketNotifier> lineNews_;
};

}  // namespace touch
