#include "console/main/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>
#include <functional>
#include <utility>

#include "console/doctor/frmDoctorPage.h"
#include "console/main/first_start.h"
#include "console/main/frmControllerPage.h"
#include "console/main/frmFooter.h"
#include "console/main/frmHeader.h"
#include "console/main/frmPasswordFrame.h"
#include "console/main/frmWindows.h"
#include "console/maintenance/frmMaintenancePage.h"
#include "console/panels/frmCalibrationPage.h"
#include "console/panels/frmCommissionPage.h"
#include "console/panels/frmTestsPage.h"
#include "console/parameters/frmParametersPage.h"
#include "console/settings/frmSettingsPage.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"
#include "ui/controls/status_line.h"
#include "ui/guide/help.h"
#include "ui/page_keys.h"
#include "ui/style/signs.h"
#include "ui/system_version.h"
#include "ui/text.h"

namespace touch {

namespace {

// Where no window is ever painted the work begins all the same.
constexpr std::chrono::seconds longestUnseen{2};

}  // namespace

frmMain::frmMain(const Access& access, Prompt& prompt, SerialPort& port, Trace& trace,
                 const TestParts& tests, const Startup& startup)
    : access_(access),
      prompt_(prompt),
      trace_(trace),
      startup_(startup),
      console_(access, prompt, model_, port, startup.workFolder),
      header_(new frmHeader(startup.simulation.isThere())),
      controls_(new QWidget),
      tabs_(new QTabWidget),
      controllerPage_(new frmControllerPage(model_, console_)),
      statusLine_(new StatusLine) {
  setObjectName("frmMain");
  setWindowTitle("TouchUtility");
  setHelpChapter(*this, "Starting");
  addHelpKey(*this);
  if (startup.simulation.isThere()) panels_.emplace(startup.simulation, access.session, model_);
  windows_ = std::make_unique<frmWindows>(access, prompt, port, tests, startup, model_, console_,
                                          panels_ ? &*panels_ : nullptr, *this);
  tabs_->setObjectName("tabs");
  tabs_->setUsesScrollButtons(true);
  addPageKeys(*this, *tabs_);
  const std::pair<QString, Sign> pages[] = {
      {tr("Controller"), Sign::controller},   {tr("Settings"), Sign::settings},
      {tr("Calibration"), Sign::calibration}, {tr("Maintenance"), Sign::maintenance},
      {tr("Parameters"), Sign::parameters},   {tr("Tests"), Sign::tests},
      {tr("Doctor"), Sign::doctor},           {tr("Commission"), Sign::commission}};
  for (const auto& [page, sign] : pages)
    tabs_->addTab(new ScrolledPage, isSmallScreen() ? QIcon() : signIcon(sign), page);
  currentPage()->put(controllerPage_, controllerPage_->actions());
  connect(tabs_, &QTabWidget::currentChanged, this, [this](int page) { model_.turnTo(page); });

  auto* const controlsLayout = new QVBoxLayout(controls_);
  controlsLayout->setContentsMargins(0, 0, 0, 0);
  controlsLayout->addWidget(tabs_, 1);
  controlsLayout->addWidget(
      new frmPasswordFrame(model_, console_, *windows_, startup.simulation.isThere(),
                           [this](QWidget* before) { giveFocusBack(before); }));

  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(QMargins(1, 1, 1, 1) * (isSmallScreen() ? 2 : 6));
  layout->setSpacing(4);
  layout->addWidget(header_);
  layout->addWidget(controls_, 1);
  layout->addWidget(statusLine_);
  layout->addWidget(new frmFooter(model_, console_));
  resize(QSize(760, 640).boundedTo(screen()->availableSize()));
  // Behind the footer, whose button to stop a search takes the focus first.
  model_.watch([this](Part part) { draw(part); });
}

frmMain::~frmMain() = default;

void frmMain::makeOtherPages() {
  int place = 0;
  const auto put = [this, &place](auto* page, QWidget* below = nullptr) {
    static_cast<ScrolledPage*>(tabs_->widget(++place))->put(page, below);
    return page;
  };
  Actions& actions = console_.actions();
  const auto& folder = startup_.workFolder;
  auto* const settings = new frmSettingsPage(model_, actions, console_.settings(), folder);
  put(settings, settings->actions());
  put(new frmCalibrationPage(model_, *windows_));
  maintenancePage_ = put(new frmMaintenancePage(
      model_, actions, console_.parameters(), trace_, startup_.driverPath, folder,
      {[this] { windows_->debug(); }, [this] { windows_->definePins(); },
       [this](int monitor) { windows_->assignMonitor(monitor); }}));
  auto* const parameters = new frmParametersPage(model_, actions, console_.parameters(), folder);
  put(parameters, parameters->actions());
  put(new frmTestsPage(*windows_, panels_ ? &*panels_ : nullptr));
  put(new frmDoctorPage(actions, prompt_, trace_,
                        {.access = access_,
                         .driverPath = startup_.driverPath,
                         .simulated = startup_.simulation.isThere(),
                         .refused = startup_.refusedDriver,
                         .ports = startup_.ports,
                         .workFolder = folder,
                         .versions = startup_.versions},
                        [this] { console_.searchComPorts(); }));
  put(new frmCommissionPage(model_, *windows_));
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
  if (model_.ended || std::exchange(begun_, true)) return;
  emit seen();
  makeOtherPages();
  if (FirstStart(startup_.ownFolder, startup_.workFolder).take())
    controllerPage_->greet([this](frmGreeting::Choice choice) { follow(choice); });
  console_.startUp(windowsVersion(), header_->pictures());
}

void frmMain::follow(frmGreeting::Choice choice) {
  const auto turnTo = [this](const QString& page) {
    for (int place = 0; place < tabs_->count(); ++place)
      if (tabs_->tabText(place) == page) tabs_->setCurrentIndex(place);
  };
  switch (choice) {
    case frmGreeting::Choice::calibrate:
      return turnTo(tr("Calibration"));
    case frmGreeting::Choice::prove:
      return turnTo(tr("Tests"));
    case frmGreeting::Choice::talk:
      return windows_->debug();
    case frmGreeting::Choice::notNow:
      return;
  }
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
    if (tabs_->tabText(tabs_->currentIndex()) == tr("Maintenance"))
      maintenancePage_->showAdvancedFrame();
    return false;
  }
  if (key.key() == Qt::Key_F5) {
    console_.refresh();
    return true;
  }
  const std::pair<Qt::Key, std::function<void()>> keys[] = {
      {Qt::Key_E, [this] { console_.exit(); }},
      {Qt::Key_K, [this] { windows_->commission(); }},
      {Qt::Key_A, [this] { windows_->debug(); }},
      {Qt::Key_B, [this] { windows_->definePins(); }}};
  for (const auto& [letter, act] : keys) {
    if (!control || key.key() != letter) continue;
    act();
    return true;
  }
  return false;
}

void frmMain::closeEvent(QCloseEvent* event) {
  if (model_.ended) return;
  emit closing();
  console_.close();
  event->setAccepted(model_.ended);
}

void frmMain::draw(Part part) {
  if (part == Part::work) drawWork();
  if (part == Part::notice || part == Part::page) statusLine_->show(model_.notice());
  if (part != Part::end) return;
  close();
  QCoreApplication::exit(0);
}

void frmMain::drawWork() {
  if (model_.work) {
    if (controls_->isEnabled()) {
      focusBeforeWork_ = focusWidget();
      // Else Qt hands it to the next button that can be used, and Space presses that.
      if (!model_.work->canBeStopped) setFocus();
    }
    controls_->setEnabled(false);
    statusLine_->showWait(shownText(model_.work->what));
    // Before a driver is asked, which may not return for a while.
    statusLine_->repaint();
  } else {
    controls_->setEnabled(true);
    giveFocusBack(focusBeforeWork_);
    statusLine_->show(model_.notice());
  }
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

}  // namespace touch
