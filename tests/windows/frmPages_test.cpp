#include "console/frmTestsPage.h"
#include "console/simulated_faults.h"
#include "core/hex.h"
#include "tests/windows/window_desk.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;
using testing::ContainsRegex;
using testing::StartsWith;

class Pages : public MainWindowDesk {
 protected:
  Pages() {
    script.results["GetReportMode"] = 1;
    script.results["GetRightClickTime"] = 550;
    script.results["GetDoubleClickSpeed"] = 5;
    script.results["GetDoubleClickArea"] = 10;
    script.results["GetRotation"] = 0;
    for (std::uint8_t address = 0; address < 8; ++address)
      script.replies["GP" + hexByte(address)] = {replyOf("01234")};
    for (const char* const command : {"RD", "R", "SP03FF34"})
      script.replies[command] = {acknowledgement};
  }
  void open(const char* page) {
    MainWindowDesk::open();
    showPage(page);
  }
  /// The calls of the journal that change something, without the readings that come with them.
  Lines changes() {
    std::erase_if(journal, [](const std::string& line) {
      return !testing::Value(line, ContainsRegex("^(Set|Enable|Write|message)")) ||
             line.starts_with("WriteBuffer GP");
    });
    return std::exchange(journal, {});
  }
  void press(const char* button) { QTest::keyClick(find<QPushButton>(button), Qt::Key_Space); }
  bool isOn(const char* button) { return find<QAbstractButton>(button)->isChecked(); }
  bool isPossible(const char* control) { return find<QWidget>(control)->isEnabled(); }
};

TEST_F(Pages, AreTurnedByKeyWhereverTheFocusIs) {
  open("Controller");
  find<QPushButton>("cmdExit")->setFocus();
  const auto* const tabs = find<QTabWidget>("tabs");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(tabs->currentIndex(), 1);
  for (int presses = 0; presses < 2; ++presses)
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab,
                    Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(tabs->currentIndex(), tabs->count() - 1);
}

TEST_F(Pages, SettingsAndTheNoteAreShownWithoutSendingAnything) {
  folder.write("cursoroff.txt", "first\n second ");
  open("Settings");
  EXPECT_THAT(startUp, testing::Each(testing::Not(ContainsRegex("^(Set|Enable|WriteBuffer SE)"))));
  EXPECT_TRUE(isOn("Check1"));
  EXPECT_FALSE(isOn("Check5")) << "touches are reported";
  EXPECT_TRUE(isOn("Option2_0"));
  EXPECT_TRUE(isOn("Option3_0"));
  EXPECT_EQ(text("lblDoubleClickSpeed"), "500");
  EXPECT_EQ(text("lblDoubleClickArea"), "10");
  EXPECT_EQ(text("lblRightClickTime"), "550");
  EXPECT_EQ(find<QComboBox>("Combo1")->currentIndex(), -1);
  press("Command17");
  EXPECT_EQ(find<QPlainTextEdit>("cursorHelp")->toPlainText(), "\nfirst\n second \n");
  EXPECT_EQ(journal, Lines{});
}

TEST_F(Pages, SettingsActAtOnceByKeyboardAndTimingByConfirm) {
  open("Settings");
  const std::tuple<const char*, Qt::Key, Lines> cases[] = {
      {"Check1", Qt::Key_Space, {"EnableUpSound 0"}},
      {"Check4", Qt::Key_Space, {"EnableRightClick 0"}},
      {"Option2_3", Qt::Key_Space, {"SetRotation 3"}},
      {"Option3_2", Qt::Key_Space, {"SetReportMode 3"}},
      {"Check5", Qt::Key_Space, {"WriteBuffer MS", "WriteBuffer MI"}},
      {"Combo1", Qt::Key_Down, {"WriteBuffer SE0"}},
      {"Combo1", Qt::Key_Down, {"WriteBuffer SE1"}},
      {"HScroll1", Qt::Key_Right, {}},
      {"Command6",
       Qt::Key_Space,
       {"SetRightClickTime 550", "SetDoubleClickSpeed 6", "SetDoubleClickArea 10",
        "message Update OK"}},
  };
  for (const auto& [control, key, sent] : cases) {
    QTest::keyClick(find<QWidget>(control), key);
    EXPECT_EQ(changes(), sent) << control;
    if (control == std::string("Option2_3")) {
      EXPECT_EQ(status(), "Rotation: 270 was asked, the driver reports 0");
    }
  }
  // What the driver did not take is not shown as if it had.
  EXPECT_TRUE(isOn("Check1"));
  EXPECT_TRUE(isOn("Option2_0"));
}

TEST_F(Pages, MaintenanceListsTheMonitors) {
  open("Maintenance");
  const QScreen& screen = *QGuiApplication::primaryScreen();
  EXPECT_EQ(find<QComboBox>("monitorList")->itemText(0).toStdString(),
            "1: " + screen.name().toStdString() + ", " + std::to_string(screen.size().width()) +
                " x " + std::to_string(screen.size().height()));
}

TEST_F(Pages, MaintenanceRestoresAndOffersTheWayBack) {
  open("Maintenance");
  EXPECT_FALSE(isPossible("cmdUndoDefaults"));
  press("Command3");
  EXPECT_EQ(changes(), (Lines{"WriteBuffer R", "message Controller Reset OK"}));
  press("Command2");
  EXPECT_EQ(changes(), (Lines{"WriteBuffer RD", "message Controller Restore OK"}));
  EXPECT_TRUE(isPossible("cmdUndoDefaults"));
}

TEST_F(Pages, ParametersAreEditedInTheTableAndWrittenWhereChanged) {
  open("Parameters");
  press("cmdReadParameters");
  auto* const table = find<QTableWidget>("parameterTable");
  auto* const byte = table->item(3, 3);
  EXPECT_EQ(byte->text(), "12");
  find<QRadioButton>("optionDecimal")->click();
  EXPECT_EQ(byte->text(), "18");
  byte->setText("256");
  EXPECT_EQ(byte->text(), "18") << "a byte ends at 255";
  EXPECT_NE(status(), "");
  byte->setText("255");
  EXPECT_EQ(table->item(3, 5)->text(), "changed");

  script.replies["GP03"] = {replyOf("01234"), replyOf("0FF34")};
  changes();
  press("cmdWriteParameters");
  EXPECT_EQ(changes(), (Lines{"WriteBuffer SP03FF34", "message Write ok!!"}));
  EXPECT_EQ(table->item(3, 1)->text(), "255") << "read again at the end";
}

TEST_F(Pages, PinsUsedTwiceAreMarkedAtOnceAndNotWritten) {
  script.replies["GP80"] = {replyOf("00004")};
  for (int wire = 0; wire < 4; ++wire) {
    const std::string pin = '0' + std::to_string(wire);
    script.replies["GP8" + std::to_string(wire + 1)] = {replyOf('0' + pin + pin)};
  }
  open("Maintenance");
  prompt.answerText = "kqzm";
  QTest::keyClick(window.get(), Qt::Key_B, Qt::ControlModifier);
  EXPECT_TRUE(find<QWidget>("wire_3")->isVisible());
  EXPECT_FALSE(find<QWidget>("wire_4")->isVisible());
  EXPECT_TRUE(isPossible("cmdUpdatePins"));
  for (const auto& [channel, problem] : {std::pair(3, "channel"), {200, "Value must < 128 !!"}}) {
    find<QSpinBox>("channel_1")->setValue(channel);
    EXPECT_FALSE(isPossible("cmdUpdatePins")) << channel;
    EXPECT_THAT(text("lblPinProblems"), testing::HasSubstr(problem));
  }
  find<QSpinBox>("channel_1")->setValue(7);
  EXPECT_TRUE(isPossible("cmdUpdatePins"));
}

TEST_F(Pages, TheDoctorLooksWhenItIsFirstSeenAndOnRefreshAndSavesItsFile) {
  open("Doctor");
  live(0ms);
  auto* const list = find<QListWidget>("findingsList");
  EXPECT_GT(list->count(), 3);
  EXPECT_EQ(text("lblDoctorSummary") + ".", status());
  showPage("Tests");
  showPage("Doctor");
  live(0ms);
  EXPECT_EQ(count("OpenController USB DEVICE 2"), 1)
      << "what was found stays until it is asked for again";
  answerFileDialog("d.zip");
  press("cmdSaveDiagnostics");
  EXPECT_THAT(status(), StartsWith("The diagnostics are saved in "));
  EXPECT_THAT(folder.read("d.zip"), StartsWith("PK"));

  script.names.clear();
  press("cmdDoctorRefresh");
  const std::string finding = list->item(0)->text().toStdString();
  EXPECT_THAT(finding, StartsWith("Problem: The driver knows of no controller.\n"));
  EXPECT_THAT(finding, testing::HasSubstr("\nNext: "));
  EXPECT_EQ(session.controllerName, "RS232 DEVICE 1") << "the current controller stays";
}

TEST_F(Pages, TestsAreOpenedOneAtATimeAndEndedWithTheProgram) {
  open("Tests");
  for (const auto& [button, name] :
       {std::pair("cmdDraw", "frmDraw"), {"cmdLinearity", "frmLinearity"}}) {
    press(button);
    ASSERT_NE(opened(name), nullptr) << name;
    EXPECT_FALSE(isPossible(button));
    EXPECT_EQ(status(), "A test is open.");
    QTest::keyClick(opened(name), Qt::Key_Escape);
    live(0ms);
    EXPECT_EQ(opened(name), nullptr);
    EXPECT_TRUE(isPossible(button));
    EXPECT_EQ(status(), "RS232 DEVICE 1 is ready.");
  }
  EXPECT_EQ(window->findChild<QCheckBox*>("fault_bow"), nullptr)
      << "only simulated panels have faults to switch";
  press("cmdDraw");
  window->close();
  live(0ms);
  EXPECT_EQ(opened("frmDraw"), nullptr);
  EXPECT_TRUE(window->isHidden());
}

class SimulatedFaults : public DrawingDesk {};

TEST_F(SimulatedFaults, AreSwitchedOnAndOffForEveryController) {
  const std::vector<std::string> controllers = {"RS232 DEVICE 1", "USB DEVICE 2"};
  frmTestsPage page(true);
  QObject::connect(&page, &frmTestsPage::faultSwitched, [&](const SimulatedFault* fault, bool on) {
    switchFault(*simulation, *fault, on, controllers);
  });
  const auto felt = [&](const std::string& name) {
    // Near the left edge and below the strip's upper edge: every fault tells here.
    const auto report = simulation->report(0.03, 0.34, name);
    return report ? std::pair(report->x, report->y) : std::pair(-1.0, -1.0);
  };
  for (const std::string& name : controllers) {
    simulation->changePanel("noise", "0", name);
    const auto before = felt(name);
    for (const SimulatedFault& fault : simulatedFaults) {
      SCOPED_TRACE(std::string(fault.trait) + " of " + name);
      auto* const box = find<QCheckBox>(page, ("fault_" + std::string(fault.trait)).c_str());
      box->setChecked(true);
      EXPECT_NE(felt(name), before);
      box->setChecked(false);
      simulation->changePanel("noise", "0", name);  // a new panel has some
      EXPECT_EQ(felt(name), before);
    }
  }
}

}  // namespace
}  // namespace touch::test
