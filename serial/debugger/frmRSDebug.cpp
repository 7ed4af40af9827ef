#include "serial/debugger/frmRSDebug.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSocketNotifier>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "serial/debugger/panels/frmBytesPanel.h"
#include "serial/debugger/panels/frmCommandPanel.h"
#include "serial/debugger/panels/frmConsolePanel.h"
#include "serial/debugger/panels/frmLinePanel.h"
#include "serial/debugger/panels/frmPortsPanel.h"
#include "serial/debugger/panels/frmRatePanel.h"
#include "serial/debugger/panels/frmScriptPanel.h"
#include "serial/debugger/panels/frmTouchPad.h"
#include "serial/plots/frmPlotPanel.h"
#include "serial/rawdrawing/frmRsDraw.h"
#include "serial/recording/frmReplayBar.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"
#include "ui/guide/help.h"
#include "ui/page_keys.h"
#include "ui/screens/panel_monitor.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"
#include "ui/window_end.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto renewal = 100ms;
// Where the line does not tell by itself that its device has gone.
constexpr auto lookAtLine = 1s;
constexpr int sideBySideWidth = 900;
constexpr int commandsWidth = 354;

QWidget* stacked(std::initializer_list<QWidget*> parts) {
  auto* const box = new QWidget;
  auto* const column = new QVBoxLayout(box);
  const int margin = isSmallScreen() ? 2 : 6;
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(margin);
  for (QWidget* const part : parts)
    column->addWidget(part);
  return box;
}

QWidget* narrow(QWidget* page) {
  QScrollArea* const area = scrollable(page);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  return area;
}

}  // namespace

frmRSDebug::frmRSDebug(const Access& access, Prompt& prompt, SerialPort& serial,
                       const DebuggerSurroundings& surroundings,
                       std::function<void(DebuggerEnd)> onEnded)
    : access_(access),
      prompt_(prompt),
      surroundings_(surroundings),
      onEnded_(std::move(onEnded)),
      debugger_(access, prompt, serial, surroundings.formats, surroundings.comPorts),
      body_(new QWidget),
      tabs_(new QTabWidget),
      commands_(new frmCommandPanel(access.session.commandSet)),
      bytes_(new frmBytesPanel(access.session.commandSet, surroundings.history,
                               surroundings.workFolder)),
      script_(new frmScriptPanel(debugger_.script(), surroundings.workFolder,
                                 screen()->availableSize().width() >= sideBySideWidth ? 2 : 4)),
      line_(new frmLinePanel),
      ports_(new frmPortsPanel),
      plot_(new frmPlotPanel(
          access.clock, [this] { return debugger_.makeReportReader(); },
          frmPlotPanel::Folders{surroundings.recordingsFolder(), surroundings.workFolder})),
      console_(new frmConsolePanel(debugger_.log(), surroundings.workFolder,
                                   [this] { return debugger_.makeDecoder(); })),
      portState_(new QLabel),
      rate_(new QCheckBox(tr("Repor&t Rate"))),
      replayBar_(new frmReplayBar),
      ratePanel_(new frmRatePanel),
      touchPad_(surroundings.simulation.isThere() ? new frmTouchPad(surroundings.simulation)
                                                  : new QWidget),
      statusLine_(new QLabel),
      timer_(access.clock.makeTimer([this] { renew(); })) {
  setObjectName("frmRSDebug");
  setWindowTitle(tr("KVD Debuger"));
  setHelpChapter(*this, "Talk to a controller");
  addHelpKey(*this);
  arrange();

  connect(commands_, &frmCommandPanel::setChosen, this, [this](CommandSet set) {
    debugger_.chooseSet(set);
    bytes_->setCommands(set);
    renew();
  });
  connect(commands_, &frmCommandPanel::sendRequested, this, &frmRSDebug::send);
  connect(console_, &frmConsolePanel::doubleClicked, this, [this] {
    debugger_.receiveMode().debug();
    renew();
  });
  connect(console_, &frmConsolePanel::statusChanged, statusLine_, &QLabel::setText);
  connect(console_, &frmConsolePanel::moreWanted, this, &frmRSDebug::awaitNews);
  connect(line_, &frmLinePanel::settingsChosen, this, [this](const LineSettings& line) {
    debugger_.setLine(line);
    renew();
  });
  connect(line_, &frmLinePanel::switched, this, [this](LineSwitch which, bool on) {
    debugger_.switchLine(which, on);
    renew();
  });
  connect(line_, &frmLinePanel::breakRequested, this,
          [this] { whileBusy([this] { debugger_.sendBreak(); }); });
  connect(bytes_, &frmBytesPanel::statusChanged, statusLine_, &QLabel::setText);
  connect(plot_, &frmPlotPanel::statusChanged, statusLine_, &QLabel::setText);
  connect(ports_, &frmPortsPanel::chosen, this, [this](const ListedPort& port) {
    whileBusy([this, &port] { debugger_.usePort(port); });
  });
  connect(ports_, &frmPortsPanel::searchRequested, this, &frmRSDebug::searchEverywhere);
  connect(ports_, &frmPortsPanel::stopRequested, this, [this] { debugger_.stopSearch(); });
  // The lamps change by themselves.
  connect(tabs_, &QTabWidget::currentChanged, this, &frmRSDebug::renew);
  connect(bytes_, &frmBytesPanel::sendRequested, this, &frmRSDebug::sendBytes);
  connect(script_, &frmScriptPanel::runRequested, this, &frmRSDebug::runScript);
  connect(script_, &frmScriptPanel::statusChanged, this, [this](const QString& text) {
    statusLine_->setText(text);
    renew();
  });
  resize(QSize(1024, 720).boundedTo(screen()->availableSize()));
}

frmRSDebug::~frmRSDebug() {
  lineNews_.reset();
  // The drawing uses the port that goes with this window.
  delete drawing_;
}

QPushButton* frmRSDebug::makeButton(const char* name, const QString& caption,
                                    const std::function<void()>& action) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, action);
  return button;
}

QWidget* frmRSDebug::makeHead() {
  auto* const heading = new QLabel(tr("Orvendalix Debuger"));
  heading->setObjectName("lblHeading");
  QFont large = heading->font();
  large.setBold(true);
  heading->setFont(large);
  if (isSmallScreen()) heading->hide();
  portState_->setObjectName("lblPort");
  portState_->setWordWrap(true);
  takePort_ =
      makeButton("cmdTakePort", tr("Ope&n port"), [this] { whileBusy([this] { takePort(); }); });
  searchPort_ = makeButton("cmdSearchPort", tr("Search COM&1 and 2"),
                           [this] { whileBusy([this] { debugger_.searchPort(); }); });
  auto* const head = new QWidget;
  auto* const row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(heading);
  row->addWidget(portState_, 1);
  row->addWidget(takePort_);
  row->addWidget(searchPort_);
  return head;
}

QWidget* frmRSDebug::makeReceiveBar() {
  receive_ = makeButton("Command3", tr("&Receive"), [this] {
    debugger_.receiveMode().receive();
    renew();
  });
  debug_ = makeButton("Command4", tr("De&buger"), [this] {
    debugger_.receiveMode().debug();
    renew();
  });
  for (QPushButton* const mode : {receive_, debug_})
    mode->setCheckable(true);
  auto* const clear = makeButton("Command5", tr("Cl&ear"), [this] {
    debugger_.log().clear();
    renew();
  });
  auto* const drawButton = makeButton("Command6", tr("DRA&W"), [this] { draw(); });
  rate_->setObjectName("Check1");
  connect(rate_, &QCheckBox::toggled, this, [this](bool on) {
    if (on != debugger_.receiveMode().isMeasuring()) debugger_.receiveMode().measureRate(on);
    renew();
  });

  auto* const bar = new QWidget;
  auto* const grid = new QGridLayout(bar);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(isSmallScreen() ? 2 : 6);
  const std::initializer_list<QWidget*> controls = {receive_,   debug_, clear,
                                                    drawButton, rate_,  console_->pauseBox()};
  // In one row where the captions leave room for it.
  const int room = screen()->availableSize().width();
  int inOneRow = room >= sideBySideWidth ? commandsWidth + fingerSize() : 0;
  for (const QWidget* const control : controls)
    inOneRow += control->sizeHint().width() + grid->spacing();
  const int columns = inOneRow > room ? 3 : 6;
  int place = 0;
  for (QWidget* const control : controls) {
    grid->addWidget(control, place / columns, place % columns);
    ++place;
  }
  return bar;
}

QWidget* frmRSDebug::makeRecordBar() {
  record_ = makeButton("cmdRecord", tr("Recor&d …"), [this] { record(); });
  record_->setToolTip(tr("Writes everything that passes the port to a file"));
  replay_ = makeButton("cmdReplay", tr("Re&play …"), [this] { replay(); });
  replay_->setToolTip(tr("Shows a recording as if it came from the controller"));
  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(record_);
  row->addWidget(replay_);
  row->addStretch();
  return bar;
}

QWidget* frmRSDebug::makeFoot() {
  statusLine_->setObjectName("statusLine");
  statusLine_->setWordWrap(true);
  auto* const quit = makeButton("Command1", tr("Qu&it"), [this] { leave(DebuggerEnd::quit); });
  quit->setToolTip(tr("Gives the port back to the driver and shows the main window"));
  auto* const exit = makeButton("Command2_1", tr("E&xit   Debuger"), [this] {
    commands_->showReply(std::nullopt);
    leave(DebuggerEnd::exit);
  });
  exit->setToolTip(tr("Gives the port back to the driver and ends the program"));
  auto* const foot = new QWidget;
  auto* const row = new QHBoxLayout(foot);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(statusLine_, 1);
  row->addWidget(quit);
  row->addWidget(exit);
  return foot;
}

void frmRSDebug::arrange() {
  head_ = makeHead();
  receiveBar_ = makeReceiveBar();
  touchPad_->hide();
  auto* const recordBar = makeRecordBar();
  tabs_->setObjectName("debuggerTabs");
  addPageKeys(*this, *tabs_);
  auto* const bodyLayout = new QHBoxLayout(body_);
  bodyLayout->setContentsMargins(0, 0, 0, 0);

  if (screen()->availableSize().width() >= sideBySideWidth) {
    auto* const keep = new QWidget;
    auto* const row = new QHBoxLayout(keep);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(console_->keepBar());
    row->addWidget(recordBar, 1);
    tabs_->addTab(narrow(stacked({commands_})), tr("Command"));
    tabs_->addTab(narrow(stacked({bytes_})), tr("Bytes"));
    tabs_->addTab(narrow(stacked({script_})), tr("Script"));
    tabs_->addTab(narrow(stacked({line_})), tr("Line"));
    tabs_->addTab(stacked({ports_}), tr("Ports"));
    tabs_->addTab(narrow(stacked({plot_})), tr("Plot"));
    tabs_->setDocumentMode(true);  // its frame would take width from the commands
    tabs_->setFixedWidth(commandsWidth);
    auto* const left = new QVBoxLayout;
    left->addWidget(tabs_, 1);
    left->addWidget(touchPad_);
    auto* const right = stacked({receiveBar_, console_->filterBar(), console_, ratePanel_, keep});
    static_cast<QVBoxLayout*>(right->layout())->setStretchFactor(console_, 1);
    bodyLayout->addLayout(left);
    bodyLayout->addWidget(right, 1);
  } else {
    // What does not fit side by side lies one behind the other.
    auto* const measuring = new QWidget;
    auto* const row = new QHBoxLayout(measuring);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(ratePanel_, 1);
    row->addWidget(touchPad_, 1);
    // What was measured needs the room.
    if (isSmallScreen()) touchPad_->setFixedWidth(4 * fingerSize());
    auto* const consolePage = stacked({receiveBar_, console_});
    static_cast<QVBoxLayout*>(consolePage->layout())->setStretchFactor(console_, 1);
    auto* const tools = stacked({console_->filterBar(), console_->keepBar(), recordBar});
    static_cast<QVBoxLayout*>(tools->layout())->addStretch(1);
    tabs_->addTab(scrollable(stacked({commands_})), tr("Command"));
    tabs_->addTab(scrollable(consolePage), tr("Console"));
    if (isSmallScreen()) {
      measuringTab_ = tabs_->addTab(scrollable(stacked({measuring})), tr("Rate"));
    } else {
      consolePage->layout()->addWidget(measuring);
    }
    tabs_->addTab(scrollable(tools), tr("Find and keep"));
    tabs_->addTab(scrollable(stacked({bytes_})), tr("Bytes"));
    tabs_->addTab(scrollable(stacked({script_})), tr("Script"));
    tabs_->addTab(scrollable(stacked({line_})), tr("Line"));
    tabs_->addTab(scrollable(stacked({ports_})), tr("Ports"));
    tabs_->addTab(scrollable(stacked({plot_})), tr("Plot"));
    bodyLayout->addWidget(tabs_);
  }

  auto* const layout = new QVBoxLayout(this);
  const int margin = isSmallScreen() ? 2 : 6;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->setSpacing(margin);
  layout->addWidget(head_);
  layout->addWidget(replayBar_);
  layout->addWidget(body_, 1);
  layout->addWidget(makeFoot());
}

void frmRSDebug::open() {
  show();
  raise();
  activateWindow();
  commands_->focusEntries();
  takePort();
  renew();
}

void frmRSDebug::takePort() {
  const auto taken = debugger_.takePort();
  if (taken) return;
  // What stands behind the box says it as well.
  renew();
  debugger_.tellUser(taken.error());
}

void frmRSDebug::comeToFront() {
  QWidget* const front = drawing_ ? static_cast<QWidget*>(drawing_.data()) : this;
  front->show();
  front->raise();
  front->activateWindow();
}

void frmRSDebug::whileBusy(const std::function<void()>& action) {
  whileBusy(tr("Waiting for the controller …"), {head_, body_}, action);
}

void frmRSDebug::whileBusy(const QString& waiting, const std::vector<QWidget*>& unusable,
                           const std::function<void()>& action) {
  if (debugger_.isBusy()) return;
  if (surroundings_.mainIsBusy && surroundings_.mainIsBusy()) {
    statusLine_->setText(tr("The main window is busy. Try again when it is through."));
    return;
  }
  stopAwaiting();
  const QPointer<QWidget> focus = focusWidget();
  const auto allow = [&unusable](bool on) {
    for (QWidget* const part : unusable)
      part->setEnabled(on);
  };
  allow(false);
  statusLine_->setText(waiting);
  runThen(action, [&] {
    // What was said meanwhile is still to be read.
    if (statusLine_->text() == waiting) statusLine_->clear();
    allow(true);
    if (focus) focus->setFocus();
    awaitNews();
  });
  renew();
}

void frmRSDebug::send() {
  commands_->showReply(std::nullopt);
  whileBusy([this] { commands_->showReply(debugger_.send(commands_->choice())); });
}

void frmRSDebug::sendBytes(const std::vector<std::uint8_t>& bytes) {
  bytes_->showReply(std::nullopt);
  whileBusy([&] { bytes_->showReply(debugger_.sendBytes(bytes)); });
}

void frmRSDebug::runScript() {
  // What the script sends and gets is watched while it does.
  timer_->start(renewal);
  whileBusy(tr("The script runs …"), {head_, commands_, bytes_}, [this] { debugger_.runScript(); });
}

void frmRSDebug::searchEverywhere() {
  // Where it is is watched, and can be stopped there.
  timer_->start(renewal);
  whileBusy(tr("Searching all ports …"), {head_, commands_, bytes_},
            [this] { debugger_.searchEverywhere(); });
}

void frmRSDebug::draw() {
  if (debugger_.isBusy()) return;
  stopAwaiting();
  if (const auto why = debugger_.whyNothingToDraw()) debugger_.tellUser(*why);
  // The window may have been closed behind the box.
  if (debugger_.gate().isShut()) return;
  drawing_ = new frmRsDraw(
      {access_.clock, prompt_, access_.session.messages, surroundings_.switches,
       debugger_.makeDecoder(), surroundings_.simulation, surroundings_.fullScreenSize,
       debugger_.replay()},
      debugger_.beginDrawing(), surroundings_.panelMonitor.of(surroundings_.mainWindow), [this] {
        debugger_.endDrawing();
        show();
        raise();
        activateWindow();
        renew();
        debugger_.gate().takeWayOut();
      });
  hide();
  drawing_->open();
  awaitNews();
}

void frmRSDebug::record() {
  if (debugger_.isRecording()) {
    debugger_.stopRecording();
  } else {
    const auto file =
        askTextFileToSave(this, tr("Record to"), surroundings_.workFolder / "recording.txt",
                          tr("Recordings (*.txt)"));
    if (file) debugger_.startRecording(*file, surroundings_.program);
  }
  renew();
}

void frmRSDebug::replay() {
  if (debugger_.isReplaying()) {
    debugger_.stopReplay();
  } else {
    const auto file = askTextFileToOpen(this, tr("Replay a recording"),
                                        surroundings_.recordingsFolder(), tr("Recordings (*.txt)"));
    if (file) debugger_.startReplay(*file);
  }
  renew();
}

void frmRSDebug::renew() {
  stopAwaiting();
  debugger_.watch();
  if (const auto said = debugger_.takeStatus()) statusLine_->setText(shownText(*said));
  console_->renew();
  showState();
  awaitNews();
}

void frmRSDebug::awaitNews() {
  stopAwaiting();
  if (debugger_.gate().isShut()) return;
  if (debugger_.isActive() || console_->isLooking() ||
      ((line_->isVisible() || plot_->isVisible()) && debugger_.portIsOpen()))
    return timer_->start(renewal);
  if (ports_->isVisible() || (!debugger_.portIsOpen() && debugger_.isAwaitingPort()))
    return timer_->start(lookAtLine);
  if (!debugger_.portIsOpen()) return timer_->stop();
  const auto descriptor = debugger_.descriptor();
  // The drawing reads the line itself, unless it is paused. One that brings bytes that nobody reads
  // has something to say all the time.
  if (!descriptor || debugger_.isDrawing() || debugger_.isFlooded())
    return timer_->start(lookAtLine);
  timer_->stop();
  lineNews_ = std::make_unique<QSocketNotifier>(*descriptor, QSocketNotifier::Read);
  connect(lineNews_.get(), &QSocketNotifier::activated, this, [this] { renew(); });
}

void frmRSDebug::stopAwaiting() {
  if (!lineNews_) return;
  // It may be the one that is telling just now.
  lineNews_->setEnabled(false);
  lineNews_.release()->deleteLater();
}

void frmRSDebug::listenForPlot() {
  const bool wanted =
      plot_->isVisible() && plot_->isLive() && debugger_.portIsOpen() && !debugger_.isReplaying();
  if (wanted == debugger_.isListenedTo()) return;
  if (!wanted) return debugger_.listen(nullptr);
  debugger_.listen([this](Clock::TimePoint now, std::span<const std::uint8_t> bytes) {
    plot_->take(std::chrono::duration_cast<std::chrono::microseconds>(now - opened_), bytes,
                debugger_.line());
  });
}

void frmRSDebug::showPorts(bool possible) {
  // Who has them open takes a while to find out.
  if (const auto now = access_.clock.now(); portFacts_.empty() || now - portsSeen_ >= lookAtLine) {
    portsSeen_ = now;
    portFacts_ = debugger_.ports();
  }
  const auto state = debugger_.isSearching() ? frmPortsPanel::State::searched
                     : possible              ? frmPortsPanel::State::usable
                                             : frmPortsPanel::State::unusable;
  if (const QString plugged = ports_->show(portFacts_, state); !plugged.isEmpty())
    statusLine_->setText(plugged);
}

void frmRSDebug::showState() {
  const bool replaying = debugger_.isReplaying();
  ReceiveMode& mode = debugger_.receiveMode();
  portState_->setText(!replaying ? shownText(debugger_.portText())
                      : debugger_.portIsOpen()
                          ? tr("Playing back a recording; the port stays open, but is not shown.")
                          : tr("Playing back a recording; no port is open."));
  takePort_->setEnabled(!debugger_.portIsOpen() && !replaying);
  searchPort_->setEnabled(!replaying);
  commands_->allowSending(debugger_.portIsOpen() && !replaying);
  bytes_->allowSending(debugger_.portIsOpen() && !replaying);
  line_->show(debugger_.lineView(), debugger_.portIsOpen() && !replaying && !debugger_.isBusy());
  listenForPlot();
  if (plot_->isVisible()) plot_->renew();
  if (ports_->isVisible()) showPorts(!replaying && !debugger_.isBusy());
  script_->renew(debugger_.portIsOpen() && !replaying && !debugger_.isBusy());
  receive_->setChecked(mode.isReceiving());
  debug_->setChecked(!mode.isReceiving());
  rate_->setChecked(mode.isMeasuring());
  record_->setText(debugger_.isRecording() ? tr("Stop recor&ding") : tr("Recor&d …"));
  replay_->setText(replaying ? tr("Stop re&play") : tr("Re&play …"));
  replayBar_->show(debugger_.replay());
  const bool padNeeded = surroundings_.simulation.isThere() && !replaying &&
                         (mode.isReceiving() || debugger_.script().isRunning());
  touchPad_->setVisible(padNeeded);

  ratePanel_->setVisible(mode.isMeasuring());
  if (measuringTab_) tabs_->setTabVisible(*measuringTab_, padNeeded || mode.isMeasuring());
  // Where the console lies on another page its lines are wanted here, too.
  if (mode.isMeasuring()) ratePanel_->show(mode, measuringTab_.has_value());
}

void frmRSDebug::leave(DebuggerEnd end) {
  Gate& gate = debugger_.gate();
  if (gate.isShut() || (gate.isLeaving() && end == DebuggerEnd::quit)) return;
  // The drawing reads the port until it has gone.
  if (gate.isHeld() || debugger_.isDrawing()) {
    gate.putOff([this, end] { leave(end); });
    if (debugger_.isDrawing()) drawing_->close();
    return;
  }
  gate.shut();
  timer_->stop();
  stopAwaiting();
  runThen([this] { debugger_.leave(); },
          [this, end] { endWindow(*this, [this, end] { onEnded_(end); }); });
}

void frmRSDebug::closeEvent(QCloseEvent* event) {
  if (debugger_.gate().isShut()) return;
  event->ignore();
  leave(DebuggerEnd::quit);
}

}  // namespace touch
