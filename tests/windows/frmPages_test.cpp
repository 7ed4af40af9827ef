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

TEST_F(Pages, SettingsAreShownWithoutSendingAnythingAndActAtOnceOrByConfirm) {
  open("Settings");
  EXPECT_THAT(startUp, testing::Each(testing::Not(ContainsRegex("^(Set|Enable|WriteBuffer SE)"))));
  EXPECT_TRUE(isOn("Check1"));
  EXPECT_FALSE(isOn("Check5")) << "touches are reported";
  EXPECT_EQ(text("lblDoubleClickSpeed"), "500");
  EXPECT_EQ(find<QComboBox>("Combo1")->currentIndex(), -1);
  press("Command17");
  EXPECT_EQ(journal, Lines{});

  const std::tuple<const char*, Qt::Key, Lines> cases[] = {
      {"Check1", Qt::Key_Space, {"EnableUpSound 0"}},
      {"Check4", Qt::Key_Space, {"EnableRightClick 0"}},
      {"Option2_3", Qt::Key_Space, {"SetRotation 3"}},
      {"Option3_2", Qt::Key_Space, {"SetReportMode 3"}},
      {"Check5", Qt::Key_Space, {"WriteBuffer MS", "WriteBuffer MI"}},
      {"Combo1", Qt::Key_Down, {"WriteBuffer SE0"}},
      {"HScroll1", Qt::Key_Right, {}},
      {"Command6",
       Qt::Key_Space,
       {"SetRightClickTime 550", "SetDoubleClickSpeed 6", "SetDoubleClickArea 10",
        "message Update OK"}},
  };
  for (const auto& [control, key, sent] : cases) {
    QTest::keyClick(find<QWidget>(control), key);
    EXPECT_EQ(changes(), sent) << control;
  }
  // What the driver did not take is not shown as if it had.
  EXPECT_TRUE(isOn("Check1"));
  EXPECT_TRUE(isOn("Option2_0"));
}

TEST_F(Pages, MaintenanceListsTheMonitors) {
  open("Maintenance");
  auto* const list = find<QComboBox>("monitorList");
  int number = 0;
  for (const QScreen* const screen : QGuiApplication::screens()) {
    list->setCurrentIndex(number++);
    EXPECT_EQ(list->currentText().toStdString(),
              std::to_string(number) + ": " + screen->name().toStdString() + ", " +
                  std::to_string(screen->size().width()) + " x " +
                  std::to_string(screen->size().height()));
    find<QPushButton>("cmdAssignMonitor")->click();
    EXPECT_EQ(count("AskToSetMultiMonitor " + std::to_string(number)), 1);
  }
}

TEST_F(Pages, MaintenanceRestoresAndOffersTheWayBack) {
  open("Maintenance");
  press("Command3");
  EXPECT_FALSE(isPossible("cmdUndoDefaults"));
  press("Command2");
  EXPECT_TRUE(isPossible("cmdUndoDefaults"));
  EXPECT_EQ(changes(), (Lines{"WriteBuffer R", "message Controller Reset OK", "WriteBuffer RD",
                              "message Controller Restore OK"}));
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
  for (const char wire : {'0', '1', '2', '3'})
    script.replies[std::string("GP8") + static_cast<char>(wire + 1)] = {
        replyOf(std::string("00") + wire + '0' + wire)};
  open("Maintenance");
  prompt.answerText = "kqzm";
  QTest::keyClick(window.get(), Qt::Key_B, Qt::ControlModifier);
  const std::tuple<int, const char*, bool> channels[] = {
      {3, "channel", false}, {200, "Value must < 128 !!", false}, {7, "", true}};
  for (const auto& [channel, problem, possible] : channels) {
    find<QSpinBox>("channel_1")->setValue(channel);
    EXPECT_THAT(text("lblPinProblems"), testing::HasSubstr(problem));
    EXPECT_EQ(isPossible("cmdUpdatePins"), possible) << channel;
  }
}

TEST_F(Pages, TheDoctorLooksWhenItIsFirstSeenAndOnRefreshAndSavesItsFile) {
  open("Doctor");
  live(0ms);
  EXPECT_EQ(text("lblDoctorSummary") + ".", status());
  showPage("Tests");
  showPage("Doctor");
  live(0ms);
  EXPECT_EQ(count("OpenController USB DEVICE 2"), 1) << "what was found stays";
  answerFileDialog("d.zip");
  press("cmdSaveDiagnostics");
  EXPECT_THAT(folder.read("d.zip"), StartsWith("PK"));

  script.names.clear();
  press("cmdDoctorRefresh");
  EXPECT_THAT(find<QListWidget>("findingsList")->item(0)->text().toStdString(),
              ContainsRegex("^Problem: The driver knows of no controller.\n(.*\n)?Next: "));
  EXPECT_EQ(session.controllerName, "RS232 DEVICE 1") << "the current controller stays";
}

TEST_F(Pages, TestsAreOpenedOneAtATimeAndEndedWithTheProgram) {
  open("Tests");
  EXPECT_EQ(window->findChild<QCheckBox*>("fault_bow"), nullptr) << "only simulated panels have";
  press("cmdLinearity");
  ASSERT_NE(opened("frmLinearity"), nullptr);
  EXPECT_FALSE(isPossible("cmdDraw"));
  QTest::keyClick(opened("frmLinearity"), Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(opened("frmLinearity"), nullptr);
  press("cmdDraw");
  EXPECT_NE(opened("frmDraw"), nullptr);
  window->close();
  live(0ms);
  EXPECT_EQ(opened("frmDraw"), nullptr);
  EXPECT_TRUE(window->isHidden());
}

}  // namespace
}  // namespace touch::test
