#include "console/main/main_console.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/driver/connection.h"
#include "core/driver/driver.h"
#include "core/exchange/closing_step.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr int oldestSystem = 5;      // major version
constexpr int longestPassword = 10;  // characters

bool holdsPassword(std::string_view text) {
  return text.find(servicePassword) != text.npos;
}

// What a window needs that stays open while it talks to the driver: it is not opened without.
constexpr std::array<std::string_view, 7> twoPointNeeds = {
    "OpenController", "CloseController", "FlushReadBuffer", "WriteBuffer",
    "ReadBuffer",     "ReadLength",      "IsPenUp"};
constexpr std::array<std::string_view, 9> calibrationNeeds = {
    "OpenController", "CloseController",      "FlushReadBuffer",
    "WriteBuffer",    "ReadBuffer",           "SetCalPoint",
    "IsPenUp",        "StoreCalibrationData", "CalCurrentPointReady"};

std::string_view withoutOuterBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

MainConsole::MainConsole(const Access& access, Prompt& prompt, MainView& view, SerialPort& port,
                         std::filesystem::path workFolder)
    : access_(access),
      prompt_(prompt),
      view_(view),
      port_(port),
      workFolder_(std::move(workFolder)),
      settings_(access, prompt),
      parameters_(access, prompt, Backup(workFolder_)),
      gate_(access.clock, [this] { view_.showIdle(); }) {}

std::optional<std::string> MainConsole::hold(const std::string& what,
                                             const std::function<void()>& work) {
  std::optional<std::string> lacked;
  gate_.run([&] {
    lacking_.clear();
    view_.showBusy(what);
    attempt(work);
    // Once the program has ended nothing else is done.
    if (!gate_.isShut()) lacked = tellWhatLacks();
  });
  return lacked;
}

void MainConsole::attempt(const std::function<void()>& step) {
  try {
    step();
  } catch (const MissingOperation& missing) {
    lacking_.insert(missing.operation());
  }
}

std::optional<std::string> MainConsole::tellWhatLacks() {
  if (lacking_.empty()) return std::nullopt;
  std::string names;
  for (const std::string& operation : std::exchange(lacking_, {}))
    names += (names.empty() ? "" : ", ") + operation;
  const std::string text = filled(
      say("main", "The touch driver library lacks %1. What needs that was not done."), {names});
  // A control that was used shows again what holds.
  view_.showSettings();
  view_.showStatus(text);
  prompt_.message(text);
  return text;
}

bool MainConsole::available(std::span<const std::string_view> operations) {
  for (const std::string_view missing : access_.driver.missing())
    if (std::ranges::find(operations, missing) != operations.end()) lacking_.emplace(missing);
  return !tellWhatLacks();
}

void MainConsole::startUp(std::optional<int> windowsVersion) {
  hold(say("main", "Searching for controllers …"), [this, windowsVersion] {
    port_.setSettings(normalLineSettings);
    findControllers({});
    if (gate_.isCutShort()) return;
    if (selected_) readSettings();
    std::string complaints;
    const auto complain = [&complaints](const std::string& text) {
      if (!complaints.empty() && !text.empty()) complaints += '\n';
      complaints += text;
    };
    if (const auto picture = workFile("pic01.jpg")) complain(view_.showPicture(*picture));
    reportFormats_ = rdformad(workFolder_);
    complain(describeProblems(reportFormats_));
    if (selected_ && !gate_.isCutShort()) readIdentity();
    const auto icon = workFile("Zevrik.ico");
    if (const auto shown = icon ? icon : workFile("zevrik.ico")) complain(view_.showIcon(*shown));
    sayWhoIsReady();
    if (windowsVersion && *windowsVersion < oldestSystem) {
      view_.showStatus(say(
          "main", "This operating system is older than those that the touch driver is made for."));
    }
    if (!complaints.empty()) prompt_.message(complaints);
  });
}

std::optional<std::filesystem::path> MainConsole::workFile(const char* name) const {
  std::error_code ignored;
  const auto file = workFolder_ / name;
  if (!std::filesystem::is_regular_file(file, ignored)) return std::nullopt;
  return file;
}

void MainConsole::refresh() {
  if (!gate_.isOpen() || refusedForDebugger()) return;
  hold(say("main", "Searching for controllers …"), [this] {
    const std::string before = selectedName();
    view_.showInformation({});
    findControllers(before);
    readController();
    if (before.empty() || !selected_ || before == selectedName()) return;
    view_.showStatus(filled(list_.find(before)
                                ? say("main", "%1 does not answer; %2 was chosen.")
                                : say("main", "%1 is no longer there; %2 was chosen."),
                            {toUtf8(before), toUtf8(selectedName())}));
  });
}

void MainConsole::findControllers(const std::string& current) {
  const auto asking = [this](const std::string& name) {
    view_.showBusy(filled(say("main", "Searching for controllers: asking %1 …"), {toUtf8(name)}));
    return !gate_.isCutShort();
  };
  list_ = {};
  attempt([&] { list_ = getctrname(access_, prompt_, asking, current); });
  selected_ = list_.answered;
  // When none answers the current one stays; without one it is the last that was asked.
  if (!selected_) selected_ = list_.find(current);
  if (!selected_) selected_ = list_.lastAsked;
  access_.session.controllerName = selectedName();
  view_.showControllers(list_.names, selected_);
  // Before it is read: an end that is asked for meanwhile is not to write to it what another held.
  if (!selected_ || (!current.empty() && selectedName() != current)) forgetController();
}

void MainConsole::forgetController() {
  firmware_.clear();
  answers_ = false;
  parameters_.forget();
  view_.showParameters();
  view_.showIdentity({});
}

void MainConsole::readController() {
  if (selected_ && !gate_.isCutShort()) readSettings();
  if (selected_ && !gate_.isCutShort()) readIdentity();
  sayWhoIsReady();
}

void MainConsole::readSettings() {
  view_.showBusy(filled(say("main", "Reading the settings of %1 …"), {toUtf8(selectedName())}));
  DriverSettings settings;
  attempt([this, &settings] { readset(access_, settings); });
  settings_.take(settings);
  view_.showSettings();
}

void MainConsole::readIdentity() {
  view_.showBusy(filled(say("main", "Asking %1 what it is …"), {toUtf8(selectedName())}));
  Identity identity;
  attempt([this, &identity] { identity = readfw(access_); });
  firmware_ = identity.firmware;
  answers_ = !identity.firmware.empty() || !identity.unitType.empty();
  parameters_.forget();
  view_.showParameters();
  view_.showIdentity(identity);
}

void MainConsole::sayWhoIsReady() {
  if (!selected_) {
    view_.showReady(Notice::error(
        say("main", "No controller was found. The page \"Doctor\" says what is missing.")));
  } else if (!answers_) {
    view_.showReady(Notice::error(filled(
        say("main", "%1 does not answer. Check its cable and power."), {toUtf8(selectedName())})));
  } else {
    view_.showReady(Notice::success(filled(say("main", "%1 is ready."), {toUtf8(selectedName())})));
  }
}

void MainConsole::selectController(std::size_t index) {
  if (!gate_.isOpen() || index >= list_.names.size() || index == selected_) return;
  if (refusedForDebugger(list_.names[index])) {
    view_.showControllers(list_.names, selected_);
    return;
  }
  hold(say("main", "Reading the controller …"), [this, index] {
    selected_ = index;
    access_.session.controllerName = list_.names[index];
    forgetController();
    view_.showInformation({});
    readController();
  });
}

void MainConsole::information() {
  if (!gate_.isOpen() || !selected_ || refusedForDebugger(selectedName())) return;
  hold(say("main", "Asking the controller who it is …"), [this] {
    view_.showInformation(controllerInformation(access_));
    view_.showStatus(Notice::success(say("main", "Controller information read.")));
  });
}

void MainConsole::searchComPorts() {
  if (!gate_.isOpen() || refusedForDebugger()) return;
  // Without a controller the driver has no port that it could let go of.
  if (selected_ && !available(portLoanOperations)) return;
  hold(say("main", "Searching the COM ports …"), [this] {
    const PortSearch found = touch::searchComPorts(access_, port_, [this](int number) {
      view_.showBusy(
          filled(say("main", "Searching the COM ports: COM%1 …"), {std::to_string(number)}));
      return !gate_.isCutShort();
    });
    view_.endSearching();
    Notice outcome = say("main", "The search was cancelled.");
    if (!found.cancelled) {
      const std::string sharing = found.shared.empty() ? "" : ". " + found.shared;
      outcome =
          found.noneOpened.empty()
              ? Notice(describe(found) + sharing)
              : Notice::error(say("main", "No COM port could be opened.") + ' ' + found.noneOpened);
      view_.showStatus(outcome);
      prompt_.message(describe(found));
    }
    // The search made the driver let go of its port; reading the settings makes it take the port
    // back.
    if (selected_) readSettings();
    view_.showStatus(outcome);
  });
}

Notice MainConsole::perform(const std::string& what, const std::function<Notice()>& action) {
  if (!gate_.isOpen()) return say("main", "The main window is busy. Try again when it is through.");
  if (const auto why = selected_ ? refusedForDebugger(selectedName()) : std::nullopt) {
    // A control that was used shows again what holds.
    view_.showSettings();
    view_.showParameters();
    return *why;
  }
  Notice outcome;
  const auto lacked = hold(what, [this, &action, &outcome] {
    if (!selected_) {
      outcome = Notice::error(say("main", "There is no controller to work with."));
      view_.showStatus(outcome);
      prompt_.message(access_.session.messages[Message::noDevice]);
      return;
    }
    outcome = action();
    view_.showSettings();
    view_.showParameters();
    view_.showStatus(outcome);
  });
  return lacked ? *lacked : outcome;
}

void MainConsole::examine(const std::string& what, const std::function<Notice()>& look) {
  if (!gate_.isOpen() || refusedForDebugger()) return;
  hold(what, [this, &look] { view_.showStatus(look()); });
}

void MainConsole::calstart(int points) {
  if (!gate_.isOpen() || !selected_ || points < 2 || points > 13) return;
  if (refusedForDebugger(selectedName())) return;
  if (!(points < 3 ? available(twoPointNeeds) : available(calibrationNeeds))) return;
  const auto opening = [this, points] {
    access_.session.calibrationPoints = points;
    view_.showBusy(say("main", "Calibrating …"));
    view_.openCalibration();
  };
  gate_.begin(opening, [this] { view_.cancelCalibration(); });
}

void MainConsole::calibrationEnded(bool stored, const Notice& status) {
  gate_.end([this, stored, &status] {
    if (stored) {
      parameters_.calibrated();
      view_.showParameters();
    }
    view_.showStatus(status);
  });
}

void MainConsole::openTest(TestScreen test) {
  const auto opening = [this, test] {
    view_.showBusy(say("main", "A test is open."));
    view_.openTest(test);
  };
  gate_.begin(opening, [this] { view_.closeTest(); });
}

void MainConsole::testEnded() {
  gate_.end([this] { sayWhoIsReady(); });
}

void MainConsole::requestDebugger(std::string_view passwordBox) {
  if (!gate_.isOpen()) return;
  if (!holdsPassword(passwordBox)) {
    view_.showPasswordFrame(true);
  } else if (available(portLoanOperations)) {
    view_.openDebugger();
  }
}

void MainConsole::debuggerOpened() {
  debugged_ = access_.session.controllerName;
}

void MainConsole::debuggerEnded(bool exit) {
  const auto debugged = std::exchange(debugged_, std::nullopt);
  if (!debugged) return;
  // Commands past the driver may have changed anything: no word read before them is to be written
  // at the end.
  if (*debugged == selectedName()) {
    parameters_.forget();
    view_.showParameters();
  }
  if (gate_.isLeaving()) {
    gate_.takeWayOut();
  } else if (exit) {
    leave(WayOut::debuggerExit);
  } else if (gate_.isOpen()) {
    view_.showStatus(
        say("main", "The driver has its port again. \"Refresh\" (F5) reads the controller anew."));
  }
}

std::optional<std::string> MainConsole::refusedForDebugger(
    const std::optional<std::string>& controller) {
  if (!debugged_) return std::nullopt;
  std::string why;
  if (view_.debuggerIsBusy()) {
    why = say("main", "The serial debugger waits for an answer. Try again when it is through.");
  } else if (controller && *controller != *debugged_) {
    return std::nullopt;
  } else if (debugged_->empty()) {
    why = say("main", "The serial debugger has a serial port. Leave it first with \"Quit\".");
  } else {
    why =
        filled(say("main", "The serial debugger has the port of %1. Leave it first with \"Quit\"."),
               {toUtf8(*debugged_)});
  }
  view_.showStatus(why);
  return why;
}

std::string MainConsole::passwordEdited(std::string text) {
  const auto startsCharacter = [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  };
  if (std::count_if(text.begin(), text.end(), startsCharacter) > longestPassword) text.clear();
  return text;
}

void MainConsole::passwordEntered(std::string_view text) {
  if (!gate_.isOpen()) return;
  const bool right = holdsPassword(text);
  if (!right) prompt_.message(access_.session.messages[Message::passwordError]);
  view_.showPasswordFrame(false);
  if (right && available(portLoanOperations)) view_.openDebugger();
}

void MainConsole::requestPinDefinition() {
  if (!gate_.isOpen()) return;
  const auto answer = prompt_.input("Please Enter Password :", "Special Function");
  // While the question was up the window may have been closed.
  if (gate_.isOpen() && answer && withoutOuterBlanks(*answer) == servicePassword)
    view_.openPinDefinition();
}

std::string MainConsole::selectedName() const {
  return selected_ ? list_.names[*selected_] : std::string();
}

void MainConsole::closingStep(WayOut way) {
  ShownAtClosing shown{selectedName(), firmware_, parameters_.parameter01()};
  shown.parameter01 = plcmd(access_, shown);
  // A closed window locks once more as it is destroyed: a controller that slept through the first
  // lock hears the second.
  if (way == WayOut::close) plcmd(access_, shown);
}

void MainConsole::exit() {
  leave(WayOut::exit);
}

void MainConsole::close() {
  leave(WayOut::close);
}

void MainConsole::leave(WayOut way) {
  if (gate_.isShut()) return;
  // The debugger ends first: its controller gets its port back before anything else is said to it.
  if (gate_.isHeld() || debugged_) {
    gate_.putOff([this, way] { leave(way); });
    if (debugged_) view_.closeDebugger();
    return;
  }
  if (way == WayOut::debuggerExit) {
    gate_.shut();
    view_.endProgram();
    return;
  }
  if (way == WayOut::release) {
    hold(say("main", "Releasing the COM port …"), [this] {
      if (selected_) {
        const Connection connection(access_);
        access_.driver.CloseCOMPort(connection.handle());
      }
      gate_.shut();
      view_.endProgram();
    });
    return;
  }
  hold(say("main", "Locking the controller's parameters …"), [this, way] {
    attempt([this, way] { closingStep(way); });
    gate_.shut();
    view_.endProgram();
  });
}

void MainConsole::releaseAndExit() {
  if (!gate_.isOpen() || refusedForDebugger(selectedName())) return;
  const MessageTable& messages = access_.session.messages;
  const bool sure = prompt_.confirm(messages[Message::releaseQuestion] + '\n' +
                                    messages[Message::releaseWarning]);
  // While the question was up the window may have been closed.
  if (sure && gate_.isOpen()) leave(WayOut::release);
}

}  // namespace touch
