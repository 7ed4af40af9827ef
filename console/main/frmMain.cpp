#include "console/main/frmMain.h"

#include <QApplication>
#include <QBuffer>
#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QIcon>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QOperatingSystemVersion>
#include <QPalette>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSysInfo>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <utility>

#include "console/doctor/diagnostics_file.h"
#include "console/doctor/doctor_report.h"
#include "console/doctor/frmDoctorPage.h"
#include "console/main/frmCalibrationPage.h"
#include "console/main/frmControllerPage.h"
#include "console/main/frmTestsPage.h"
#include "console/main/monitors.h"
#include "console/main/picture_file.h"
#include "console/main/simulated_faults.h"
#include "console/maintenance/frmMaintenancePage.h"
#include "console/parameters/frmParametersPage.h"
#include "console/pins/frmPinDefine.h"
#include "console/settings/frmSettingsPage.h"
#include "linetest/canvas/frmDraw.h"
#include "linetest/linearity/frmLinearity.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/controls/scrollable.h"
#include "ui/controls/status_line.h"
#include "ui/guide/help.h"
#include "ui/page_keys.h"
#include "ui/text.h"

namespace touch {

namespace {

constexpr int pictureHeight = 56;
constexpr int widestPicture = 200;
// Pictures come from a file that anybody may have put there: a larger one is not worth its memory.
/// They stay where they are: a picture may be large.
QByteArray bytesOf(const PictureFile& picture) {
  return QByteArray::fromRawData(picture.content.data(),
                                 static_cast<qsizetype>(picture.content.size()));
}

constexpr int largestPictureMegabytes = 80;

Notice outcomeText(CalibrationOutcome outcome) {
  const auto line = [](const QString& text) { return text.toStdString(); };
  switch (outcome) {
    case CalibrationOutcome::stored:
      return Notice::success(line(frmMain::tr("The calibration is stored.")));
    case CalibrationOutcome::timedOut:
      return Notice::error(line(
          frmMain::tr("No touch came in time. The calibration was given up; nothing was stored.")));
    case CalibrationOutcome::failed:
      return Notice::error(line(frmMain::tr("The calibration failed; nothing was stored.")));
    case CalibrationOutcome::cancelled:
      break;
  }
  return line(frmMain::tr("The calibration was cancelled; nothing was stored."));
}

Notice statusOf(const Diagnosis& diagnosis) {
  const auto has = [&diagnosis](FindingState state) {
    return std::ranges::find(diagnosis.findings, state, &Finding::state) !=
           diagnosis.findings.end();
  };
  const auto kind = has(FindingState::problem) ? NoticeKind::error
                    : has(FindingState::note)  ? NoticeKind::remark
                                               : NoticeKind::success;
  return {kind, summary(diagnosis) + '.'};
}

/// The system's major version where it is Windows.
std::optional<int> windowsVersion() {
  // By name: from Qt 6.8 on the type is no longer compared with QOperatingSystemVersion::Windows.
  if (QSysInfo::kernelType() != QLatin1String("winnt")) return std::nullopt;
  return QOperatingSystemVersion::current().majorVersion();
}

// Where no window is ever painted the work begins all the same.
constexpr std::chrono::seconds longestUnseen{2};

}  // namespace

frmMain::frmMain(const Access& access, Prompt& prompt, SerialPort& port, Trace& trace,
                 const TestParts& tests, const Startup& startup)
    : access_(access),
      prompt_(prompt),
      port_(port),
      trace_(trace),
      tests_(tests),
      startup_(startup),
      panelMonitor_(startup.monitor),
      console_(access, prompt, *this, port, startup.workFolder),
      pinEditor_(access, prompt, Backup(startup.workFolder)),
      picture_(new QLabel),
      controls_(new QWidget),
      tabs_(new QTabWidget),
      controllerPage_(new frmControllerPage),
      passwordFrame_(new QFrame),
      passwordBox_(new QLineEdit),
      statusLine_(new StatusLine),
      cancelSearch_(new QPushButton(tr("&Stop searching"))),
      release_(new QPushButton(tr("Re&lease comport and Exit"))) {
  setObjectName("frmMain");
  setWindowTitle("TouchUtility");
  setHelpChapter(*this, "Starting");
  addHelpKey(*this);
  tabs_->setObjectName("tabs");
  tabs_->setUsesScrollButtons(true);
  addPageKeys(*this, *tabs_);
  for (const QString& page : {tr("Controller"), tr("Settings"), tr("Calibration"),
                              tr("Maintenance"), tr("Parameters"), tr("Tests"), tr("Doctor")})
    tabs_->addTab(new ScrolledPage, page);
  said_.resize(static_cast<std::size_t>(tabs_->count()));
  currentPage()->put(controllerPage_, controllerPage_->actions());

  auto* const controlsLayout = new QVBoxLayout(controls_);
  controlsLayout->setContentsMargins(0, 0, 0, 0);
  controlsLayout->addWidget(tabs_, 1);
  controlsLayout->addWidget(makePasswordFrame());

  auto* const layout = new QVBoxLayout(this);
  const int margin = isSmallScreen() ? 2 : 6;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->setSpacing(4);
  layout->addWidget(makeHeader());
  layout->addWidget(controls_, 1);
  layout->addWidget(statusLine_);
  layout->addWidget(makeFooter());
  resize(QSize(760, 640).boundedTo(screen()->availableSize()));
}

frmMain::~frmMain() = default;

void frmMain::makeOtherPages() {
  int place = 0;
  const auto put = [this, &place](auto* page, QWidget* below = nullptr) {
    static_cast<ScrolledPage*>(tabs_->widget(++place))->put(page, below);
    return page;
  };
  auto* const settings = new frmSettingsPage(console_.settings(), startup_.workFolder);
  settingsPage_ = put(settings, settings->actions());
  calibrationPage_ = put(new frmCalibrationPage);
  maintenancePage_ = put(new frmMaintenancePage(startup_.driverPath, startup_.workFolder, trace_));
  auto* const parameters = new frmParametersPage(console_.parameters(), startup_.workFolder);
  parametersPage_ = put(parameters, parameters->actions());
  testsPage_ = put(new frmTestsPage(startup_.simulation.has_value()));
  doctorPage_ = put(new frmDoctorPage(startup_.workFolder));
}

void frmMain::bringIntoView(QWidget* part) {
  QScrollArea* const area = currentPage()->area();
  // The layout makes room for the part when the events in hand are through.
  QTimer::singleShot(0, area, [area, part] {
    const int top = part->mapTo(area->widget(), QPoint()).y();
    area->ensureVisible(0, top + std::min(part->height(), area->viewport()->height()) - 1, 0, 0);
  });
}

void frmMain::perform(const QString& what, const std::function<Notice()>& action) {
  console_.perform(what.toStdString(), action);
}

void frmMain::connectPages() {
  connect(tabs_, &QTabWidget::currentChanged, this, [this] {
    showPageStatus();
    // Whoever comes finds what is harmless, not the first button, nor the last one that he pressed
    // there.
    if (maintenancePage_->isAncestorOf(focusWidget())) maintenancePage_->harmless()->setFocus();
  });
  connect(controllerPage_, &frmControllerPage::controllerChosen, this, [this](int index) {
    if (index >= 0) console_.selectController(static_cast<std::size_t>(index));
  });
  connect(controllerPage_, &frmControllerPage::refreshRequested, this,
          [this] { console_.refresh(); });
  connect(controllerPage_, &frmControllerPage::informationRequested, this,
          [this] { console_.information(); });
  connect(controllerPage_, &frmControllerPage::portSearchRequested, this, [this] {
    // It is of no use meanwhile, and a small screen has no room for both.
    release_->setVisible(!isSmallScreen());
    cancelSearch_->show();
    cancelSearch_->setFocus();
    console_.searchComPorts();
    endSearching();
    controllerPage_->setFocus();
  });

  SettingsPanel& settings = console_.settings();
  const QString setting = tr("Changing the setting …");
  connect(settingsPage_, &frmSettingsPage::changeRequested, this,
          [this, &settings, setting](const Setting* changed, int value) {
            perform(setting, [&] { return settings.change(*changed, value); });
          });
  connect(settingsPage_, &frmSettingsPage::sensitivityRequested, this,
          [this, &settings, setting](int index) {
            perform(setting, [&] { return settings.changeSensitivity(index).value_or(Notice()); });
          });
  connect(settingsPage_, &frmSettingsPage::statusChanged, this, &frmMain::showStatus);
  connect(settingsPage_, &frmSettingsPage::confirmRequested, this, [this, &settings, setting] {
    perform(setting, [&settings] { return settings.confirm(); });
  });

  connect(settingsPage_, &frmSettingsPage::noteShown, this, &frmMain::bringIntoView);
  connect(maintenancePage_, &frmMaintenancePage::opened, this, &frmMain::bringIntoView);

  connect(calibrationPage_, &frmCalibrationPage::calibrationRequested, this,
          [this](int points) { console_.calstart(points); });

  connect(testsPage_, &frmTestsPage::drawRequested, this,
          [this] { console_.openTest(TestScreen::drawing); });
  connect(testsPage_, &frmTestsPage::linearityRequested, this,
          [this] { console_.openTest(TestScreen::linearity); });
  connect(testsPage_, &frmTestsPage::faultSwitched, this,
          [this](const SimulatedFault* fault, bool on) { switchFault(*fault, on); });

  connect(doctorPage_, &frmDoctorPage::seen, this,
          [this] { doctorPage_->showDiagnosis(look(patient())); });
  connect(doctorPage_, &frmDoctorPage::refreshRequested, this, [this] {
    console_.examine(tr("Looking for what is wrong …").toStdString(),
                     [this] { return statusOf(diagnose()); });
  });
  connect(doctorPage_, &frmDoctorPage::saveRequested, this,
          [this](const QString& file) { saveDiagnostics(file.toStdU16String()); });

  ParameterEditor& parameters = console_.parameters();
  connect(maintenancePage_, &frmMaintenancePage::defaultsRequested, this, [this, &parameters] {
    perform(tr("Restoring the defaults …"), [&parameters] { return parameters.restoreDefaults(); });
  });
  connect(maintenancePage_, &frmMaintenancePage::resetRequested, this, [this, &parameters] {
    perform(tr("Resetting the controller …"), [&parameters] { return parameters.reset(); });
  });
  connect(maintenancePage_, &frmMaintenancePage::monitorRequested, this, [this](int monitor) {
    perform(tr("Assigning the monitor …"), [this, monitor] {
      const bool taken = assignMonitor(access_, prompt_, monitor);
      if (taken) panelMonitor_.assign(monitor);
      const QString text = taken ? tr("The panel belongs to monitor %1.")
                                 : tr("The driver did not take monitor %1.");
      return Notice(taken ? NoticeKind::success : NoticeKind::error,
                    text.arg(monitor).toStdString());
    });
  });
  connect(maintenancePage_, &frmMaintenancePage::debuggerRequested, this,
          [this] { console_.requestDebugger(passwordBox_->text().toStdString()); });
  connect(maintenancePage_, &frmMaintenancePage::pinDefinitionRequested, this,
          [this] { console_.requestPinDefinition(); });
  connect(maintenancePage_, &frmMaintenancePage::statusChanged, this, &frmMain::showStatus);

  const auto undo = [this, &parameters] {
    perform(tr("Writing the parameters back …"), [&parameters] { return parameters.undo(); });
  };
  connect(maintenancePage_, &frmMaintenancePage::undoRequested, this, undo);
  connect(parametersPage_, &frmParametersPage::undoRequested, this, undo);
  connect(parametersPage_, &frmParametersPage::readRequested, this, [this, &parameters] {
    perform(tr("Reading the parameters …"), [&parameters] { return parameters.read(); });
  });
  connect(parametersPage_, &frmParametersPage::writeRequested, this, [this, &parameters] {
    perform(tr("Writing the parameters …"), [&parameters] { return parameters.write(); });
  });
  connect(parametersPage_, &frmParametersPage::statusChanged, this, &frmMain::showStatus);
}

Patient frmMain::patient() const {
  std::vector<ExaminedScreen> screens;
  for (const QScreen* const screen : QGuiApplication::screens()) {
    const QSize pixels = screen->size() * screen->devicePixelRatio();
    screens.push_back({screen->name().toStdString(), pixels.width(), pixels.height(),
                       qRound(100 * screen->devicePixelRatio())});
  }
  return {.access = access_,
          .driverPath = startup_.driverPath,
          .simulated = startup_.simulation.has_value(),
          .refused = startup_.refusedDriver,
          .ports = startup_.ports,
          .workFolder = startup_.workFolder,
          .screens = std::move(screens),
          .versions = startup_.versions};
}

Diagnosis frmMain::diagnose() {
  Diagnosis diagnosis = examine(patient(), [this](const std::string& what) { sayLooking(what); });
  doctorPage_->showDiagnosis(diagnosis);
  return diagnosis;
}

void frmMain::sayLooking(const std::string& what) {
  showBusy(tr("Looking for what is wrong: %1 …").arg(shownText(what)).toStdString());
}

void frmMain::saveDiagnostics(const std::filesystem::path& file) {
  console_.examine(tr("Packing the diagnostics file …").toStdString(), [this, &file] {
    const Diagnosis diagnosis = diagnose();
    const std::string contents = diagnosticsContents(patient(), diagnosis, trace_);
    if (!prompt_.confirm(contents + ' ' + tr("Save it?").toStdString()))
      return Notice(tr("Nothing was saved.").toStdString());
    const DiagnosticsSaved saved = touch::saveDiagnostics(
        file, patient(), diagnosis, trace_, [this](const std::string& what) { sayLooking(what); });
    const auto kind = !saved.written         ? NoticeKind::error
                      : saved.failed.empty() ? NoticeKind::success
                                             : NoticeKind::remark;
    return Notice(kind, saved.describe(file));
  });
}

QWidget* frmMain::makeHeader() {
  auto* const header = new QWidget;
  auto* const row = new QHBoxLayout(header);
  row->setContentsMargins(0, 0, 0, 0);
  picture_->setObjectName("lblPicture");
  presentAsGraphic(*picture_, tr("Picture"), tr("The picture \"pic01.jpg\" of the working folder"));
  picture_->hide();
  row->addWidget(picture_);
  if (startup_.simulation) {
    auto* const notice = new QLabel(tr("Simulated controllers: the mouse is the finger"));
    notice->setObjectName("simulationNotice");
    notice->setWordWrap(true);
    // Not by a style sheet: its machinery is a fair part of the time to the first picture.
    QPalette colours = notice->palette();
    colours.setColor(notice->backgroundRole(), QColor(0xFF, 0xE0, 0x8A));
    colours.setColor(notice->foregroundRole(), QColor(0x40, 0x2C, 0x00));
    notice->setPalette(colours);
    notice->setAutoFillBackground(true);
    notice->setContentsMargins(8, 2, 8, 2);
    row->addWidget(notice, 1);
  } else {
    row->addStretch(1);
  }
  auto* const version = new QLabel(shownText(versionText));
  version->setObjectName("lblVersion");
  row->addWidget(version);
  return header;
}

QWidget* frmMain::makePasswordFrame() {
  passwordFrame_->setObjectName("passwordFrame");
  passwordFrame_->setFrameShape(QFrame::StyledPanel);
  passwordBox_->setObjectName("passwordBox");
  passwordBox_->setEchoMode(QLineEdit::Password);
  passwordBox_->setAccessibleName(tr("Password"));
  auto* const label = new QLabel(tr("Password:"));
  label->setBuddy(passwordBox_);
  auto* const row = new QHBoxLayout(passwordFrame_);
  row->addWidget(label);
  row->addWidget(passwordBox_, 1);
  passwordFrame_->hide();
  if (startup_.simulation) {
    // Who tries the program out has nobody to ask.
    passwordBox_->setPlaceholderText(
        tr("Simulation: the password is %1").arg(shownText(servicePassword)));
  }
  connect(passwordBox_, &QLineEdit::textEdited, this, [this](const QString& text) {
    const auto kept = MainConsole::passwordEdited(text.toStdString());
    if (kept.size() != static_cast<std::size_t>(text.toUtf8().size())) {
      passwordBox_->setText(shownText(kept));
    }
  });
  connect(passwordBox_, &QLineEdit::returnPressed, this,
          [this] { console_.passwordEntered(passwordBox_->text().toStdString()); });
  return passwordFrame_;
}

QWidget* frmMain::makeFooter() {
  auto* const footer = new QWidget;
  auto* const row = new QHBoxLayout(footer);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(3);
  cancelSearch_->setObjectName("cmdCancelSearch");
  cancelSearch_->hide();
  release_->setObjectName("cmdRelease");
  release_->setEnabled(false);  // until it is known whose port is to be released
  auto* const exit = new QPushButton(tr("E&xit"));
  exit->setObjectName("cmdExit");
  auto* const help = new QPushButton(tr("&Help"));
  help->setObjectName("cmdHelp");
  help->setToolTip(tr("The user guide, at what is shown here (F1)"));
  row->addWidget(help);
  row->addStretch(1);
  row->addWidget(cancelSearch_);
  row->addWidget(release_);
  row->addWidget(exit);
  connect(cancelSearch_, &QPushButton::clicked, this, [this] { console_.cancelSearch(); });
  connect(help, &QPushButton::clicked, this, [this] { showHelp(*this); });
  connect(release_, &QPushButton::clicked, this, [this] { console_.releaseAndExit(); });
  connect(exit, &QPushButton::clicked, this, [this] { console_.exit(); });
  return footer;
}

void frmMain::open() {
  // Otherwise the button Exit has it, as the only one that is enabled during the start, and Enter
  // ends the program.
  controllerPage_->setFocus();
  qApp->installEventFilter(this);
  show();
  QTimer::singleShot(longestUnseen, this, &frmMain::begin);
}

void frmMain::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  if (!begun_) QTimer::singleShot(0, this, &frmMain::begin);
}

void frmMain::begin() {
  // Whoever closes the window at once finds nothing begun.
  if (ended_ || std::exchange(begun_, true)) return;
  emit seen();
  makeOtherPages();
  connectPages();
  console_.startUp(windowsVersion());
  calibrationPage_->showPanelError(std::nullopt, panelError());
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
  // Before it has begun no other window can have the keys.
  if (event->type() == QEvent::KeyPress && (isActiveWindow() || !begun_) &&
      watched->isWidgetType() && static_cast<QWidget*>(watched)->window() == this) {
    if (hotKey(*static_cast<QKeyEvent*>(event))) return true;
  }
  return QWidget::eventFilter(watched, event);
}

bool frmMain::hotKey(const QKeyEvent& key) {
  const bool control = key.modifiers() == Qt::ControlModifier;
  // Whoever wants to leave at once need not wait for the pages behind the first.
  if (!begun_ && !(control && key.key() == Qt::Key_E)) return false;
  if (key.key() == Qt::Key_I && key.modifiers() == Qt::NoModifier) {
    // The key itself goes on to whatever has the focus.
    if (tabs_->tabText(tabs_->currentIndex()) == tr("Maintenance")) showAdvancedFrame();
    return false;
  }
  if (key.key() == Qt::Key_F5) {
    console_.refresh();
    return true;
  }
  if (key.key() == Qt::Key_Escape && passwordBox_->hasFocus()) {
    showPasswordFrame(false);
    return true;
  }
  if (!control) return false;
  switch (key.key()) {
    case Qt::Key_E:
      console_.exit();
      return true;
    case Qt::Key_A:
      console_.requestDebugger(passwordBox_->text().toStdString());
      return true;
    case Qt::Key_B:
      console_.requestPinDefinition();
      return true;
    default:
      return false;
  }
}

void frmMain::closeEvent(QCloseEvent* event) {
  if (ended_) return;
  console_.close();
  event->setAccepted(ended_);
}

void frmMain::showBusy(const std::string& what) {
  if (controls_->isEnabled()) {
    focusBeforeBusy_ = focusWidget();
    // Else Qt hands it to the next button that can be used, and Space presses that.
    if (focusWidget() != cancelSearch_) setFocus();
  }
  controls_->setEnabled(false);
  release_->setEnabled(false);
  if (pinWindow_ != nullptr) pinWindow_->setEnabled(false);
  statusLine_->showWait(shownText(what));
}

void frmMain::showIdle() {
  controls_->setEnabled(true);
  release_->setEnabled(true);
  if (pinWindow_ != nullptr) pinWindow_->setEnabled(true);
  giveFocusBack(focusBeforeBusy_);
  showPageStatus();
  maintenancePage_->watchTrace();
}

void frmMain::endSearching() {
  // Nobody is to come upon the ways out, or another search, by a Space that was meant to stop this
  // one.
  setFocus();
  cancelSearch_->hide();
  release_->show();
}

void frmMain::giveFocusBack(QWidget* before) {
  const bool usable = before != nullptr && before->isEnabled() && before->isVisibleTo(this);
  // What was pressed may have nothing more to do: its page keeps the focus.
  QWidget* const page = currentPage()->area()->widget();
  (usable ? before : page == maintenancePage_ ? maintenancePage_->harmless() : page)->setFocus();
}

ScrolledPage* frmMain::currentPage() const {
  return static_cast<ScrolledPage*>(tabs_->currentWidget());
}

void frmMain::showPageStatus() {
  const Notice& own = said_.at(static_cast<std::size_t>(tabs_->currentIndex()));
  statusLine_->show(own.text.empty() ? ready_ : own);
}

void frmMain::showStatus(const Notice& status) {
  said_.at(static_cast<std::size_t>(tabs_->currentIndex())) = status;
  showPageStatus();
}

void frmMain::showReady(const Notice& status) {
  std::ranges::fill(said_, Notice());
  ready_ = status;
  showPageStatus();
}

void frmMain::showControllers(const std::vector<std::string>& names,
                              std::optional<std::size_t> selected) {
  controllerPage_->showControllers(names, selected);
  for (QWidget* const page :
       std::initializer_list<QWidget*>{settingsPage_, settingsPage_->actions(), calibrationPage_,
                                       parametersPage_, parametersPage_->actions()}) {
    page->setEnabled(selected.has_value());
  }
  maintenancePage_->setPossible(selected.has_value());
}

void frmMain::showSettings() {
  settingsPage_->fill();
}

void frmMain::showParameters() {
  parametersPage_->fill();
  maintenancePage_->allowUndo(console_.parameters().canUndo());
  calibrationPage_->showPanelError(std::nullopt, panelError());
}

void frmMain::showIdentity(const Identity& identity) {
  controllerPage_->showIdentity(identity);
  calibrationPage_->showPanelError(std::nullopt, panelError());
}

void frmMain::showInformation(const std::vector<std::string>& lines) {
  controllerPage_->showInformation(lines);
}

std::string frmMain::showPicture(const std::filesystem::path& file) {
  const auto read = readPicture(file);
  if (!read) {
    return tr("The picture %1 cannot be shown: expected %2, found %3")
        .arg(shownText(file.string()), shownText(read.error().expected),
             shownText(read.error().found))
        .toStdString();
  }
  QImageReader::setAllocationLimit(largestPictureMegabytes);
  QByteArray content = bytesOf(*read);
  QBuffer buffer(&content);
  QImageReader reader(&buffer, QByteArray::fromStdString(std::string(read->format)));
  const qreal ratio = devicePixelRatioF();
  const QSizeF room = QSizeF(widestPicture, pictureHeight) * ratio;
  const QSize size = reader.size();
  // Some decoders take a fraction of the memory and time for a small picture.
  if (size.isValid()) reader.setScaledSize(size.scaled(room.toSize(), Qt::KeepAspectRatio));
  const QImage image = reader.read();
  if (image.isNull()) {
    return tr("The picture %1 cannot be shown: %2")
        .arg(shownText(file.string()), reader.errorString())
        .toStdString();
  }
  QPixmap pixmap = QPixmap::fromImage(
      image.scaled(room.toSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
  pixmap.setDevicePixelRatio(ratio);
  picture_->setPixmap(pixmap);
  picture_->show();
  return {};
}

std::string frmMain::showIcon(const std::filesystem::path& file) {
  const auto read = readPicture(file);
  if (!read) {
    return tr("The icon %1 cannot be shown: expected %2, found %3")
        .arg(shownText(file.string()), shownText(read.error().expected),
             shownText(read.error().found))
        .toStdString();
  }
  QByteArray content = bytesOf(*read);
  QBuffer buffer(&content);
  QImageReader reader(&buffer, QByteArray::fromStdString(std::string(read->format)));
  QIcon icon;
  do {
    const QImage image = reader.read();
    if (!image.isNull()) icon.addPixmap(QPixmap::fromImage(image));
  } while (reader.jumpToNextImage());
  if (icon.availableSizes().isEmpty()) {
    return tr("The icon %1 cannot be shown: it holds no picture")
        .arg(shownText(file.string()))
        .toStdString();
  }
  setWindowIcon(icon);
  return {};
}

void frmMain::showAdvancedFrame() {
  maintenancePage_->showAdvancedFrame();
}

void frmMain::showPasswordFrame(bool shown) {
  if (shown) {
    if (!passwordBox_->hasFocus()) focusBeforePassword_ = focusWidget();
    passwordFrame_->show();
    passwordBox_->selectAll();
    passwordBox_->setFocus();
  } else {
    const bool hadFocus = focusWidget() == passwordBox_;
    passwordFrame_->hide();
    if (hadFocus) giveFocusBack(focusBeforePassword_);
  }
}

void frmMain::openDebugger() {
  if (debuggerWindow_) {
    debuggerWindow_->comeToFront();
    return;
  }
  console_.debuggerOpened();
  debuggerWindow_ = std::make_unique<frmRSDebug>(
      access_, prompt_, port_,
      DebuggerSurroundings{startup_.workFolder, console_.reportFormats(), tests_.switches,
                           startup_.simulation, startup_.fullScreenSize, panelMonitor_, *this,
                           [this] { return console_.busy(); }},
      [this](DebuggerEnd end) {
        debuggerWindow_.release()->deleteLater();
        if (end == DebuggerEnd::quit) {
          raise();
          activateWindow();
        }
        console_.debuggerEnded(end == DebuggerEnd::exit);
      });
  debuggerWindow_->open();
}

bool frmMain::debuggerIsBusy() const {
  return debuggerWindow_ && debuggerWindow_->isBusy();
}

void frmMain::closeDebugger() {
  if (debuggerWindow_) debuggerWindow_->leave(DebuggerEnd::quit);
}

void frmMain::openTest(TestScreen test) {
  showNormal();
  const auto ended = [this] {
    showNormal();
    raise();
    activateWindow();
    console_.testEnded();
  };
  const std::string& controller = access_.session.controllerName;
  const MessageTable& messages = access_.session.messages;
  const auto& folder = startup_.workFolder;
  if (test == TestScreen::drawing) {
    testWindow_ = new frmDraw(
        {access_.clock, prompt_, messages, tests_.switches, tests_.files, folder},
        startup_.simulation, controller, panelMonitor_.of(*this), startup_.fullScreenSize, ended);
  } else {
    testWindow_ =
        new frmLinearity({prompt_, messages, tests_.linearity, folder}, startup_.simulation,
                         controller, panelMonitor_.of(*this), startup_.fullScreenSize, ended);
  }
  testWindow_->open();
}

void frmMain::closeTest() {
  if (testWindow_) testWindow_->leave();
}

void frmMain::switchFault(const SimulatedFault& fault, bool on) {
  touch::switchFault(*startup_.simulation, fault, on, console_.controllers());
  calibrationPage_->showPanelError(std::nullopt, panelError());
}

void frmMain::openPinDefinition() {
  if (pinWindow_ == nullptr) {
    pinWindow_ = new frmPinDefine(
        pinEditor_,
        [this](const std::string& what, const std::function<Notice()>& action) {
          return console_.perform(what, action);
        },
        this);
  }
  pinWindow_->open();
}

void frmMain::openCalibration() {
  showNormal();
  errorBefore_ = panelError();
  calibrationWindow_ = new frmCal(
      access_, prompt_, startup_.simulation, panelMonitor_.of(*this), startup_.fullScreenSize,
      [this] {
        showNormal();
        raise();
        activateWindow();
      },
      [this](CalibrationOutcome outcome) { calibrationEnded(outcome); });
  calibrationWindow_->open();
}

void frmMain::calibrationEnded(CalibrationOutcome outcome) {
  const bool stored = outcome == CalibrationOutcome::stored;
  const auto before = stored ? errorBefore_ : std::nullopt;
  console_.calibrationEnded(stored, outcomeText(outcome));
  calibrationPage_->showPanelError(before, panelError());
}

std::optional<Simulation::PanelError> frmMain::panelError() const {
  if (!startup_.simulation) return std::nullopt;
  return startup_.simulation->panelError(access_.session.controllerName);
}

void frmMain::cancelCalibration() {
  if (calibrationWindow_) calibrationWindow_->askToLeave();
}

void frmMain::endProgram() {
  ended_ = true;
  close();
  QCoreApplication::exit(0);
}

}  // namespace touch
