#include "console/main/main_console.h"

#include <algorithm>
#include <array>
#include <utility>

#include "console/parameters/kept_calibration.h"
#include "core/discovery/discovery.h"
#include "core/discovery/port_search.h"
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

MainConsole::MainConsole(const Access& access, Prompt& prompt, MainModel& model, SerialPort& port,
                         std::filesystem::path workFolder)
    : access_(access),
      prompt_(prompt),
      model_(model),
      port_(port),
      workFolder_(std::move(workFolder)),
      actions_(access, prompt, model),
      settings_(access, prompt),
      parameters_(access, prompt, Backup(workFolder_)) {}

void MainConsole::startUp(std::optional<int> windowsVersion, const Pictures& pictures) {
  actions_.hold({say("main", "Searching for controllers …")}, [&] {
    port_.setSettings(normalLineSettings);
    findControllers({});
    if (actions_.gate().isCutShort()) return;
    if (model_.selected) readSettings();
    std::string complaints;
    const auto complain = [&complaints](const std::string& text) {
      if (!complaints.empty() && !text.empty()) complaints += '\n';
      complaints += text;
    };
    const auto show = [&complain](const ShowPicture& showPicture,
                                  const std::filesystem::path& file) {
      if (const auto shown = showPicture(file); !shown) complain(shown.error());
    };
    if (const auto picture = workFile("pic01.jpg")) show(pictures.picture, *picture);
    reportFormats_ = rdformad(workFolder_);
    complain(describeProblems(reportFormats_));
    if (model_.selected && !actions_.gate().isCutShort()) readIdentity();
    const auto icon = workFile("Zevrik.ico");
    if (const auto chosen = icon ? icon : workFile("zevrik.ico")) show(pictures.icon, *chosen);
    sayWhoIsReady();
    settleCalibration();
    if (windowsVersion && *windowsVersion < oldestSystem) {
      model_.tell(say(
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
  if (!actions_.gate().isOpen() || actions_.refusedForDebugger()) return;
  access_.driver.revive();
  actions_.hold({say("main", "Searching for controllers …")}, [this] {
    const std::string before = model_.selectedName();
    showInformation({});
    findControllers(before);
    readController();
    if (before.empty() || !model_.selected || before == model_.selectedName()) return;
    const bool isListed = std::ranges::find(model_.controllers, before) != model_.controllers.end();
    model_.tell(filled(isListed ? say("main", "%1 does not answer; %2 was chosen.")
                                : say("main", "%1 is no longer there; %2 was chosen."),
                       {toUtf8(before), toUtf8(model_.selectedName())}));
  });
}

void MainConsole::findControllers(const std::string& current) {
  std::vector<std::string> asked;
  const auto asking = [this, &asked](const std::string& name) {
    actions_.progress(
        filled(say("main", "Searching for controllers: asking %1 …"), {toUtf8(name)}));
    if (actions_.gate().isCutShort()) return false;
    asked.push_back(name);
    return true;
  };
  ControllerList list;
  actions_.attempt([&] { list = getctrname(access_, prompt_, asking, current); });
  model_.selected = list.answered;
  // When none answers the current one stays; without one it is the last that was asked.
  if (!model_.selected) model_.selected = list.find(current);
  if (!model_.selected) model_.selected = list.lastAsked;
  model_.heard.clear();
  for (const std::string& name : list.names) {
    const bool wasAsked = std::ranges::find(asked, name) != asked.end();
    model_.heard.push_back({wasAsked ? Heard::Answer::none : Heard::Answer::notAsked});
  }
  if (list.answered) model_.heard[*list.answered].answer = Heard::Answer::given;
  model_.controllers = std::move(list.names);
  access_.session.controllerName = model_.selectedName();
  model_.changed(Part::controllers);
  // Before it is read: an end that is asked for meanwhile is not to write to it what another held.
  if (!model_.selected || (!current.empty() && model_.selectedName() != current))
    forgetController();
}

void MainConsole::forgetController() {
  model_.identity = {};
  parameters_.forget();
  model_.changed(Part::parameters);
  model_.changed(Part::identity);
}

void MainConsole::readController() {
  if (model_.selected && !actions_.gate().isCutShort()) readSettings();
  if (model_.selected && !actions_.gate().isCutShort()) readIdentity();
  sayWhoIsReady();
  settleCalibration();
}

void MainConsole::settleCalibration() {
  if (!model_.selected || actions_.gate().isCutShort()) return;
  std::optional<Notice> settled;
  actions_.attempt([&] { settled = settleUnchecked(access_, prompt_, Backup(workFolder_)); });
  if (!settled) return;
  model_.tell(*settled);
  model_.changed(Part::parameters);
}

void MainConsole::readSettings() {
  actions_.progress(
      filled(say("main", "Reading the settings of %1 …"), {toUtf8(model_.selectedName())}));
  DriverSettings settings;
  actions_.attempt([this, &settings] { readset(access_, settings); });
  settings_.take(settings);
  model_.changed(Part::settings);
}

void MainConsole::readIdentity() {
  actions_.progress(filled(say("main", "Asking %1 what it is …"), {toUtf8(model_.selectedName())}));
  Identity identity;
  actions_.attempt([this, &identity] { identity = readfw(access_); });
  model_.identity = identity;
  const bool isSilent = identity.unitType.empty() && identity.firmware.empty();
  model_.heard[*model_.selected] = {isSilent ? Heard::Answer::none : Heard::Answer::given,
                                    identity};
  parameters_.forget();
  model_.changed(Part::parameters);
  model_.changed(Part::identity);
}

void MainConsole::showInformation(std::vector<std::string> lines) {
  model_.information = std::move(lines);
  model_.changed(Part::information);
}

void MainConsole::showPassword(bool wanted) {
  model_.passwordWanted = wanted;
  model_.changed(Part::password);
}

void MainConsole::sayWhoIsReady() {
  if (!model_.selected) {
    model_.tellReady(Notice::error(
        say("main", "No controller was found. The page \"Doctor\" says what is missing.")));
  } else if (model_.identity.firmware.empty() && model_.identity.unitType.empty()) {
    model_.tellReady(
        Notice::error(filled(say("main", "%1 does not answer. Check its cable and power."),
                             {toUtf8(model_.selectedName())})));
  } else {
    model_.tellReady(
        Notice::success(filled(say("main", "%1 is ready."), {toUtf8(model_.selectedName())})));
  }
}

void MainConsole::selectController(std::size_t index) {
  if (!actions_.gate().isOpen() || index >= model_.controllers.size() || index == model_.selected)
    return;
  if (actions_.refusedForDebugger(model_.controllers[index])) {
    model_.changed(Part::controllers);
    return;
  }
  actions_.hold({say("main", "Reading the controller …")}, [this, index] {
    model_.selected = index;
    access_.session.controllerName = model_.controllers[index];
    forgetController();
    showInformation({});
    readController();
  });
}

void MainConsole::information() {
  if (!actions_.gate().isOpen() || !model_.selected ||
      actions_.refusedForDebugger(model_.selectedName()))
    return;
  actions_.hold({say("main", "Asking the controller who it is …")}, [this] {
    showInformation(controllerInformation(access_));
    model_.tell(Notice::success(say("main", "Controller information read.")));
  });
}

void MainConsole::searchComPorts() {
  if (!actions_.gate().isOpen() || actions_.refusedForDebugger()) return;
  // Without a controller the driver has no port that it could let go of.
  if (model_.selected && !actions_.available(portLoanOperations)) return;
  actions_.hold({say("main", "Searching the COM ports …"), true}, [this] {
    const PortSearch found = touch::searchComPorts(access_, port_, [this](int number) {
      actions_.progress(
          filled(say("main", "Searching the COM ports: COM%1 …"), {std::to_string(number)}));
      return !actions_.gate().isCutShort();
    });
    model_.work->canBeStopped = false;
    model_.changed(Part::work);
    Notice outcome = say("main", "The search was cancelled.");
    if (!found.cancelled) {
      const std::string sharing = found.shared.empty() ? "" : ". " + found.shared;
      outcome =
          found.noneOpened.empty()
              ? Notice(describe(found) + sharing)
              : Notice::error(say("main", "No COM port could be opened.") + ' ' + found.noneOpened);
      model_.tell(outcome);
      prompt_.message(describe(found));
    }
    // The search made the driver let go of its port; reading the settings makes it take the port
    // back.
    if (model_.selected) readSettings();
    model_.tell(outcome);
  });
}

void MainConsole::calstart(int points, const LastingWindow& screen) {
  if (!actions_.gate().isOpen() || !model_.selected || points < 2 || points > 13) return;
  if (actions_.refusedForDebugger(model_.selectedName())) return;
  if (!(points < 3 ? actions_.available(twoPointNeeds) : actions_.available(calibrationNeeds)))
    return;
  actions_.begin(say("main", "Calibrating …"), {[&] {
                                                  access_.session.calibrationPoints = points;
                                                  screen.open();
                                                },
                                                screen.end});
}

void MainConsole::checkCalibration(const LastingWindow& screen) {
  if (!actions_.gate().isOpen() || !model_.selected) return;
  if (actions_.refusedForDebugger(model_.selectedName())) return;
  actions_.begin(say("main", "Checking the calibration …"), screen);
}

void MainConsole::commission(const LastingWindow& screens) {
  if (!actions_.gate().isOpen() || !model_.selected) return;
  if (actions_.refusedForDebugger(model_.selectedName())) return;
  if (!actions_.available(calibrationNeeds)) return;
  actions_.begin(say("main", "Commissioning …"), screens);
}

// It may have calibrated and set whatever there is.
void MainConsole::commissionEnded() {
  actions_.gate().end([this] {
    parameters_.calibrated();
    model_.changed(Part::parameters);
    if (!actions_.gate().isLeaving()) readSettings();
    sayWhoIsReady();
  });
}

void MainConsole::calibrationEnded(bool stored, const Notice& notice) {
  actions_.gate().end([this, stored, &notice] {
    if (stored) {
      parameters_.calibrated();
      model_.changed(Part::parameters);
    }
    model_.tell(notice);
  });
}

void MainConsole::openTest(const LastingWindow& test) {
  actions_.begin(say("main", "Waiting for the test to be closed."), test);
}

void MainConsole::testEnded() {
  actions_.gate().end([this] { sayWhoIsReady(); });
}

bool MainConsole::requestDebugger() {
  if (!actions_.gate().isOpen()) return false;
  if (holdsPassword(model_.password)) return actions_.available(portLoanOperations);
  showPassword(true);
  return false;
}

void MainConsole::debuggerEnded(bool exit) {
  const auto debugged = actions_.debuggerEnded();
  if (!debugged) return;
  // Commands past the driver may have changed anything: no word read before them is to be written
  // at the end.
  if (*debugged == model_.selectedName()) {
    parameters_.forget();
    model_.changed(Part::parameters);
  }
  Gate& gate = actions_.gate();
  if (gate.isLeaving()) {
    gate.takeWayOut();
  } else if (exit) {
    leave(WayOut::debuggerExit);
  } else if (gate.isOpen()) {
    model_.tell(
        say("main", "The driver has its port again. \"Refresh\" (F5) reads the controller anew."));
  }
}

const std::string& MainConsole::passwordEdited(std::string text) {
  const auto startsCharacter = [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  };
  if (std::count_if(text.begin(), text.end(), startsCharacter) > longestPassword) text.clear();
  model_.password = std::move(text);
  return model_.password;
}

bool MainConsole::passwordEntered(std::string_view text) {
  if (!actions_.gate().isOpen()) return false;
  const bool right = holdsPassword(text);
  if (!right) prompt_.message(access_.session.messages[Message::passwordError]);
  showPassword(false);
  return right && actions_.available(portLoanOperations);
}

void MainConsole::passwordDismissed() {
  showPassword(false);
}

bool MainConsole::requestPinDefinition() {
  if (!actions_.gate().isOpen()) return false;
  const auto answer = prompt_.input("Please Enter Password :", "Special Function");
  // While the question was up the window may have been closed.
  return actions_.gate().isOpen() && answer && withoutOuterBlanks(*answer) == servicePassword;
}

void MainConsole::closingStep(WayOut way) {
  ShownAtClosing shown{model_.selectedName(), model_.identity.firmware, parameters_.parameter01()};
  shown.parameter01 = plcmd(access_, shown);
  // A closed window locks once more as it is destroyed: a controller that slept through the first
  // lock hears the second.
  if (way == WayOut::close) plcmd(access_, shown);
}

void MainConsole::end() {
  actions_.gate().shut();
  model_.ended = true;
  model_.changed(Part::end);
}

void MainConsole::exit() {
  leave(WayOut::exit);
}

void MainConsole::close() {
  leave(WayOut::close);
}

void MainConsole::leave(WayOut way) {
  if (actions_.gate().isShut()) return;
  // The debugger ends first: its controller gets its port back before anything else is said to it.
  if (actions_.gate().isHeld() || actions_.hasDebugger()) {
    actions_.gate().putOff([this, way] { leave(way); });
    if (actions_.hasDebugger()) actions_.endDebugger();
    return;
  }
  if (way == WayOut::debuggerExit) {
    end();
    return;
  }
  if (way == WayOut::release) {
    actions_.hold({say("main", "Releasing the COM port …")}, [this] {
      if (model_.selected) {
        const Connection connection(access_);
        access_.driver.CloseCOMPort(connection.handle());
      }
      end();
    });
    return;
  }
  actions_.hold({say("main", "Locking the controller's parameters …")}, [this, way] {
    actions_.attempt([this, way] { closingStep(way); });
    end();
  });
}

void MainConsole::releaseAndExit() {
  if (!actions_.gate().isOpen() || actions_.refusedForDebugger(model_.selectedName())) return;
  const MessageTable& messages = access_.session.messages;
  const bool sure = prompt_.confirm(messages[Message::releaseQuestion] + '\n' +
                                    messages[Message::releaseWarning]);
  // While the question was up the window may have been closed.
  if (sure && actions_.gate().isOpen()) leave(WayOut::release);
}

}  // namespace touch
