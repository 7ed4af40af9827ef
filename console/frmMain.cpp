#include "console/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QIcon>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "console/frmCalibrationPage.h"
#include "console/frmControllerPage.h"
#include "console/frmMaintenancePage.h"
#include "ui/finger_style.h"
#include "ui/text.h"

namespace touch {

namespace {

constexpr int pictureHeight = 56;
// Pictures come from a file that anybody may have put there: a larger one is not worth its memory.
constexpr int largestPictureMegabytes = 64;

QString outcomeText(CalibrationOutcome outcome) {
  switch (outcome) {
    case CalibrationOutcome::stored:
      return frmMain::tr("The calibration is stored.");
    case CalibrationOutcome::timedOut:
      return frmMain::tr(
          "No touch came in time. The calibration was given up; nothing was stored.");
    case CalibrationOutcome::failed:
      return frmMain::tr("The calibration failed; nothing was stored.");
    case CalibrationOutcome::cancelled:
      break;
  }
  return frmMain::tr("The calibration was cancelled; nothing was stored.");
}

/// Small screens scroll a page instead of clipping it.
QScrollArea* scrollable(QWidget* page) {
  auto* const area = new QScrollArea;
  area->setWidget(page);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setMinimumHeight(fingerSize);
  return area;
}

}  // namespace

frmMain::frmMain(const Access& access, Prompt& prompt, SerialPort& port, Trace& trace,
                 const Startup& startup)
    : access_(access),
      prompt_(prompt),
      startup_(startup),
      console_(access, prompt, *this, port, startup.workFolder),
      picture_(new QLabel),
      controls_(new QWidget),
      tabs_(new QTabWidget),
      controllerPage_(new frmControllerPage),
      calibrationPage_(new frmCalibrationPage),
      maintenancePage_(new frmMaintenancePage(startup.driverPath, startup.workFolder, trace)),
      passwordFrame_(new QFrame),
      passwordBox_(new QLineEdit),
      statusLine_(new QLabel),
      cancelSearch_(new QPushButton(tr("&Stop searching"))) {
  setObjectName("frmMain");
  setWindowTitle("TouchUtility");
  statusLine_->setObjectName("statusLine");
  statusLine_->setWordWrap(true);
  tabs_->setObjectName("tabs");
  tabs_->setUsesScrollButtons(true);
  tabs_->addTab(scrollable(controllerPage_), tr("Controller"));
  tabs_->addTab(scrollable(calibrationPage_), tr("Calibration"));
  tabs_->addTab(scrollable(maintenancePage_), tr("Maintenance"));

  auto* const controlsLayout = new QVBoxLayout(controls_);
  controlsLayout->setContentsMargins(0, 0, 0, 0);
  controlsLayout->addWidget(tabs_, 1);
  controlsLayout->addWidget(makePasswordFrame());

  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->setSpacing(4);
  layout->addWidget(makeHeader());
  layout->addWidget(controls_, 1);
  layout->addWidget(statusLine_);
  layout->addWidget(makeFooter());
  resize(720, 560);

  connect(controllerPage_, &frmControllerPage::controllerChosen, this, [this](int index) {
    if (index >= 0) console_.selectController(static_cast<std::size_t>(index));
  });
  connect(controllerPage_, &frmControllerPage::refreshRequested, this,
          [this] { console_.refresh(); });
  connect(controllerPage_, &frmControllerPage::informationRequested, this,
          [this] { console_.information(); });
  connect(controllerPage_, &frmControllerPage::portSearchRequested, this, [this] {
    cancelSearch_->show();
    cancelSearch_->setFocus();
    console_.searchComPorts();
    cancelSearch_->hide();
  });
  connect(calibrationPage_, &frmCalibrationPage::calibrationRequested, this,
          [this](int points) { console_.calstart(points); });
  connect(maintenancePage_, &frmMaintenancePage::statusChanged, statusLine_, &QLabel::setText);
  qApp->installEventFilter(this);
}

frmMain::~frmMain() = default;

QWidget* frmMain::makeHeader() {
  auto* const header = new QWidget;
  auto* const row = new QHBoxLayout(header);
  row->setContentsMargins(0, 0, 0, 0);
  picture_->setObjectName("lblPicture");
  picture_->hide();
  row->addWidget(picture_);
  if (startup_.simulation) {
    auto* const notice = new QLabel(tr("Simulated controllers: the mouse is the finger"));
    notice->setObjectName("simulationNotice");
    notice->setWordWrap(true);
    notice->setStyleSheet("background: #ffe08a; color: #402c00; padding: 4px 8px");
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
  auto* const label = new QLabel(tr("Pass&word:"));
  label->setBuddy(passwordBox_);
  auto* const row = new QHBoxLayout(passwordFrame_);
  row->addWidget(label);
  row->addWidget(passwordBox_, 1);
  passwordFrame_->hide();
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
  cancelSearch_->setObjectName("cmdCancelSearch");
  cancelSearch_->hide();
  auto* const release = new QPushButton(tr("Re&lease comport and Exit"));
  release->setObjectName("cmdRelease");
  auto* const exit = new QPushButton(tr("E&xit"));
  exit->setObjectName("cmdExit");
  row->addStretch(1);
  row->addWidget(cancelSearch_);
  row->addWidget(release);
  row->addWidget(exit);
  connect(cancelSearch_, &QPushButton::clicked, this, [this] { console_.cancelSearch(); });
  connect(release, &QPushButton::clicked, this, [this] { console_.releaseAndExit(); });
  connect(exit, &QPushButton::clicked, this, [this] { console_.exit(); });
  return footer;
}

void frmMain::open() {
  show();
  // The first timer event comes after the first paint, so that the user sees the window before the waiting begins.
  QTimer::singleShot(0, this, [this] {
    console_.startUp();
    calibrationPage_->showPanelError(std::nullopt, panelError());
  });
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && isActiveWindow() && watched->isWidgetType() &&
      static_cast<QWidget*>(watched)->window() == this) {
    if (hotKey(*static_cast<QKeyEvent*>(event))) return true;
  }
  return QWidget::eventFilter(watched, event);
}

bool frmMain::hotKey(const QKeyEvent& key) {
  const bool control = key.modifiers() == Qt::ControlModifier;
  if (key.key() == Qt::Key_I && key.modifiers() == Qt::NoModifier) {
    // The key itself goes on to whatever has the focus.
    if (tabs_->tabText(tabs_->currentIndex()) == tr("Maintenance")) showAdvancedFrame();
    return false;
  }
  if (key.key() == Qt::Key_F5) {
    console_.refresh();
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
  event->ignore();
  console_.close();
}

void frmMain::showBusy(const std::string& what) {
  if (controls_->isEnabled()) focusBeforeBusy_ = focusWidget();
  controls_->setEnabled(false);
  statusLine_->setText(shownText(what));
}

void frmMain::showIdle() {
  controls_->setEnabled(true);
  if (focusBeforeBusy_) focusBeforeBusy_->setFocus();
}

void frmMain::showStatus(const std::string& text) {
  statusLine_->setText(shownText(text));
}

void frmMain::showControllers(const std::vector<std::string>& names,
                              std::optional<std::size_t> selected) {
  controllerPage_->showControllers(names, selected);
  calibrationPage_->setPossible(selected.has_value());
}

void frmMain::showSettings(const DriverSettings&) {}

void frmMain::showIdentity(const Identity& identity) {
  controllerPage_->showIdentity(identity);
  calibrationPage_->showPanelError(std::nullopt, panelError());
}

void frmMain::showInformation(const std::vector<std::string>& lines) {
  controllerPage_->showInformation(lines);
}

void frmMain::showPicture(const std::filesystem::path& file) {
  QImageReader::setAllocationLimit(largestPictureMegabytes);
  QImageReader reader(shownText(file.string()));
  reader.setDecideFormatFromContent(true);
  const QImage image = reader.read();
  if (image.isNull()) {
    showStatus("The picture " + file.string() +
               " cannot be shown: " + reader.errorString().toStdString());
    return;
  }
  const qreal ratio = devicePixelRatioF();
  QPixmap pixmap = QPixmap::fromImage(image).scaledToHeight(static_cast<int>(pictureHeight * ratio),
                                                            Qt::SmoothTransformation);
  pixmap.setDevicePixelRatio(ratio);
  picture_->setPixmap(pixmap);
  picture_->show();
}

void frmMain::showIcon(const std::filesystem::path& file) {
  const QIcon icon(shownText(file.string()));
  if (!icon.isNull()) setWindowIcon(icon);
}

void frmMain::showAdvancedFrame() {
  maintenancePage_->showAdvancedFrame();
}

void frmMain::showPasswordFrame(bool shown) {
  passwordFrame_->setVisible(shown);
  if (!shown) return;
  passwordBox_->selectAll();
  passwordBox_->setFocus();
}

void frmMain::openDebugger() {}

void frmMain::openPinDefinition() {}

void frmMain::openCalibration() {
  showNormal();
  errorBefore_ = panelError();
  calibrationWindow_ = new frmCal(
      access_, prompt_, startup_.simulation, startup_.fullScreenSize,
      [this] {
        showNormal();
        raise();
        activateWindow();
      },
      [this](CalibrationOutcome outcome) { calibrationEnded(outcome); });
  calibrationWindow_->open();
}

void frmMain::calibrationEnded(CalibrationOutcome outcome) {
  const auto now = panelError();
  calibrationPage_->showPanelError(
      outcome == CalibrationOutcome::stored ? errorBefore_ : std::nullopt, now);
  console_.calibrationEnded(outcomeText(outcome).toStdString());
}

std::optional<Simulation::PanelError> frmMain::panelError() const {
  if (!startup_.simulation) return std::nullopt;
  return startup_.simulation->panelError(access_.session.controllerName);
}

void frmMain::cancelCalibration() {
  if (calibrationWindow_) calibrationWindow_->cancel();
}

void frmMain::endProgram() {
  ended_ = true;
  close();
  QCoreApplication::exit(0);
}

}  // namespace touch
