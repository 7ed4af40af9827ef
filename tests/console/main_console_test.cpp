#include "console/main_console.h"

#include <optional>

#include "tests/core/fake_ports.h"
#include "tests/support/desk.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

using test::Lines;
using test::replyOf;
using namespace std::chrono_literals;

/// Writes what it is made to show between the driver calls of the journal.
class View final : public MainView {
 public:
  explicit View(Lines& journal) : journal_(journal) {}

  void showBusy(const std::string&) override { busy = true; }
  void showIdle() override { busy = false; }
  void showStatus(const Status& shown) override { status = shown.text; }
  void showReady(const Status& shown) override { status = shown.text; }
  void showControllers(const std::vector<std::string>&, std::optional<std::size_t>) override {
    note("show controllers");
  }
  void showSettings() override { note("show settings"); }
  void showParameters() override {}
  void showIdentity(const Identity&) override { note("show identity"); }
  void showInformation(const std::vector<std::string>&) override {}
  std::string showPicture(const std::filesystem::path&) override { return note("show picture"); }
  std::string showIcon(const std::filesystem::path&) override { return note("show icon"); }
  void showAdvancedFrame() override {}
  void showPasswordFrame(bool shown) override { note(shown ? "show password" : "hide password"); }
  void openDebugger() override { note("open debugger"); }
  void openPinDefinition() override { note("open pins"); }
  void openCalibration() override { note("open calibration"); }
  void cancelCalibration() override { note("cancel calibration"); }
  void openTest(TestScreen) override { note("open test"); }
  void closeTest() override { note("close test"); }
  void closeDebugger() override { note("close debugger"); }
  void endProgram() override { note("end"); }

  bool busy = false;
  std::string status;

 private:
  std::string note(const char* line) {
    journal_.emplace_back(line);
    return {};
  }

  Lines& journal_;
};

class Console : public test::Desk {
 protected:
  Console() {
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
    script.results = {{"GetReportMode", 1}, {"GetRightClickTime", 500}};
  }
  void startUp() {
    console.startUp(10);
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
  View view{journal};
  test::FakePorts port{journal};
  MainConsole console{access(), prompt, view, port, folder.path()};
};

Lines operator+(Lines left, const Lines& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

/// At the end a controller's parameters are locked.
const Lines closingStep = {"WriteBuffer Uu", "WriteBuffer PL", "WriteBuffer PL"};

TEST_F(Console, StartsUpInTheStatedOrder) {
  folder.write("pic01.jpg", "picture");
  folder.write("Zevrik.ico", "icon");
  console.startUp(10);
  const std::string open = "OpenController RS232 DEVICE 1";
  const std::string close = "CloseController";
  const Lines search = {"settings 9600,n,8,1", "GetExistControllers", "GetControllerName 1 20",
                        open};
  const Lines unitType = {"WriteBuffer UT", "delay 100", "ReadBuffer 10"};
  const Lines settings = {
      "ReopenCOMPort",       "GetReportMode",      "GetRightClickTime", "GetRightClickEnabled",
      "GetDoubleClickSpeed", "GetDoubleClickArea", "GetReportStatus",   "GetDoubleClickEnabled",
      "GetUpSoundStatus",    "GetDownSoundStatus", "GetRotation"};
  const Lines firmware = {"WriteBuffer OI", "delay 100", "ReadBuffer 10"};
  EXPECT_EQ(journal, (search + unitType + Lines{close, "show controllers", open} + settings +
                      Lines{close, "show settings", "show picture", open} + unitType + firmware +
                      Lines{close, "show identity", "show icon"}));
  EXPECT_EQ(view.status, "RS232 DEVICE 1 is ready.");
}

TEST_F(Console, WorksWithoutAnAnswerAndWithoutControllers) {
  script.names = {"USB DEVICE 1", "USB DEVICE 2"};
  script.replies.clear();
  startUp();
  EXPECT_EQ(session.controllerName, "USB DEVICE 2") << "the last one tried stays the current one";
  EXPECT_EQ(view.status, "USB DEVICE 2 does not answer. Check its cable and power.");
  console.searchComPorts();
  EXPECT_EQ(steps().front(), "CloseCOMPort");
  EXPECT_THAT(steps(), testing::Contains("ReopenCOMPort")) << "the driver gets its port back";

  script.names.clear();
  console.refresh();
  journal.clear();
  console.information();
  console.calstart(3);
  console.requestPinDefinition();
  EXPECT_EQ(journal, Lines{}) << "nothing can be done without a controller";
  console.searchComPorts();
  EXPECT_EQ(journal.back(), "message controller not found ??") << "but one can be searched for";
  EXPECT_EQ(view.status, "No COM port could be opened. absent");
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
    MainConsole another(access(), prompt, view, port, folder.path());
    another.startUp(10);
    journal.clear();
    prompt.answerYes = answer;
    (another.*way)();
    EXPECT_EQ(steps(), expected) << what;
    if (!answer) continue;
    another.close();
    EXPECT_EQ(steps(), expected) << what << ": the program ends once";
  }
}

TEST_F(Console, ClosingIsPutOffUntilTheActionHasEnded) {
  startUp();
  clock.after(150ms, [this] {
    console.close();
    EXPECT_TRUE(view.busy);
    // What is asked for meanwhile starts no exchange inside the running one.
    console.information();
    console.refresh();
    console.calstart(3);
    console.releaseAndExit();
  });
  console.information();
  const Lines information = {"WriteBuffer OI", "WriteBuffer OI", "WriteBuffer UT"};
  EXPECT_EQ(steps(), information + closingStep + closingStep + Lines{"end"});
}

TEST_F(Console, OpensOneWindowAtATimeAndClosingEndsItFirst) {
  startUp();
  console.openTest(TestScreen::linearity);
  console.openTest(TestScreen::drawing);
  console.calstart(3);
  EXPECT_TRUE(view.busy);
  console.testEnded();
  EXPECT_FALSE(view.busy);
  console.calstart(5);
  console.exit();
  const Lines opened = {"open test", "open calibration", "cancel calibration"};
  EXPECT_EQ(journal, opened);
  console.calibrationEnded(false, "cancelled");
  EXPECT_EQ(steps(), opened + closingStep + Lines{"end"}) << "the way out that was put off";
}

TEST_F(Console, WritesAtItsEndNoWordThatTheDebuggerMayHaveChanged) {
  script.replies["Uu"] = {test::bytesOf("1234567892")};
  for (const bool debugged : {false, true}) {
    MainConsole another{access(), prompt, view, port, folder.path()};
    another.startUp(10);
    for (const char address : {'0', '1', '2', '3', '4', '5', '6', '7'})
      script.replies[std::string("GP0") + address] = {replyOf("01234")};
    another.parameters().read();
    journal.clear();
    if (debugged) {
      another.debuggerOpened();
      another.debuggerEnded(true);
    } else {
      another.exit();
    }
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "WriteBuffer SP011234") > 0, !debugged);
    EXPECT_EQ(journal.back(), "end");
  }
}

TEST_F(Console, GuardsDebuggerAndPinDefinitionWithThePassword) {
  startUp();
  console.requestDebugger("");
  console.requestDebugger("xkqzmx");
  console.passwordEntered("abkqzmcd");
  console.passwordEntered("KQZM");
  EXPECT_EQ(journal, (Lines{"show password", "open debugger", "hide password", "open debugger",
                            "message Password Error!!", "hide password"}));
  EXPECT_EQ(MainConsole::passwordEdited("123456789\u00E9"), "123456789\u00E9");

  const std::pair<std::optional<std::string>, bool> cases[] = {
      {"  kqzm ", true}, {"KQZM", false}, {"xkqzm", false}, {"", false}, {std::nullopt, false}};
  for (const auto& [answer, opens] : cases) {
    prompt.answerText = answer;
    console.requestPinDefinition();
    EXPECT_EQ(journal.back() == "open pins", opens) << answer.value_or("cancelled");
  }
}

}  // namespace
}  // namespace touch
