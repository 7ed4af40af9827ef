#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTableWidget>

#include "core/hex.h"
#include "tests/windows/main_window_desk.h"

namespace touch {
namespace {

using test::acknowledgement;
using test::Lines;
using test::replyOf;

class Pages : public test::MainWindowDesk {
 protected:
  Pages() {
    script.results["GetReportMode"] = 1;
    script.results["GetRightClickTime"] = 550;
    script.results["GetDoubleClickSpeed"] = 5;
    script.results["GetDoubleClickArea"] = 10;
    script.results["GetRotation"] = 0;
  }
  /// The calls of the journal that change something, without the readings that follow them.
  Lines changes() {
    Lines lines;
    std::copy_if(journal.begin(), journal.end(), std::back_inserter(lines), [](const auto& line) {
      return line.starts_with("Set") || line.starts_with("Enable") || line.starts_with("Write") ||
             line.starts_with("message");
    });
    journal.clear();
    return lines;
  }
  void press(const char* button) {
    QTest::keyClick(find<QPushButton>(*window, button), Qt::Key_Space);
  }
};

TEST_F(Pages, AreTurnedByKeyWhereverTheFocusIs) {
  open();
  find<QPushButton>(*window, "cmdExit")->setFocus();
  const auto* const tabs = find<QTabWidget>(*window, "tabs");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(tabs->currentIndex(), 1);
  for (int presses = 0; presses < 2; ++presses)
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab,
                    Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(tabs->currentIndex(), tabs->count() - 1);
}

TEST_F(Pages, SettingsAreFilledWithoutSendingAnything) {
  open();
  EXPECT_EQ(std::count_if(startUp.begin(), startUp.end(),
                          [](const auto& line) {
                            return line.starts_with("Set") || line.starts_with("Enable") ||
                                   line.starts_with("WriteBuffer SE");
                          }),
            0);
  showPage("Settings");
  EXPECT_TRUE(find<QCheckBox>(*window, "Check1")->isChecked());
  EXPECT_FALSE(find<QCheckBox>(*window, "Check5")->isChecked()) << "touches are reported";
  EXPECT_TRUE(find<QRadioButton>(*window, "Option2_0")->isChecked());
  EXPECT_TRUE(find<QRadioButton>(*window, "Option3_0")->isChecked());
  EXPECT_EQ(find<QLabel>(*window, "lblDoubleClickSpeed")->text(), "500");
  EXPECT_EQ(find<QLabel>(*window, "lblDoubleClickArea")->text(), "10");
  EXPECT_EQ(find<QLabel>(*window, "lblRightClickTime")->text(), "550");
  EXPECT_EQ(find<QComboBox>(*window, "Combo1")->currentIndex(), -1);
  EXPECT_EQ(find<QComboBox>(*window, "Combo1")->count(), 5);
}

TEST_F(Pages, SettingsActAtOnceByKeyboard) {
  open();
  showPage("Settings");
  const struct {
    const char* control;
    Qt::Key key;
    Lines sent;
    const char* status;
  } cases[] = {
      {"Check1",
       Qt::Key_Space,
       {"EnableUpSound 0"},
       "Up touch sound: off was asked, the driver reports on"},
      {"Check4",
       Qt::Key_Space,
       {"EnableRightClick 0"},
       "Right button: off was asked, the driver reports on"},
      {"Option2_3",
       Qt::Key_Space,
       {"SetRotation 3"},
       "Rotation: 270 was asked, the driver reports 0"},
      {"Option3_2",
       Qt::Key_Space,
       {"SetReportMode 3"},
       "Touch mode: button was asked, the driver reports desktop"},
      {"Check5",
       Qt::Key_Space,
       {"WriteBuffer MS", "WriteBuffer MI"},
       "Touch panel: off was asked, the driver reports on"},
      {"Combo1", Qt::Key_Down, {"WriteBuffer SE0"}, "Touch sensitivity: low"},
      {"Combo1", Qt::Key_Down, {"WriteBuffer SE1"}, "Touch sensitivity: normal"},
  };
  for (const auto& [control, key, sent, said] : cases) {
    QTest::keyClick(find<QWidget>(*window, control), key);
    EXPECT_EQ(changes(), sent) << control;
    EXPECT_EQ(status().toStdString(), said);
  }
  // What the driver did not take is not shown as if it had.
  EXPECT_TRUE(find<QCheckBox>(*window, "Check1")->isChecked());
  EXPECT_TRUE(find<QRadioButton>(*window, "Option2_0")->isChecked());
}

TEST_F(Pages, TimingIsSentByConfirmAloneAndUntouchedBarsKeepTheirValue) {
  open();
  showPage("Settings");
  QTest::keyClick(find<QScrollBar>(*window, "HScroll1"), Qt::Key_Right);
  EXPECT_EQ(find<QLabel>(*window, "lblDoubleClickSpeed")->text(), "600");
  EXPECT_EQ(changes(), Lines{});
  press("Command6");
  EXPECT_EQ(changes(), (Lines{"SetRightClickTime 550", "SetDoubleClickSpeed 6",
                              "SetDoubleClickArea 10", "message Update OK"}));
}

TEST_F(Pages, TheCursorNoteIsShownAsItStands) {
  folder.write("cursoroff.txt", "first\n second ");
  open();
  showPage("Settings");
  press("Command17");
  auto* const note = find<QPlainTextEdit>(*window, "cursorHelp");
  EXPECT_TRUE(note->isVisible());
  EXPECT_EQ(note->toPlainText(), "\nfirst\n second \n");
  EXPECT_EQ(journal, Lines{}) << "nothing is sent";
}

TEST_F(Pages, MaintenanceListsTheMonitors) {
  open();
  const QScreen& screen = *QGuiApplication::primaryScreen();
  EXPECT_EQ(find<QComboBox>(*window, "monitorList")->itemText(0).toStdString(),
            "1: " + screen.name().toStdString() + ", " + std::to_string(screen.size().width()) +
                " x " + std::to_string(screen.size().height()));
}

TEST_F(Pages, MaintenanceRestoresAndOffersTheWayBack) {
  for (int address = 0; address < 8; ++address) {
    script.replies["GP" + hexByte(static_cast<std::uint8_t>(address))] = {replyOf("01234")};
  }
  script.replies["RD"] = {acknowledgement};
  script.replies["R"] = {acknowledgement};
  open();
  showPage("Maintenance");
  EXPECT_FALSE(find<QPushButton>(*window, "cmdUndoDefaults")->isEnabled());
  press("Command3");
  EXPECT_EQ(changes(), (Lines{"WriteBuffer R", "message Controller Reset OK"}));
  press("Command2");
  Lines sent = changes();
  std::erase_if(sent, [](const auto& line) { return line.starts_with("WriteBuffer GP"); });
  EXPECT_EQ(sent, (Lines{"WriteBuffer RD", "message Controller Restore OK"}));
  EXPECT_TRUE(find<QPushButton>(*window, "cmdUndoDefaults")->isEnabled());
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "backup"));
}

TEST_F(Pages, ParametersAreEditedInTheTableAndWrittenWhereChanged) {
  for (int address = 0; address < 8; ++address) {
    script.replies["GP" + hexByte(static_cast<std::uint8_t>(address))] = {replyOf("01234")};
  }
  open();
  showPage("Parameters");
  press("cmdReadParameters");
  auto* const table = find<QTableWidget>(*window, "parameterTable");
  EXPECT_EQ(table->item(3, 3)->text(), "12");
  QTest::mouseClick(find<QRadioButton>(*window, "optionDecimal"), Qt::LeftButton);
  EXPECT_EQ(table->item(3, 3)->text(), "18");
  table->item(3, 3)->setText("256");
  EXPECT_EQ(table->item(3, 3)->text(), "18") << "a byte ends at 255";
  EXPECT_FALSE(status().isEmpty());
  table->item(3, 3)->setText("255");
  EXPECT_EQ(table->item(3, 5)->text(), "changed");

  script.replies["SP03FF34"] = {acknowledgement};
  script.replies["GP03"] = {replyOf("01234"), replyOf("0FF34")};
  journal.clear();
  press("cmdWriteParameters");
  const Lines sent = changes();
  EXPECT_EQ(std::count_if(sent.begin(), sent.end(),
                          [](const auto& line) { return line.starts_with("WriteBuffer SP"); }),
            1);
  EXPECT_EQ(sent.back().substr(0, 14), "WriteBuffer GP") << "read again at the end";
  EXPECT_NE(std::find(sent.begin(), sent.end(), "message Write ok!!"), sent.end());
}

TEST_F(Pages, PinsUsedTwiceAreMarkedAtOnceAndNotWritten) {
  script.replies["GP80"] = {replyOf("00004")};
  for (int wire = 0; wire < 4; ++wire) {
    const std::string pin = '0' + std::to_string(wire);
    script.replies["GP8" + std::to_string(wire + 1)] = {replyOf('0' + pin + pin)};
  }
  open();
  prompt.answerText = "kqzm";
  QTest::keyClick(window.get(), Qt::Key_B, Qt::ControlModifier);
  auto* const pins = find<QWidget>(*window, "frmPinDefine");
  ASSERT_TRUE(pins->isVisible());
  EXPECT_TRUE(find<QWidget>(*pins, "wire_3")->isVisible());
  EXPECT_FALSE(find<QWidget>(*pins, "wire_4")->isVisible());
  auto* const update = find<QPushButton>(*pins, "cmdUpdatePins");
  EXPECT_TRUE(update->isEnabled());
  find<QSpinBox>(*pins, "channel_1")->setValue(3);
  EXPECT_FALSE(update->isEnabled());
  EXPECT_TRUE(find<QLabel>(*pins, "lblPinProblems")->text().contains("channel"));
  find<QSpinBox>(*pins, "channel_1")->setValue(200);
  EXPECT_TRUE(find<QLabel>(*pins, "lblPinProblems")->text().contains("Value must < 128 !!"));
  find<QSpinBox>(*pins, "channel_1")->setValue(7);
  EXPECT_TRUE(update->isEnabled());
}

}  // namespace
}  // namespace touch
