#include "console/main/main_console.h"

#include <functional>
#include <optional>
#include <tuple>

#include "tests/doubles/desk.h"
#include "tests/doubles/drivers.h"
#include "tests/doubles/fake_port.h"
#include "tests/doubles/temporary_folder.h"

namespace touch {
namespace {

using test::Lines;
using test::replyOf;
using namespace std::chrono_literals;

class Console : public test::Desk {
 protected:
  explicit Console(const char* library = ATTACHED_LIBRARY) : Desk(library) {
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
    script.results = {{"GetReportMode", 1}, {"GetRightClickTime", 500}};
    // What the windows draw and open stands between the driver calls of the journal.
    model.watch([this](Part part) {
      if (part == Part::controllers) note("show controllers");
      if (part == Part::settings) note("show settings");
      if (part == Part::identity) note("show identity");
      if (part == Part::password) note(model.passwordWanted ? "show password" : "hide password");
      if (part == Part::end) note("end");
    });
  }
  Result<void, std::string> note(const char* line) {
    journal.emplace_back(line);
    return {};
  }
  void openDebugger(MainConsole& each) {
    each.debuggerOpened({[this] { return debuggerBusy; }, [this] { note("close debugger"); }});
  }
  LastingWindow window(const char* open, const char* end) {
    return {[this, open] { note(open); }, [this, end] { note(end); }};
  }
  void start(MainConsole& each, std::optional<int> windowsVersion = 10) {
    // A program that has ended is started anew.
    model.ended = false;
    each.startUp(windowsVersion, {[this](const auto&) { return note("show picture"); },
                                  [this](const auto&) { return note("show icon"); }});
  }
  void startUp() {
    start(console);
    journal.clear();
  }

  /// The journal without what every exchange has around its commands.
  Lines steps() const {
    Lines steps = journal;
    const auto around = testing::ContainsRegex("^(Open|CloseController|Flush|delay|Read)");
    std::erase_if(steps, [&](const auto& line) { return testing::Value(line, around); });
    return steps;
  }

  test::TemporaryFolder folder;
  const LastingWindow calibration = window("open calibration", "cancel calibration");
  const LastingWindow drawing = window("open test", "close test");
  bool debuggerBusy = false;
  MainModel model;
  test::FakePort port{journal, {}};
  MainConsole console{access(), prompt, model, port, folder.path()};
};

Lines operator+(Lines left, const Lines& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

/// At the end a controller's parameters are locked.
const Lines closingStep = {"WriteBuffer Uu", "WriteBuffer PL", "WriteBuffer PL"};

const std::string open = "OpenController RS232 DEVICE 1";
const std::string close = "CloseController";
const Lines settingsRead = {
    "ReopenCOMPort",       "GetReportMode",      "GetRightClickTime", "GetRightClickEnabled",
    "GetDoubleClickSpeed", "GetDoubleClickArea", "GetReportStatus",   "GetDoubleClickEnabled",
    "GetUpSoundStatus",    "GetDownSoundStatus", "GetRotation"};

TEST_F(Console, StartsUpInTheStatedOrder) {
  folder.write("pic01.jpg", "picture");
  folder.write("Zevrik.ico", "icon");
  start(console);
  const Lines search = {"settings 9600,n,8,1", "GetExistControllers", "GetControllerName 1 20",
                        open};
  const Lines unitType = {"WriteBuffer UT", "delay 100", "ReadBuffer 10"};
  const Lines firmware = {"WriteBuffer OI", "delay 100", "ReadBuffer 10"};
  EXPECT_EQ(journal, (search + unitType + Lines{close, "show controllers", open} + settingsRead +
                      Lines{close, "show settings", "show picture", open} + unitType + firmware +
                      Lines{close, "show identity", "show icon"}));
  folder.write("zevrik.fmt", "a\nb\nc\nd\ne\nf\ng\nh\ni\nj\nk\nl\n");
  for (const auto& [windows, remarked] :
       {std::pair(std::optional<int>(), false), {std::optional(5), false}, {4, true}}) {
    MainConsole another(access(), prompt, model, port, folder.path());
    start(another, windows);
    EXPECT_EQ(model.notice().text == "RS232 DEVICE 1 is ready.", !remarked);
    EXPECT_EQ(std::ranges::count(journal.back(), '\n'), 10) << "ten problems, and how many";
  }
}

TEST_F(Console, LeavesTheStartWithTheNextAnswer) {
  script.names.assign(21, "USB DEVICE 1");
  script.replies.clear();
  clock.after(150ms, [this] { console.exit(); });
  start(console, {});
  Lines asked = steps();
  std::erase_if(asked, [](const auto& line) { return line.starts_with("GetControllerName"); });
  EXPECT_EQ(asked, (Lines{"settings 9600,n,8,1", "GetExistControllers", "WriteBuffer UT",
                          "WriteBuffer UT", "show controllers"} +
                    closingStep + Lines{"end"}));
}

TEST_F(Console, WorksWithoutAnAnswerAndWithoutControllers) {
  script.names = {"USB DEVICE 1", "USB DEVICE 2"};
  script.replies.clear();
  startUp();
  EXPECT_EQ(session.controllerName, "USB DEVICE 2") << "the last one tried stays the current one";
  EXPECT_EQ(model.notice().text, "USB DEVICE 2 does not answer. Check its cable and power.");
  console.searchComPorts();
  Lines tail = steps();
  tail.erase(tail.begin() + 1, std::ranges::find(tail, "message controller not found ??"));
  EXPECT_EQ(tail, (Lines{"CloseCOMPort", "message controller not found ??"} + settingsRead +
                   Lines{"show settings"}))
      << "the result first; then the driver gets its port back";

  script.names.clear();
  console.refresh();
  journal.clear();
  console.information();
  console.calstart(3, calibration);
  EXPECT_EQ(journal, Lines{}) << "nothing can be done without a controller";
  prompt.answerText = "kqzm";
  EXPECT_TRUE(console.requestPinDefinition());
  console.actions().perform(
      "", []() -> std::string { throw std::runtime_error("there is none to ask"); });
  EXPECT_EQ(journal, (Lines{"input Please Enter Password : [Special Function]",
                            "message No device was found"}));
  console.searchComPorts();
  EXPECT_EQ(journal.back(), "message controller not found ??") << "but one can be searched for";
  EXPECT_EQ(model.notice().text, "No COM port could be opened. there is no COM1");
  journal.clear();
  console.exit();
  EXPECT_EQ(journal, Lines{"end"});
}

TEST_F(Console, EndsThroughEachWayOut) {
  const Lines release = {
      "confirm Remove the Driver(Release Comport) and Exit program?\n"
      "Restart the computer will Re_Connected again !!"};
  const std::tuple<const char*, void (MainConsole::*)(), bool, Lines> cases[] = {
      {"Exit", &MainConsole::exit, true, closingStep + Lines{"end"}},
      {"window closed", &MainConsole::close, true, closingStep + closingStep + Lines{"end"}},
      {"release, no", &MainConsole::releaseAndExit, false, release},
      {"release, yes", &MainConsole::releaseAndExit, true, release + Lines{"CloseCOMPort", "end"}},
  };
  for (const auto& [what, way, answer, expected] : cases) {
    MainConsole another(access(), prompt, model, port, folder.path());
    start(another);
    journal.clear();
    prompt.answerYes = answer;
    (another.*way)();
    EXPECT_EQ(steps(), expected) << what;
    if (!answer) continue;
    another.close();
    EXPECT_EQ(steps(), expected) << what << ": the program ends once";
  }
}

TEST_F(Console, AsksNothingOfAControllerThatIsGoneBehindAQuestion) {
  prompt.answerText = "kqzm";
  const std::function<void(MainConsole&)> questions[] = {&MainConsole::releaseAndExit,
                                                         &MainConsole::requestPinDefinition};
  for (const auto& ask : questions) {
    MainConsole another(access(), prompt, model, port, folder.path());
    start(another);
    prompt.onQuestion = [&another] { another.exit(); };
    journal.clear();
    ask(another);
    const Lines afterwards = steps();
    EXPECT_EQ(Lines(afterwards.begin() + 1, afterwards.end()), closingStep + Lines{"end"});
  }
}

TEST_F(Console, KeepsTheControllerOverARefreshAsLongAsItAnswers) {
  script.names = {"USB DEVICE 1", "USB DEVICE 2"};
  startUp();
  console.selectController(1);
  const struct {
    const char* what;
    Lines names;
    bool answers;
    const char* selected;
    const char* status;
  } cases[] = {
      {"answers", {"USB DEVICE 0", "USB DEVICE 2"}, true, "USB DEVICE 2", "USB DEVICE 2 is ready."},
      {"none answers",
       {"USB DEVICE 2", "USB DEVICE 3"},
       false,
       "USB DEVICE 2",
       "USB DEVICE 2 does not answer. Check its cable and power."},
      {"gone",
       {"USB DEVICE 1", "USB DEVICE 3"},
       true,
       "USB DEVICE 1",
       "USB DEVICE 2 is no longer there; USB DEVICE 1 was chosen."},
  };
  for (const auto& [what, names, answers, selected, status] : cases) {
    script.names = names;
    script.replies["UT"] = {answers ? replyOf("QRMV0301") : test::Bytes{}};
    script.replies["OI"] = script.replies["UT"];
    console.refresh();
    EXPECT_EQ(session.controllerName, selected) << what;
    EXPECT_EQ(model.notice().text, status) << what;
  }
  script.names = {"USB DEVICE 1", "USB DEVICE 4"};
  // The first is silent when it is asked for its type, the other answers.
  script.replies["UT"] = {{}, {}, replyOf("QRMV0301")};
  console.refresh();
  EXPECT_EQ(model.notice().text, "USB DEVICE 1 does not answer; USB DEVICE 4 was chosen.");
}

TEST_F(Console, ClosingIsPutOffUntilTheActionHasEnded) {
  startUp();
  clock.after(150ms, [this] {
    console.close();
    EXPECT_TRUE(model.work);
    // What is asked for meanwhile starts no exchange inside the running one.
    console.information();
    console.refresh();
    console.calstart(3, calibration);
    console.releaseAndExit();
  });
  console.information();
  const Lines information = {"WriteBuffer OI", "WriteBuffer OI", "WriteBuffer UT"};
  EXPECT_EQ(steps(), information + closingStep + closingStep + Lines{"end"});
}

TEST_F(Console, DoesNothingWhileAnErrorThatNobodyCanMendPassesThrough) {
  const auto fail = []() -> std::string { throw std::runtime_error("beyond mending"); };
  const auto exit = [](MainConsole& each) { each.exit(); };
  using Action = std::function<void(MainConsole&)>;
  const std::tuple<const char*, Action, Action> cases[] = {
      {"an action", [&](auto& each) { each.actions().perform("", fail); }, exit},
      {"a window that does not open",
       [](auto& each) {
         each.calstart(3, {[] { throw std::runtime_error("no window"); }, nullptr});
       },
       exit},
      {"a way out was put off",
       [&](auto& each) {
         each.actions().perform("", [&] {
           each.exit();
           return fail();
         });
       },
       [this](auto&) { clock.delay(0ms); }},
  };
  for (const auto& [what, act, end] : cases) {
    SCOPED_TRACE(what);
    MainConsole failing(access(), prompt, model, port, folder.path());
    start(failing);
    journal.clear();
    EXPECT_THROW(act(failing), std::runtime_error);
    EXPECT_EQ(journal, Lines{});
    EXPECT_FALSE(model.work);
    end(failing);
    EXPECT_EQ(steps(), closingStep + Lines{"end"});
  }
}

TEST_F(Console, RestoresAndResetsWithoutReadingAfterwards) {
  startUp();
  script.replies["RD"] = {test::acknowledgement};
  script.replies["R"] = {test::acknowledgement};
  for (const bool reset : {false, true}) {
    journal.clear();
    console.actions().perform("", [&] {
      return reset ? console.parameters().reset() : console.parameters().restoreDefaults();
    });
    const std::string command = reset ? "WriteBuffer R" : "WriteBuffer RD";
    Lines expected;
    if (!reset) {
      // The block is read to be kept; this controller does not tell it.
      expected = {open,        "FlushReadBuffer", "WriteBuffer GP00",
                  "delay 200", "ReadBuffer 10",   "WriteBuffer GP00",
                  "delay 200", "ReadBuffer 10",   close};
    }
    const std::string told =
        reset ? "message Controller Reset OK" : "message Controller Restore OK";
    const Lines sent = {open, "FlushReadBuffer", command, "delay 300", "ReadBuffer 10", told,
                        close};
    EXPECT_EQ(journal, expected + sent + Lines{"show settings"});
  }
}

TEST_F(Console, OpensOneWindowAtATimeAndClosingEndsItFirst) {
  startUp();
  console.openTest(drawing);
  console.openTest(drawing);
  console.calstart(3, calibration);
  EXPECT_TRUE(model.work);
  console.testEnded();
  EXPECT_FALSE(model.work);
  console.calstart(5, calibration);
  console.exit();
  const Lines opened = {"open test", "open calibration", "cancel calibration"};
  EXPECT_EQ(journal, opened);
  console.calibrationEnded(false, Notice("cancelled"));
  EXPECT_EQ(steps(), opened + closingStep + Lines{"end"}) << "the way out that was put off";
}

TEST_F(Console, WritesAtItsEndTheWordThatTheControllerHoldsThen) {
  script.names = {"RS232 DEVICE 1", "USB DEVICE 2"};
  script.replies["Uu"] = {test::bytesOf("1234567892")};
  script.replies["RD"] = {test::acknowledgement};
  const struct {
    const char* what;
    std::function<void(MainConsole&)> before;
    bool readAgain;
  } ways[] = {
      {"as read", [](MainConsole&) {}, false},
      {"typed, not written",
       [](MainConsole& each) { each.parameters().table().edit(1, WordByte::low, "99"); }, false},
      {"another controller", [](MainConsole& each) { each.selectController(1); }, true},
      {"refreshed", [](MainConsole& each) { each.refresh(); }, true},
      {"calibrated",
       [this](MainConsole& each) {
         each.calstart(3, calibration);
         each.calibrationEnded(true, Notice(""));
       },
       true},
      {"not calibrated",
       [this](MainConsole& each) {
         each.calstart(3, calibration);
         each.calibrationEnded(false, Notice(""));
       },
       false},
      {"defaults", [](MainConsole& each) { each.parameters().restoreDefaults(); }, true},
      {"debugged",
       [this](MainConsole& each) {
         openDebugger(each);
         each.debuggerEnded(false);
       },
       true},
  };
  for (const auto& [what, before, readAgain] : ways) {
    MainConsole another{access(), prompt, model, port, folder.path()};
    start(another);
    for (const char address : {'0', '1', '2', '3', '4', '5', '6', '7'})
      script.replies[std::string("GP0") + address] = {replyOf("01234")};
    another.parameters().read();
    before(another);
    script.replies["GP01"] = {replyOf("05678")};
    journal.clear();
    another.close();
    const std::string write = readAgain ? "WriteBuffer SP015678" : "WriteBuffer SP011234";
    const Lines once = {"WriteBuffer Uu", write, write, "WriteBuffer PL", "WriteBuffer PL"};
    Lines first = once;
    if (readAgain) first.insert(first.begin() + 1, "WriteBuffer GP01");
    EXPECT_EQ(steps(), first + once + Lines{"end"}) << what;
  }
  startUp();
  console.parameters().read();
  script.names = {"USB DEVICE 2"};
  clock.after(50ms, [this] { console.exit(); });
  console.refresh();
  EXPECT_THAT(journal, testing::Not(testing::Contains(testing::StartsWith("WriteBuffer SP01"))))
      << "another one answered while the end was asked for";
  EXPECT_EQ(journal.back(), "end");
}

/// One that has crashed too often.
class GivenUpDriver final : public test::DriverBetween {
 public:
  using DriverBetween::DriverBetween;
  void revive() override { isGivenUp_ = false; }

 private:
  std::int32_t pass(std::string_view, const Call& call) override { return isGivenUp_ ? 0 : call(); }
  bool isGivenUp_ = true;
};

TEST_F(Console, StartsADriverOnceMoreWhenTheUserRefreshes) {
  GivenUpDriver givenUp(driver());
  MainConsole another({session, givenUp, clock}, prompt, model, port, folder.path());
  start(another);
  EXPECT_FALSE(model.selected);
  another.refresh();
  EXPECT_TRUE(model.selected);
}

TEST_F(Console, LeavesAloneOnlyWhatTheDebuggerStandsInTheWayOf) {
  script.names = {"RS232 DEVICE 1", "USB DEVICE 2"};
  prompt.answerYes = false;
  startUp();
  openDebugger(console);
  EXPECT_FALSE(model.work);
  const std::string held = "The serial debugger has the port of RS232 DEVICE 1. Leave it first";
  const std::string waits = "The serial debugger waits for an answer.";
  const auto nothing = [] { return std::string("done"); };
  /// An action, and whether it asks the chosen controller only.
  const std::tuple<const char*, std::function<void()>, bool> actions[] = {
      {"information", [&] { console.information(); }, true},
      {"perform", [&] { console.actions().perform("", nothing); }, true},
      {"calibration",
       [&] {
         console.calstart(3, calibration);
         console.calibrationEnded(false, Notice("done"));
       },
       true},
      {"refresh", [&] { console.refresh(); }, false},
      {"search", [&] { console.searchComPorts(); }, false},
      {"doctor", [&] { console.actions().examine("", nothing); }, false},
      {"release", [&] { console.releaseAndExit(); }, true},
  };
  const auto expectRefused = [&](const std::string& reason, bool alsoOfTheChosen) {
    for (const auto& [what, act, ofTheChosen] : actions) {
      model.tell({});
      journal.clear();
      act();
      const bool refused = alsoOfTheChosen || !ofTheChosen;
      EXPECT_EQ(model.notice().text.starts_with(reason), refused)
          << what << ": " << model.notice().text;
      EXPECT_TRUE(!refused || journal.empty() || journal == Lines{"show settings"}) << what;
    }
  };
  expectRefused(held, true);
  console.selectController(1);
  EXPECT_EQ(session.controllerName, "USB DEVICE 2");
  expectRefused(held, false);
  console.selectController(0);
  EXPECT_EQ(journal.back(), "show controllers") << "the choice is put back";
  debuggerBusy = true;
  expectRefused(waits, true);
  debuggerBusy = false;
  console.openTest(drawing);
  console.testEnded();
  journal.clear();
  console.debuggerEnded(false);
  EXPECT_EQ(journal, Lines{}) << "nobody is asked";
  console.selectController(0);
  EXPECT_EQ(session.controllerName, "RS232 DEVICE 1");
}

TEST_F(Console, EndsWithTheDebuggerInTheRightOrder) {
  script.names = {"RS232 DEVICE 1", "USB DEVICE 2"};
  const std::tuple<const char*, std::function<void(MainConsole&)>, Lines> cases[] = {
      {"by the debugger: nothing is said to the controller any more",
       [](auto& ending) { ending.debuggerEnded(true); },
       {"end"}},
      {"by the debugger, beside a test",
       [this](auto& ending) {
         ending.openTest(drawing);
         ending.debuggerEnded(true);
         ending.testEnded();
       },
       {"open test", "close test", "end"}},
      {"by the main window",
       [](auto& ending) {
         ending.exit();
         ending.debuggerEnded(false);
       },
       Lines{"close debugger"} + closingStep + Lines{"end"}},
      {"by the release of another controller's port",
       [this](auto& ending) {
         ending.selectController(1);
         journal.clear();
         ending.releaseAndExit();
         ending.debuggerEnded(false);
       },
       {"confirm Remove the Driver(Release Comport) and Exit program?\n"
        "Restart the computer will Re_Connected again !!",
        "close debugger", "CloseCOMPort", "end"}},
      {"by both",
       [](auto& ending) {
         ending.exit();
         ending.debuggerEnded(true);
       },
       Lines{"close debugger"} + closingStep + Lines{"end"}},
  };
  for (const auto& [what, end, expected] : cases) {
    MainConsole ending{access(), prompt, model, port, folder.path()};
    start(ending);
    openDebugger(ending);
    journal.clear();
    end(ending);
    EXPECT_EQ(steps(), expected) << what;
  }
}

TEST_F(Console, GuardsDebuggerAndPinDefinitionWithThePassword) {
  startUp();
  EXPECT_FALSE(console.requestDebugger());
  console.passwordEdited("xkqzmx");
  EXPECT_TRUE(console.requestDebugger());
  EXPECT_TRUE(console.passwordEntered("abkqzmcd"));
  EXPECT_FALSE(console.passwordEntered("KQZM"));
  EXPECT_EQ(journal,
            (Lines{"show password", "hide password", "message Password Error!!", "hide password"}));
  EXPECT_EQ(console.passwordEdited("123456789\u00E9"), "123456789\u00E9");

  const std::pair<std::optional<std::string>, bool> cases[] = {
      {"  kqzm ", true}, {"KQZM", false}, {"xkqzm", false}, {"", false}, {std::nullopt, false}};
  for (const auto& [answer, opens] : cases) {
    prompt.answerText = answer;
    EXPECT_EQ(console.requestPinDefinition(), opens) << answer.value_or("cancelled");
  }
}

TEST_F(Console, RefusesWhatNeedsAMissingOperationAndNothingElse) {
  const std::function<void(MainConsole&)> calibrateWith2 = [this](auto& each) {
    each.calstart(2, calibration);
  };
  const std::function<void(MainConsole&)> calibrateWith3 = [this](auto& each) {
    each.calstart(3, calibration);
  };
  const std::tuple<const char*, std::function<void(MainConsole&)>, bool> cases[] = {
      {"ReadLength", calibrateWith2, true},
      {"ReadLength", calibrateWith3, false},
      {"SetCalPoint", calibrateWith2, false},
      {"CalCurrentPointReady", calibrateWith3, true},
      {"StoreCalibrationData", calibrateWith2, false},
      {"StoreCalibrationData", calibrateWith3, true},
      {"ReopenCOMPort", [](auto& each) { each.searchComPorts(); }, true},
  };
  for (const auto& [operation, act, refused] : cases) {
    test::LackingDriver part(driver(), {operation});
    MainConsole another({session, part, clock}, prompt, model, port, folder.path());
    start(another, {});
    journal.clear();
    act(another);
    EXPECT_EQ(testing::Value(journal.back(), testing::HasSubstr(std::string(" ") + operation)),
              refused)
        << operation << ": " << journal.back();
    EXPECT_THAT(journal, testing::Not(testing::Contains("CloseCOMPort")));
  }
}

class ConsoleOnAPartOfADriver : public Console {
 protected:
  ConsoleOnAPartOfADriver() : Console(INCOMPLETE_LIBRARY) {}
};

TEST_F(ConsoleOnAPartOfADriver, EndsWhatNeedsMoreAndNamesTheOperation) {
  start(console, {});
  const auto lacks = [](const std::string& what) {
    return "message The touch driver library lacks " + what + ". What needs that was not done.";
  };
  EXPECT_EQ(journal.back(), lacks("GetRotation"));
  EXPECT_THAT(steps(), testing::Contains("show identity")) << "the rest is done";
  EXPECT_FALSE(model.work);

  const Setting& rotation = *findSetting("rotation");
  const struct {
    const char* operation;
    std::function<void()> action;
    Lines before;
  } cases[] = {
      {"SetRotation",
       [&] {
         console.actions().perform("", [&] { return console.settings().change(rotation, 2); });
       },
       {open, close, "show settings"}},
      {"IsPenUp", [this] { console.calstart(3, calibration); }, {"show settings"}},
      {"CloseCOMPort", [this] { console.searchComPorts(); }, {"show settings"}},
      {"CloseCOMPort",
       [this] {
         console.passwordEdited("kqzm");
         console.requestDebugger();
       },
       {"show settings"}},
      {"CloseCOMPort", [this] { console.passwordEntered("kqzm"); }, {"show settings"}},
  };
  for (const auto& [operation, action, before] : cases) {
    journal.clear();
    action();
    std::erase(journal, "hide password");
    EXPECT_EQ(journal, before + Lines{lacks(operation)});
    EXPECT_FALSE(model.work);
  }
  const auto change = [&] { return console.settings().change(rotation, 2); };
  EXPECT_EQ("message " + console.actions().perform("", change).text, lacks("SetRotation"));
  EXPECT_EQ(console.settings().shown().rotation, -1) << "not what was never sent";
  EXPECT_EQ(console.settings().shown().doubleClickSpeed, Deciseconds(1)) << "what was read stays";
  console.actions().perform("",
                            [&] { return console.settings().change(*findSetting("up-sound"), 1); });
  EXPECT_EQ(model.notice().text, "Up touch sound: on") << "all else works";
  script.results["OpenController"] = 1;
  console.refresh();
  script.results.erase("OpenController");
  journal.clear();
  console.actions().perform("", [&] { return console.settings().confirm(); });
  EXPECT_EQ(journal, Lines{"show settings"}) << "what nobody has read is not sent";
  EXPECT_THAT(model.notice().text,
              testing::StartsWith("Timing: nothing was sent, since it was not read"));
  journal.clear();
  console.exit();
  EXPECT_EQ(steps(), closingStep + Lines{"end"});
}

}  // namespace
}  // namespace touch
