#include "console/main_console.h"

#include <algorithm>
#include <utility>

#include "core/closing_step.h"
#include "core/connection.h"
#include "core/language.h"
#include "core/text_encoding.h"

namespace touch {

namespace {

constexpr int oldestSystem = 5;      // major version
constexpr int longestPassword = 10;  // characters

bool holdsPassword(std::string_view text) {
  return text.find(servicePassword) != text.npos;
}

std::string_view withoutOuterBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

/// The time in which an action holds the window: nothing else starts in it, and a way out that was asked for meanwhile
/// is taken when it ends.
class MainConsole::Action {
 public:
  Action(MainConsole& console, const std::string& what) : console_(console) {
    console_.busy_ = true;
    console_.cutShort_ = false;
    console_.view_.showBusy(what);
  }
  Action(const Action&) = delete;
  Action& operator=(const Action&) = delete;
  ~Action() {
    // Once the program has ended nothing else is done: the window stays held.
    if (console_.gone_) return;
    console_.busy_ = false;
    console_.view_.showIdle();
    if (const WayOut way = std::exchange(console_.putOff_, WayOut::none); way != WayOut::none) {
      console_.leave(way);
    }
  }

 private:
  MainConsole& console_;
};

MainConsole::MainConsole(const Access& access, Prompt& prompt, MainView& view, SerialPort& port,
                         std::filesystem::path workFolder)
    : access_(access),
      prompt_(prompt),
      view_(view),
      port_(port),
      workFolder_(std::move(workFolder)),
      settings_(access, prompt),
      parameters_(access, prompt, Backup(workFolder_)) {}

void MainConsole::startUp(int systemVersion) {
  const Action action(*this, say("console", "Searching for controllers …"));
  port_.setSettings(normalLineSettings);
  findControllers();
  if (selected_) readSettings();
  std::string complaints;
  const auto complain = [&complaints](const std::string& text) {
    if (!complaints.empty() && !text.empty()) complaints += '\n';
    complaints += text;
  };
  if (const auto picture = workFile("pic01.jpg")) complain(view_.showPicture(*picture));
  reportFormats_ = rdformad(workFolder_);
  complain(describeProblems(reportFormats_));
  if (selected_) readIdentity();
  const auto icon = workFile("Zevrik.ico");
  if (const auto shown = icon ? icon : workFile("zevrik.ico")) complain(view_.showIcon(*shown));
  sayWhoIsReady();
  if (systemVersion < oldestSystem) {
    view_.showStatus(say(
        "console", "This operating system is older than those that the touch driver is made for."));
  }
  if (!complaints.empty()) prompt_.message(complaints);
}

std::optional<std::filesystem::path> MainConsole::workFile(const char* name) const {
  std::error_code ignored;
  const auto file = workFolder_ / name;
  if (!std::filesystem::is_regular_file(file, ignored)) return std::nullopt;
  return file;
}

void MainConsole::refresh() {
  if (busy_) return;
  const Action action(*this, say("console", "Searching for controllers …"));
  view_.showInformation({});
  findControllers();
  if (selected_) {
    readSettings();
    readIdentity();
  }
  sayWhoIsReady();
}

void MainConsole::findControllers() {
  list_ = getctrname(access_, prompt_, [this](const std::string& name) {
    view_.showBusy(
        filled(say("console", "Searching for controllers: asking %1 …"), {toUtf8(name)}));
  });
  // With no answer at all the last controller asked stays the current one.
  selected_ = list_.answered;
  if (!selected_ && !list_.names.empty()) selected_ = list_.names.size() - 1;
  view_.showControllers(list_.names, selected_);
  if (!selected_) {
    access_.session.controllerName.clear();
    firmware_.clear();
    view_.showIdentity({});
  }
}

void MainConsole::readSettings() {
  view_.showBusy(filled(say("console", "Reading the settings of %1 …"), {toUtf8(selectedName())}));
  settings_.take(readset(access_));
  view_.showSettings();
}

void MainConsole::readIdentity() {
  view_.showBusy(filled(say("console", "Asking %1 what it is …"), {toUtf8(selectedName())}));
  const Identity identity = readfw(access_);
  firmware_ = identity.firmware;
  answers_ = !identity.firmware.empty() || !identity.unitType.empty();
  parameters_.forget();
  view_.showParameters();
  view_.showIdentity(identity);
}

void MainConsole::sayWhoIsReady() {
  if (!selected_) {
    view_.showReady(Status::error(
        say("console", "No controller was found. The page \"Doctor\" says what is missing.")));
  } else if (!answers_) {
    view_.showReady(
        Status::error(filled(say("console", "%1 does not answer. Check its cable and power."),
                             {toUtf8(selectedName())})));
  } else {
    view_.showReady(
        Status::success(filled(say("console", "%1 is ready."), {toUtf8(selectedName())})));
  }
}

void MainConsole::selectController(std::size_t index) {
  if (busy_ || index >= list_.names.size() || index == selected_) return;
  const Action action(*this, say("console", "Reading the controller …"));
  selected_ = index;
  access_.session.controllerName = list_.names[index];
  view_.showInformation({});
  readSettings();
  readIdentity();
  sayWhoIsReady();
}

void MainConsole::information() {
  if (busy_ || !selected_) return;
  const Action action(*this, say("console", "Asking the controller who it is …"));
  view_.showInformation(controllerInformation(access_));
  view_.showStatus(Status::success(say("console", "Controller information read.")));
}

void MainConsole::searchComPorts() {
  if (busy_) return;
  const Action action(*this, say("console", "Searching the COM ports …"));
  const PortSearch found = touch::searchComPorts(access_, port_, [this](int number) {
    view_.showBusy(
        filled(say("console", "Searching the COM ports: COM%1 …"), {std::to_string(number)}));
    return !cutShort_;
  });
  // The search made the driver let go of its port; reading the settings makes it take the port back.
  if (selected_) readSettings();
  if (found.cancelled) {
    view_.showStatus(say("console", "The search was cancelled."));
    return;
  }
  view_.showStatus(
      found.noneOpened.empty()
          ? Status(describe(found))
          : Status::error(say("console", "No COM port could be opened.") + ' ' + found.noneOpened));
  prompt_.message(describe(found));
}

void MainConsole::perform(const std::string& what, const std::function<Status()>& action,
                          Afterwards afterwards) {
  if (busy_ || !selected_) return;
  const Action running(*this, what);
  const Status outcome = action();
  if (afterwards == Afterwards::readSettings) settings_.take(readset(access_));
  view_.showSettings();
  view_.showParameters();
  view_.showStatus(outcome);
}

void MainConsole::examine(const std::string& what, const std::function<Status()>& look) {
  if (busy_) return;
  const Action running(*this, what);
  view_.showStatus(look());
}

void MainConsole::calstart(int points) {
  if (busy_ || !selected_ || points < 2 || points > 13) return;
  access_.session.calibrationPoints = points;
  busy_ = true;
  calibrating_ = true;
  view_.showBusy(say("console", "Calibrating …"));
  view_.openCalibration();
}

void MainConsole::calibrationEnded(bool stored, const Status& status) {
  if (!std::exchange(calibrating_, false)) return;
  busy_ = false;
  if (stored) {
    parameters_.forget();
    view_.showParameters();
  }
  view_.showIdle();
  view_.showStatus(status);
  if (const WayOut way = std::exchange(putOff_, WayOut::none); way != WayOut::none) leave(way);
}

void MainConsole::openTest(TestScreen test) {
  if (busy_) return;
  busy_ = true;
  testing_ = true;
  view_.showBusy(say("console", "A test is open."));
  view_.openTest(test);
}

void MainConsole::testEnded() {
  if (!std::exchange(testing_, false)) return;
  busy_ = false;
  view_.showIdle();
  sayWhoIsReady();
  if (const WayOut way = std::exchange(putOff_, WayOut::none); way != WayOut::none) leave(way);
}

void MainConsole::requestDebugger(std::string_view passwordBox) {
  if (busy_) return;
  if (holdsPassword(passwordBox)) {
    view_.openDebugger();
  } else {
    view_.showPasswordFrame(true);
  }
}

void MainConsole::debuggerOpened() {
  busy_ = true;
  debugging_ = true;
  view_.showBusy(say("console", "The serial debugger has the port."));
}

void MainConsole::debuggerEnded(bool exit) {
  if (!std::exchange(debugging_, false)) return;
  busy_ = false;
  // Commands past the driver may have changed anything: no word read before them is to be written at the end.
  parameters_.forget();
  if (exit && putOff_ == WayOut::none) putOff_ = WayOut::exit;
  view_.showIdle();
  if (const WayOut way = std::exchange(putOff_, WayOut::none); way != WayOut::none) {
    leave(way);
    return;
  }
  if (!selected_) return;
  const Action action(*this, say("console", "Reading the controller …"));
  readSettings();
  readIdentity();
  sayWhoIsReady();
}

std::string MainConsole::passwordEdited(std::string text) {
  const auto startsCharacter = [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  };
  if (std::count_if(text.begin(), text.end(), startsCharacter) > longestPassword) text.clear();
  return text;
}

void MainConsole::passwordEntered(std::string_view text) {
  if (busy_) return;
  const bool right = holdsPassword(text);
  if (!right) prompt_.message(access_.session.messages[Message::passwordError]);
  view_.showPasswordFrame(false);
  if (right) view_.openDebugger();
}

void MainConsole::requestPinDefinition() {
  if (busy_) return;
  if (!selected_) {
    view_.showStatus(
        Status::error(say("console", "There is no controller whose pins could be defined.")));
    return;
  }
  const auto answer = prompt_.input("Please Enter Password :", "Special Function");
  // While the question was up the window may have been closed.
  if (!busy_ && answer && withoutOuterBlanks(*answer) == servicePassword) view_.openPinDefinition();
}

std::string MainConsole::selectedName() const {
  return selected_ ? list_.names[*selected_] : std::string();
}

void MainConsole::closingStep() {
  plcmd(access_, {selectedName(), firmware_, parameters_.parameter01()});
}

void MainConsole::exit() {
  leave(WayOut::exit);
}

void MainConsole::close() {
  leave(WayOut::close);
}

void MainConsole::leave(WayOut way) {
  if (gone_) return;
  if (busy_) {
    putOff_ = way;
    cutShort_ = true;
    if (calibrating_) view_.cancelCalibration();
    if (testing_) view_.closeTest();
    if (debugging_) view_.closeDebugger();
    return;
  }
  const Action action(*this, say("console", "Locking the controller's parameters …"));
  closingStep();
  // A closed window locks once more as it is destroyed: a controller that slept through the first lock hears the second.
  if (way == WayOut::close) closingStep();
  gone_ = true;
  view_.endProgram();
}

void MainConsole::releaseAndExit() {
  if (busy_) return;
  const MessageTable& messages = access_.session.messages;
  const bool sure = prompt_.confirm(messages[Message::releaseQuestion] + '\n' +
                                    messages[Message::releaseWarning]);
  // While the question was up the window may have been closed.
  if (!sure || busy_) return;
  const Action action(*this, say("console", "Releasing the COM port …"));
  if (selected_) {
    const Connection connection(access_);
    access_.driver.CloseCOMPort(connection.handle());
  }
  gone_ = true;
  view_.endProgram();
}

}  // namespace touch
