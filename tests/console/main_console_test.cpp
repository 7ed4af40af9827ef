#include "console/main_console.h"

#include <optional>

#include "tests/support/desk.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

using test::bytesOf;
using test::Lines;
using test::replyOf;
using namespace std::chrono_literals;

/// A serial port that opens nowhere.
class NoPort final : public SerialPort {
 public:
  explicit NoPort(Lines& journal) : journal_(journal) {}
  std::optional<std::string> setSettings(std::string_view settings) override {
    journal_.push_back("port settings " + std::string(settings));
    return std::nullopt;
  }
  void selectPort(int) override {}
  std::optional<std::string> open() override { return "no such device"; }
  void close() override {}
  bool isOpen() const override { return false; }
  std::optional<std::string> lost() const override { return std::nullopt; }
  std::size_t inBufferCount() override { return 0; }
  void clearInput() override {}
  void clearOutput() override {}
  void write(std::span<const std::uint8_t>) override {}
  std::vector<std::uint8_t> readAll() override { return {}; }

 private:
  Lines& journal_;
};

/// Writes what it is made to show between the driver calls of the journal.
class View final : public MainView {
 public:
  explicit View(Lines& journal) : journal_(journal) {}

  void showBusy(const std::string&) override { busy = true; }
  void showIdle() override { busy = false; }
  void showStatus(const std::string& text) override { status = text; }
  void showControllers(const std::vector<std::string>&, std::optional<std::size_t> index) override {
    selected = index;
    journal_.push_back("show controllers");
  }
  void showSettings() override { journal_.push_back("show settings"); }
  void showParameters() override {}
  void showIdentity(const Identity&) override { journal_.push_back("show identity"); }
  void showInformation(const std::vector<std::string>&) override {}
  std::string showPicture(const std::filesystem::path&) override {
    journal_.push_back("show picture");
    return {};
  }
  std::string showIcon(const std::filesystem::path&) override {
    journal_.push_back("show icon");
    return {};
  }
  void showAdvancedFrame() override {}
  void showPasswordFrame(bool shown) override {
    journal_.push_back(shown ? "show password" : "hide password");
  }
  void openDebugger() override { journal_.push_back("open debugger"); }
  void openPinDefinition() override { journal_.push_back("open pins"); }
  void openCalibration() override { journal_.push_back("open calibration"); }
  void cancelCalibration() override { journal_.push_back("cancel calibration"); }
  void openTest(TestScreen test) override {
    journal_.push_back(test == TestScreen::drawing ? "open drawing" : "open linearity");
  }
  void closeTest() override { journal_.push_back("close test"); }
  void closeDebugger() override { journal_.push_back("close debugger"); }
  void endProgram() override { journal_.push_back("end"); }

  bool busy = false;
  std::string status;
  std::optional<std::size_t> selected;

 private:
  Lines& journal_;
};

class Console : public test::Desk {
 protected:
  Console() {
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
    script.results["GetReportMode"] = 1;
    script.results["GetRightClickTime"] = 500;
  }
  void startUp() {
    console.startUp(10);
    journal.clear();
  }

  test::TemporaryFolder folder;
  View view{journal};
  NoPort port{journal};
  MainConsole console{access(), prompt, view, port, folder.path()};
};

Lines operator+(Lines left, const Lines& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

const Lines readSettings = {"OpenController RS232 DEVICE 1",
                            "ReopenCOMPort",
                            "GetReportMode",
                            "GetRightClickTime",
                            "GetRightClickEnabled",
                            "GetDoubleClickSpeed",
                            "GetDoubleClickArea",
                            "GetReportStatus",
                            "GetDoubleClickEnabled",
                            "GetUpSoundStatus",
                            "GetDownSoundStatus",
                            "GetRotation",
                            "CloseController"};
const Lines readFirmware = {"OpenController RS232 DEVICE 1",
                            "WriteBuffer UT",
                            "delay 100",
                            "ReadBuffer 10",
                            "WriteBuffer OI",
                            "delay 100",
                            "ReadBuffer 10",
                            "CloseController"};
const Lines closingStep = {"OpenController RS232 DEVICE 1",
                           "FlushReadBuffer",
                           "WriteBuffer Uu",
                           "delay 100",
                           "ReadBuffer 10",
                           "CloseController",
                           "OpenController RS232 DEVICE 1",
                           "WriteBuffer PL",
                           "delay 30",
                           "WriteBuffer PL",
                           "delay 100",
                           "ReadBuffer 10",
                           "CloseController"};

TEST_F(Console, StartsUpInTheStatedOrder) {
  folder.write("pic01.jpg", "picture");
  folder.write("Zevrik.ico", "icon");
  console.startUp(10);
  EXPECT_EQ(journal,
            (Lines{"port settings 9600,n,8,1", "GetExistControllers", "GetControllerName 1 20",
                   "OpenController RS232 DEVICE 1", "WriteBuffer UT", "delay 100", "ReadBuffer 10",
                   "CloseController", "show controllers"} +
             readSettings + Lines{"show settings", "show picture"} + readFirmware +
             Lines{"show identity", "show icon"}));
  EXPECT_FALSE(view.busy);
  EXPECT_EQ(view.status, "RS232 DEVICE 1 is ready.");
}

TEST_F(Console, OpensWithoutControllersAndEndsWithoutThem) {
  script.names.clear();
  startUp();
  EXPECT_EQ(view.selected, std::nullopt);
  console.information();
  console.calstart(3);
  console.requestPinDefinition();
  EXPECT_EQ(journal, Lines{}) << "nothing can be done without a controller";
  console.searchComPorts();
  EXPECT_EQ(journal.back(), "message controller not found ??") << "but one can be searched for";
  EXPECT_EQ(view.status, "No COM port could be opened. no such device");
  journal.clear();
  console.exit();
  EXPECT_EQ(journal, Lines{"end"});
}

TEST_F(Console, SaysWhenNoControllerAnswers) {
  script.names = {"USB DEVICE 1", "USB DEVICE 2"};
  script.replies.clear();
  startUp();
  EXPECT_EQ(view.selected, 1u) << "the last one tried stays the current one";
  EXPECT_EQ(session.controllerName, "USB DEVICE 2");
  EXPECT_NE(view.status.find("does not answer"), view.status.npos);
}

TEST_F(Console, EndsThroughEachWayOut) {
  const Lines release = {
      "confirm Remove the Driver(Release Comport) and Exit program?\n"
      "Restart the computer will Re_Connected again !!"};
  const struct {
    const char* what;
    void (MainConsole::*way)();
    bool answer;
    Lines expected;
  } cases[] = {
      {"Exit", &MainConsole::exit, true, closingStep + Lines{"end"}},
      {"window closed", &MainConsole::close, true, closingStep + closingStep + Lines{"end"}},
      {"release, no", &MainConsole::releaseAndExit, false, release},
      {"release, yes", &MainConsole::releaseAndExit, true,
       release + Lines{"OpenController RS232 DEVICE 1", "CloseCOMPort", "CloseController", "end"}},
  };
  for (const auto& c : cases) {
    MainConsole another(access(), prompt, view, port, folder.path());
    another.startUp(10);
    journal.clear();
    prompt.answerYes = c.answer;
    (another.*c.way)();
    EXPECT_EQ(journal, c.expected) << c.what;
    journal.clear();
    if (!c.answer) continue;
    another.close();
    EXPECT_EQ(journal, Lines{}) << c.what << ": the program ends once";
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
  const Lines information = {"OpenController RS232 DEVICE 1",
                             "WriteBuffer OI",
                             "delay 100",
                             "FlushReadBuffer",
                             "WriteBuffer OI",
                             "delay 100",
                             "ReadBuffer 10",
                             "WriteBuffer UT",
                             "delay 100",
                             "ReadBuffer 10",
                             "CloseController"};
  EXPECT_EQ(journal, information + closingStep + closingStep + Lines{"end"});
}

TEST_F(Console, ClosingEndsACalibrationFirst) {
  startUp();
  console.calstart(5);
  EXPECT_EQ(session.calibrationPoints, 5);
  console.exit();
  EXPECT_EQ(journal, (Lines{"open calibration", "cancel calibration"}));
  console.calibrationEnded(false, "cancelled");
  EXPECT_EQ(journal,
            (Lines{"open calibration", "cancel calibration"} + closingStep + Lines{"end"}));
}

TEST_F(Console, OpensOneTestAtATimeWithOrWithoutAController) {
  script.names.clear();
  startUp();
  console.openTest(TestScreen::linearity);
  console.openTest(TestScreen::drawing);
  console.refresh();
  EXPECT_TRUE(view.busy);
  EXPECT_EQ(journal, Lines{"open linearity"});
  console.testEnded();
  EXPECT_FALSE(view.busy);
  journal.clear();

  console.openTest(TestScreen::drawing);
  console.exit();
  EXPECT_EQ(journal, (Lines{"open drawing", "close test"}));
  console.testEnded();
  EXPECT_EQ(journal.back(), "end") << "the way out that was put off";
}

TEST_F(Console, GivesTheDriverItsPortBackAfterThePortSearch) {
  startUp();
  console.searchComPorts();
  std::erase(journal, "port settings 9600,n,8,1");
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "CloseCOMPort", "CloseController"} +
                      readSettings + Lines{"show settings", "message controller not found ??"}));
}

TEST_F(Console, GuardsTheDebuggerWithThePassword) {
  startUp();
  const struct {
    std::string typed;
    Lines expected;
  } cases[] = {
      {"kqzm", {"hide password", "open debugger"}},
      {"abkqzmcd", {"hide password", "open debugger"}},
      {"KQZM", {"message Password Error!!", "hide password"}},
      {"", {"message Password Error!!", "hide password"}},
  };
  for (const auto& [typed, expected] : cases) {
    journal.clear();
    console.passwordEntered(typed);
    EXPECT_EQ(journal, expected) << typed;
  }
  journal.clear();
  console.requestDebugger("");
  console.requestDebugger("xkqzmx");
  EXPECT_EQ(journal, (Lines{"show password", "open debugger"}));
  EXPECT_EQ(MainConsole::passwordEdited("1234567890"), "1234567890");
  EXPECT_EQ(MainConsole::passwordEdited("12345678901"), "");
}

TEST_F(Console, GuardsThePinDefinitionWithThePassword) {
  startUp();
  const std::pair<std::optional<std::string>, bool> cases[] = {
      {"kqzm", true},   {"  kqzm ", true}, {"KQZM", false},
      {"xkqzm", false}, {"", false},       {std::nullopt, false},
  };
  for (const auto& [answer, opens] : cases) {
    journal.clear();
    prompt.answerText = answer;
    console.requestPinDefinition();
    EXPECT_EQ(journal.front(), "input Please Enter Password : [Special Function]");
    EXPECT_EQ(journal.back() == "open pins", opens) << answer.value_or("cancelled");
  }
}

}  // namespace
}  // namespace touch
