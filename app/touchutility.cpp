#include <CLI/CLI.hpp>
#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "app/driver_choice.h"
#include "app/options.h"
#include "app/parsing.h"
#include "app/process/ending_signals.h"
#include "app/process/guarded_run.h"
#include "app/process/no_display.h"
#include "app/process/orderly_process.h"
#include "app/process/system_text.h"
#include "app/simulated_source.h"
#include "commission/sheet/frmSheetPdf.h"
#include "commission/steps/frmCommission.h"
#include "console/main/frmMain.h"
#include "console/main/test_parts.h"
#include "core/driver/nexapi.h"
#include "core/driver/trace.h"
#include "core/session.h"
#include "ports/spare_numbers.h"
#include "serial/port/asio_serial_port.h"
#include "support/system_name.h"
#include "ui/driver_notice.h"
#include "ui/event_loop_clock.h"
#include "ui/guarded_application.h"
#include "ui/guide/help.h"
#include "ui/language.h"
#include "ui/message_box_prompt.h"
#include "ui/style/colours.h"
#include "ui/style/face_style.h"
#include "ui/text.h"
#include "ui/window_manners.h"

namespace {

using namespace touch;

constexpr int exitFailed = 1;
constexpr int exitNoDriver = 3;

void sayError(const std::string& text, const QString& wayOut) {
  QMessageBox box(QMessageBox::Critical, "TouchUtility", {}, QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  box.setText(shownText(text));
  box.setInformativeText(wayOut);
  box.exec();
}

/// Asks what to do without a driver; true when the user wants the simulated controllers.
bool offerSimulation(const BindError& error) {
  QMessageBox box(QMessageBox::Critical, "TouchUtility", {});
  box.setTextFormat(Qt::PlainText);
  box.setText(shownText(error.describe()));
  box.setInformativeText(
      QMessageBox::tr("Without the touch driver no controller can be reached. Install the driver "
                      "of your controller, or "
                      "look around with simulated controllers: the page \"Doctor\" there, or "
                      "'touchctl doctor' in a shell, says where the driver was looked for."));
  auto* const simulated =
      box.addButton(QMessageBox::tr("&Use simulated controllers"), QMessageBox::AcceptRole);
  auto* const quit = box.addButton(QMessageBox::tr("&Quit"), QMessageBox::RejectRole);
  simulated->setObjectName("cmdUseSimulated");
  quit->setObjectName("cmdQuit");
  box.setEscapeButton(quit);
  auto* const help = box.addButton(QMessageBox::tr("&Help"), QMessageBox::HelpRole);
  QObject::disconnect(help, &QPushButton::clicked, nullptr, nullptr);  // it would end the box
  QObject::connect(help, &QPushButton::clicked, &box, [&box] { showHelp(box); });
  setHelpChapter(box, "No controller is found");
  addHelpKey(box);
  box.exec();
  return box.clickedButton() == simulated;
}

struct ChosenDriver {
  std::unique_ptr<BoundDriver> driver;
  std::optional<BindError> refused;  ///< why it is not the one that was wanted
};

/// Nothing when the user, who knows why there is no driver, wants none.
std::optional<ChosenDriver> bindDriver(Options& options, Clock& clock, DriverPatience& patience) {
  std::optional<BindError> refused;
  while (true) {
    auto driver = bindChosenDriver(options, clock, patience);
    if (driver) return ChosenDriver{std::move(*driver), refused};
    if (options.simulate) {
      sayError(driver.error().describe(),
               QMessageBox::tr("The installation is incomplete; install TouchUtility again."));
      return std::nullopt;
    }
    if (!offerSimulation(driver.error())) return std::nullopt;
    refused = driver.error();
    options.simulate = true;
    options.driver.reset();
  }
}

QIcon programIcon() {
  QIcon icon;
  // With its size given, a picture is not read before a desktop asks for it.
  for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
    icon.addFile(QString(":/icons/touchutility-%1.png").arg(side), QSize(side, side));
  }
  return icon;
}

/// --screen is given in pixels, windows are measured in logical ones.
std::optional<QSize> logicalSize(const std::optional<ScreenSize>& screen, const QApplication& app) {
  if (!screen) return std::nullopt;
  return QSize(screen->width, screen->height) / app.devicePixelRatio();
}

/// Ends the program when the system, or somebody at a terminal, asks it to: as closing its window
/// does, and while it starts as if nobody answered its boxes. A box that is up goes first. What
/// hangs in a driver's start, where nothing is open yet, is left to the second asking.
class EndingOnRequest {
 public:
  explicit EndingOnRequest(DriverNotice& notice) : notice_(notice) {
    using namespace std::chrono_literals;
    again_.setInterval(100ms);  // after one box there may be another
    notice_.onLostInEnding = [this] { again_.start(); };
    QObject::connect(&again_, &QTimer::timeout, [this] {
      if (QWidget* const box = QApplication::activeModalWidget()) {
        box->close();
      } else if (window_) {
        window_->close();
      }
    });
  }
  void closes(frmMain& window) {
    window_ = &window;
    QObject::connect(&window, &frmMain::closing, &window, [this] { notice_.endSoon(); });
    starting_ = false;
  }

 private:
  DriverNotice& notice_;
  QTimer again_;
  QPointer<frmMain> window_;
  std::atomic<bool> starting_ = true;
  std::atomic<bool> asked_ = false;
  EndingSignals signals_{[this] {
    constexpr int exitInterrupted = 130;
    if (asked_.exchange(true) && starting_) std::_Exit(exitInterrupted);
    notice_.endSoon();
    QMetaObject::invokeMethod(&again_, qOverload<>(&QTimer::start), Qt::QueuedConnection);
  }};
};

void chooseLanguage(const Options& options) {
  if (options.language) {
    const QString language = shownText(*options.language);
    // Numbers go with the language, unless the system has it with a country of its own.
    if (QLocale().language() != QLocale(language).language())
      QLocale::setDefault(QLocale(language));
    speak(language);
    return;
  }
  QStringList available;
  for (const std::string_view language : languages)
    available << shownText(language);
  speak(systemLanguage(available));
}

/// It may be plugged in later; until then the panel's windows are where the main window is.
void sayWhenNotConnected(const std::optional<int>& monitor) {
  const auto connected = QGuiApplication::screens().size();
  if (!monitor || *monitor <= connected) return;
  std::fprintf(stderr, "touchutility: --monitor %d: there are %d monitors now\n", *monitor,
               static_cast<int>(connected));
}

int run(Options& options, int argc, char** argv) {
  const GuardedApplication app(argc, argv);
  QApplication::setApplicationName("TouchUtility");
  QApplication::setDesktopFileName("org.touchutility.TouchUtility");
  QApplication::setStyle(new FaceStyle);  // the application owns it
  applyTheme(options.dark);
  const WindowManners manners;
  // Every report of a panel counts. X11's plugin would merge those that it finds waiting.
  QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
  QApplication::setAttribute(Qt::AA_CompressTabletEvents, false);
  QApplication::setQuitOnLastWindowClosed(false);
  EventLoopClock clock;
  DriverNotice notice(clock);
  EndingOnRequest ending(notice);
  chooseLanguage(options);
  sayWhenNotConnected(options.monitor);

  auto messages = loadMessages(options.workFolder);
  if (!messages) {
    const bool noFolder = messages.error().file == options.workFolder.string();
    sayError(messages.error().describe(),
             noFolder ? QMessageBox::tr("Start the program in another folder, or name one with "
                                        "--work-dir DIR.")
                      : QMessageBox::tr("Mend or remove the file, then start again."));
    return exitFailed;
  }
  if (const auto read = readSimulatedSource(options, "touchutility"); !read) {
    sayError(read.error().describe(),
             QMessageBox::tr("Name the folder of a commissioning, as in "
                             "--simulate-from commissioning/A-17-2026-11-12."));
    return exitFailed;
  }
  // Whoever wants to see the panel does not need them.
  auto recordings = recordingsOf(options.simulateFrom);
  const auto recordingsFolder =
      recordings ? recordings->folder() : tl::unexpected(recordings.error());
  if (!recordingsFolder)
    std::fprintf(stderr, "touchutility: %s\n",
                 printable(recordingsFolder.error().describe()).c_str());
  const auto chosen = bindDriver(options, clock, notice);
  if (!chosen) return exitNoDriver;
  BoundDriver& bound = *chosen->driver;
  addSimulatedPort(bound, options.comPorts);
  addSpareNumbers(options.comPorts);

  Trace trace;
  if (options.trace) {
    if (const auto started = trace.start(*options.trace); !started) {
      sayError(started.error(), {});
      return exitFailed;
    }
  }
  TracingDriver driver(bound, trace);
  TracingSerialPort port(AsioSerialPort::withTrueTimes(options.comPorts), trace);
  MessageBoxPrompt prompt;
  Session session;
  session.messages = *messages;

  DrawingSwitches switches;
  measure::MeasureSetup measuring;
  if (options.replay) measuring.size = options.replay->size;
  const std::filesystem::path ownFolder =
      QStandardPaths::writableLocation(QStandardPaths::AppDataLocation).toStdU16String();
  const WorkingFiles workingFiles(options.workFolder, ownFolder);

  const std::vector<std::string> versions = {programVersion(), systemName(),
                                             std::string("Qt ") + qVersion()};
  Patient patient{.access = Access{session, driver, clock},
                  .driverPath = bound.path(),
                  .simulated = bound.isSimulated(),
                  .ports = options.comPorts,
                  .workFolder = options.workFolder,
                  .versions = versions};
  const auto commission = [&](const CommissionCall& call) {
    return new commission::frmCommission({prompt, patient, trace}, call);
  };
  frmMain window({session, driver, clock}, prompt, port, trace,
                 {switches, workingFiles, measuring, commission},
                 {.workFolder = options.workFolder,
                  .driverPath = bound.path(),
                  .simulation = Simulation(bound),
                  .fullScreenSize = logicalSize(options.screen, app),
                  .monitor = options.monitor,
                  .refusedDriver = chosen->refused,
                  .ports = options.comPorts,
                  .versions = versions,
                  .ownFolder = ownFolder,
                  .recordings = recordingsFolder.value_or(std::filesystem::path())});
  // Its pictures take a tenth of the start to read.
  QObject::connect(&window, &frmMain::seen, &window,
                   [] { QApplication::setWindowIcon(programIcon()); });
  ending.closes(window);
  window.open();
  return QApplication::exec();
}

/// Without a window, and so without a display.
int printSheet(const std::filesystem::path& path, const Options& options, int argc, char** argv) {
  needNoDisplay();
  const QApplication app(argc, argv);
  chooseLanguage(options);
  const auto folder = commission::RunFolder::open(path);
  const Status printed = folder ? commission::printSheet(*folder) : tl::unexpected(folder.error());
  if (printed) return 0;
  std::fprintf(stderr, "touchutility: %s\n", printed.error().describe().c_str());
  return exitFailed;
}

int runProgram(int argc, char** argv) {
  const OrderlyProcess process("touchutility");
  trustOwnFoldersAlone();
  const SystemText text(argc, argv);
  CLI::App arguments("Finds, sets up, calibrates and tests resistive touch screen controllers.",
                     "touchutility");
  Options options;
  addCommonOptions(arguments, options);
  KnownValues known;
  addWindowOptions(arguments, known, options);
  arguments.footer(exitStatusLine(touchutilityManual));
  if (const auto status = parseCommandLine(arguments, touchutilityManual, known, argc, argv)) {
    return *status;
  }
  if (options.printSheet) return printSheet(*options.printSheet, options, argc, argv);
  return run(options, argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  return guardedRun("touchutility", [&] { return runProgram(argc, argv); });
}
