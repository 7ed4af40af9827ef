#include "support/text/hex.h"
#include "tests/doubles/small_disk.h"
#include "tests/ui/window_desk.h"
#include "ui/controls/finger_style.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;
using testing::ContainsRegex;
using testing::EndsWith;
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
  EXPECT_EQ(status(), "Note: No instructions found (\"cursoroff.txt\" is missing).");
  folder.write("cursoroff.txt", " \n");
  press("Command17");
  EXPECT_EQ(status(), "Note: No instructions found (\"cursoroff.txt\" is empty).");
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
  // All of an option can be pressed, its picture too. The page has made room for the note before.
  QApplication::processEvents();
  QTest::mouseClick(find<QWidget>("Option2_1"), Qt::LeftButton, {}, {12, 12});
  EXPECT_EQ(changes(), Lines{"SetRotation 1"});
  QTest::mouseClick(find<QWidget>("Option2_3"), Qt::LeftButton, {}, {12, 12});
  changes();
  // This driver keeps nothing; the controls show what was sent until the settings are read again.
  EXPECT_FALSE(isOn("Check1"));
  EXPECT_TRUE(isOn("Option2_3"));
  EXPECT_TRUE(isOn("Check5"));
  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_TRUE(isOn("Check1"));
  EXPECT_TRUE(isOn("Option2_0"));
  EXPECT_FALSE(isOn("Check5"));
}

TEST_F(Pages, SettingsAreSeenWithoutScrollingInAWindowOfTheUsualSize) {
  open("Settings");
  ASSERT_EQ(window->size(), QSize(760, 640));
  const auto* const area = find<QTabWidget>("tabs")->currentWidget()->findChild<QScrollArea*>();
  EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
  for (const char* const control : {"Check1", "Option2_0", "Option3_0", "Combo1", "HScroll1"})
    EXPECT_GE(find<QWidget>(control)->height(), fingerSize()) << control;
}

TEST_F(Pages, TheWheelTurnsWhatHasTheFocusAlone) {
  open("Settings");
  for (const char* const name : {"HScroll1", "Combo1"}) {
    auto* const control = find<QWidget>(name);
    const auto turned = [&] {
      const QPointF place = control->rect().center();
      QWheelEvent turn(place, control->mapToGlobal(place), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                       false);
      turn.ignore();
      QApplication::sendEvent(control, &turn);
      return text("lblDoubleClickSpeed") != "500" || count("WriteBuffer SE") > 0;
    };
    find<QWidget>("Check1")->setFocus();
    EXPECT_FALSE(turned()) << name;
    control->setFocus();
    EXPECT_TRUE(turned()) << name;
    find<QScrollBar>("HScroll1")->setValue(5);
    journal.clear();
  }
}

TEST_F(Pages, BarsSayThatTheyAreNotSent) {
  open("Settings");
  const QLabel& mark = *find<QLabel>("unsentSpeed");
  EXPECT_TRUE(mark.isHidden());
  QTest::keyClick(find<QWidget>("HScroll1"), Qt::Key_Right);
  EXPECT_FALSE(mark.isHidden());
  press("Command6");
  EXPECT_TRUE(mark.isHidden());
}

TEST_F(Pages, TabEntersOptionsAtTheChosenOne) {
  script.results["GetRotation"] = 3;
  open("Settings");
  find<QWidget>("Check5")->setFocus();
  QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(window->focusWidget(), find<QWidget>("Option2_3"));
  QTest::keyClick(window->focusWidget(), Qt::Key_Left);
  EXPECT_EQ(changes(), Lines{"SetRotation 0"}) << "as they stand on the screen";
  QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(window->focusWidget(), find<QWidget>("Option3_0"));
}

TEST_F(Pages, HaveTheirMainButtonsAtHand) {
  MainWindowDesk::open();
  window->resize(QGuiApplication::primaryScreen()->size().boundedTo({800, 480}));
  const std::pair<const char*, const char*> buttons[] = {{"Controller", "cmdRefresh"},
                                                         {"Settings", "Command6"},
                                                         {"Calibration", "cmd2pts"},
                                                         {"Calibration", "cmd5pts"},
                                                         {"Maintenance", "Command2"},
                                                         {"Parameters", "cmdReadParameters"},
                                                         {"Parameters", "cmdWriteParameters"},
                                                         {"Tests", "cmdDraw"},
                                                         {"Tests", "cmdMeasure"},
                                                         {"Doctor", "cmdDoctorRefresh"}};
  for (const auto& [page, name] : buttons) {
    showPage(page);
    QApplication::processEvents();
    const QWidget& button = *find<QWidget>(name);
    EXPECT_EQ(button.visibleRegion().boundingRect(), button.rect()) << name;
  }
  window->resize(1, 1);
  showPage("Maintenance");
  QTest::keyClick(window.get(), Qt::Key_I);
  live(1ms);
  const QWidget& frame = *find<QWidget>("advancedFrame");
  EXPECT_GT(frame.visibleRegion().boundingRect().height(),
            std::min(frame.height(), frame.parentWidget()->parentWidget()->height()) - 2)
      << "what opened is seen";
  for (int page = 0; page < find<QTabWidget>("tabs")->count(); ++page) {
    find<QTabWidget>("tabs")->setCurrentIndex(page);
    QApplication::processEvents();
    const auto* const area = find<QTabWidget>("tabs")->currentWidget()->findChild<QScrollArea*>();
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << "page " << page << " is cut off";
  }
  prompt.answerText = "kqzm";
  QTest::keyClick(window.get(), Qt::Key_B, Qt::ControlModifier);
  auto* const pins = find<QDialog>("frmPinDefine");
  pins->resize(1, 1);
  for (const char* const type : {"optionFourWire", "optionFiveWire"}) {
    find<QRadioButton>(*pins, type)->click();
    QApplication::processEvents();
    EXPECT_EQ(pins->findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0) << type;
    EXPECT_LE(pins->width(), QGuiApplication::primaryScreen()->size().width()) << type;
  }
}

TEST_F(Pages, GiveTheFirstFocusToWhatIsHarmless) {
  MainWindowDesk::open();
  auto* const tabs = find<QTabWidget>("tabs");
  for (const int before : {2, 3}) {
    for (const bool again : {false, true}) {
      tabs->setCurrentIndex(before);
      QTest::keyClick(window->focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
      for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return})
        QTest::keyClick(window->focusWidget(), key);
      EXPECT_EQ(changes(), Lines{}) << before << again;
      find<QWidget>(before == 2 ? "Command2" : "cmdWriteParameters")->setFocus();
    }
  }
}

TEST_F(Pages, KeepTheFocusAfterEachAction) {
  MainWindowDesk::open();
  const std::tuple<const char*, const char*, const char*> actions[] = {
      {"Controller", "cmdRefresh", "cmdRefresh"},
      {"Controller", "cmdSearch", "controllerList"},
      {"Settings", "Check5", "Check5"},
      {"Maintenance", "Command2", "Command2"},
      {"Maintenance", "cmdUndoDefaults", "cmdAdvanced"},
      {"Parameters", "cmdReadParameters", "cmdReadParameters"},
      {"Doctor", "cmdDoctorRefresh", "cmdDoctorRefresh"}};
  prompt.onMessage = [this] {
    EXPECT_TRUE(find<QWidget>("cmdCancelSearch")->isHidden()) << "nothing is left to stop";
  };
  for (const auto& [page, button, then] : actions) {
    showPage(page);
    find<QWidget>(button)->setFocus();
    QTest::keyClick(find<QWidget>(button), Qt::Key_Space);
    EXPECT_EQ(window->focusWidget(), find<QWidget>(then)) << button;
  }
}

TEST_F(Pages, EachHasItsOwnStatus) {
  open("Parameters");
  press("cmdSaveParameters");
  EXPECT_THAT(status(), StartsWith("Error: Word 00, ")) << "no name is asked for nothing";
  press("cmdReadParameters");
  answerFileDialog("p.vrq");
  press("cmdSaveParameters");
  const std::string saved = "OK: Saved " + (folder.path() / "p.vrq").string();
  EXPECT_EQ(status(), saved);
  showPage("Settings");
  EXPECT_EQ(status(), "OK: RS232 DEVICE 1 is ready.");
  QTest::keyClick(find<QWidget>("Check5"), Qt::Key_Space);
  EXPECT_EQ(status(), "OK: Touch panel: off. Press Space to enable it again.");
  showPage("Parameters");
  EXPECT_EQ(status(), saved);
  EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_EQ(status(), "OK: RS232 DEVICE 1 is ready.") << "all else was said of another state";
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

TEST_F(Pages, MaintenanceSaysThatTheTraceHasBrokenOff) {
  open("Maintenance");
  check("checkTrace", true);
  EXPECT_THAT(status(), StartsWith("OK: Tracing to "));
  {
    const SmallDisk full(1);
    trace.write("\"call\":\"A\"");
  }
  press("Command3");
  EXPECT_FALSE(isOn("checkTrace"));
  EXPECT_THAT(status(), StartsWith("Error: "));
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
  EXPECT_EQ(byte->text(), "256") << "what is wrong stays until it is mended";
  EXPECT_EQ(table->item(3, 5)->text(), "invalid");
  changes();
  for (const char* const button : {"cmdWriteParameters", "cmdSaveParameters"}) {
    press(button);
    EXPECT_EQ(status(),
              "Error: Word 03, high byte: expected a number from 0 to 255, found \"256\"");
  }
  EXPECT_EQ(changes(), Lines{});
  const auto look = [table](int row, int column) {
    return table->viewport()->grab(table->visualItemRect(table->item(row, column))).toImage();
  };
  table->setCurrentCell(0, 0);
  byte->setText("255");
  EXPECT_EQ(table->item(3, 5)->text(), "changed");
  for (const int column : {1, 2, 3, 4})
    EXPECT_NE(look(3, column), look(2, column)) << "column " << column << " of a changed word";
  EXPECT_NE(look(3, 1), look(3, 2)) << "the old value of the byte that differs";

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

  auto* const pins = find<QDialog>("frmPinDefine");
  auto* const channel = find<QSpinBox>("channel_1");
  const auto typed = [&](Qt::Key key) {
    QTest::keyClick(channel, key);
    return channel->text();
  };
  EXPECT_EQ(text("lblPinController"), "RS232 DEVICE 1");
  channel->selectAll();
  EXPECT_EQ(typed(Qt::Key_5), "5");
  EXPECT_EQ(typed(Qt::Key_Return), "5") << "Enter takes what was typed";
  EXPECT_EQ(typed(Qt::Key_X), "5");
  EXPECT_EQ(QToolTip::text(), "A whole number from 0 to 255");
  for (const bool loses : {false, true}) {
    prompt.answerYes = loses;
    QTest::keyClick(find<QPushButton>("cmdReadPins"), Qt::Key_Space);
    EXPECT_EQ(channel->text(), loses ? "1" : "5");
    EXPECT_EQ(find<QLabel>(*pins, "statusLine")->text(),
              loses ? "OK: The pin definition is read."
                    : "Note: Nothing was read; your changes are kept.");
  }
  clock.after(50ms, [] { throw std::runtime_error("beyond mending"); });
  EXPECT_THROW(find<QPushButton>("cmdReadPins")->click(), std::runtime_error);
  EXPECT_TRUE(pins->isEnabled());
  EXPECT_EQ(find<QLabel>(*pins, "statusLine")->text(), "");
  QApplication::processEvents();
  const QRect before = find<QWidget>("wire_1")->geometry();
  channel->setValue(200);
  QApplication::processEvents();
  EXPECT_EQ(find<QWidget>("wire_1")->geometry(), before) << "a mark moves nothing";
}

TEST_F(Pages, TheDoctorLooksWhenItIsSeenAsksOnRefreshAndSavesItsFile) {
  open("Doctor");
  live(0ms);
  EXPECT_EQ(journal, Lines{"delay 0"}) << "nobody is asked";
  EXPECT_EQ(text("lblDoctorSummary"), "Controllers not asked yet");
  EXPECT_THAT(find<QListWidget>("findingsList")->item(0)->text().toStdString(),
              StartsWith("Note: The controllers are not asked yet."));
  press("cmdDoctorRefresh");
  EXPECT_THAT(status(), EndsWith(text("lblDoctorSummary") + "."));
  showPage("Tests");
  showPage("Doctor");
  live(0ms);
  EXPECT_EQ(count("OpenController USB DEVICE 2"), 1) << "what was found stays";
  auto& findings = *find<QListWidget>("findingsList");
  findings.setFixedSize(200, 44);
  QApplication::processEvents();
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp}) {
    const bool down = key == Qt::Key_Down || key == Qt::Key_PageDown;
    const int end = down ? findings.count() - 1 : 0;
    for (int presses = 0; presses < 1000 && findings.currentRow() != end; ++presses) {
      const int row = findings.currentRow();
      const QRect place = findings.visualItemRect(findings.currentItem());
      QTest::keyClick(&findings, key);
      if (findings.currentRow() == row) continue;
      EXPECT_TRUE(down ? place.bottom() < findings.viewport()->height() : place.top() >= 0)
          << "finding " << row << " was left before all of it was seen";
    }
    EXPECT_EQ(findings.currentRow(), end) << QKeySequence(key).toString().toStdString();
  }
  answerFileDialog("d.zip");
  press("cmdSaveDiagnostics");
  EXPECT_THAT(folder.read("d.zip"), StartsWith("PK"));

  script.names.clear();
  press("cmdDoctorRefresh");
  EXPECT_THAT(find<QListWidget>("findingsList")->item(0)->text().toStdString(),
              ContainsRegex("^Problem: The driver knows of no controller.\n(.*\n)?Next: "));
  EXPECT_EQ(session.controllerName, "RS232 DEVICE 1") << "the current controller stays";
}

TEST_F(Pages, TheDoctorPutsProblemsFirstOffersWhatMendsThemAndGroupsTheRest) {
  open("Doctor");
  live(0ms);
  script.replies.clear();
  press("cmdDoctorRefresh");
  auto& findings = *find<QListWidget>("findingsList");
  QStringList headings;
  bool inOrder = false;
  for (int row = 0; row < findings.count(); ++row) {
    const QListWidgetItem& item = *findings.item(row);
    EXPECT_TRUE(!inOrder || item.text().startsWith("In order: ")) << row;
    inOrder = inOrder || item.text().startsWith("In order: ");
    const QString heading = item.data(Qt::AccessibleDescriptionRole).toString();
    if (!heading.isEmpty()) headings << heading;
  }
  EXPECT_TRUE(headings.contains("Driver"));
  EXPECT_TRUE(headings.contains("Working folder"));
  EXPECT_EQ(headings.removeDuplicates(), 0) << "a group has one heading";

  const auto mends = [&] { return findings.findChildren<QToolButton*>("cmdMend"); };
  ASSERT_EQ(mends().size(), 2);
  EXPECT_EQ(mends().front()->text(), "Search COM ports") << "the serial one";
  EXPECT_EQ(mends().back()->text(), "Ask again") << "the other one";
  for (const QToolButton* const mend : mends()) {
    EXPECT_GE(mend->height(), fingerSize());
    EXPECT_GT(mend->visibleRegion().boundingRect().width(), fingerSize());
  }
  journal.clear();
  mends().back()->click();
  live(0ms);
  EXPECT_GE(count("OpenController USB DEVICE 2"), 1);
  ASSERT_EQ(mends().size(), 2) << "of the new findings";
  journal.clear();
  mends().front()->click();
  live(0ms);
  EXPECT_GE(count("message "), 1) << "what the search found";
}

TEST_F(Pages, TestsAreOpenedOneAtATimeAndEndedWithTheProgram) {
  open("Tests");
  EXPECT_EQ(window->findChild<QCheckBox*>("fault_bow"), nullptr) << "only simulated panels have";
  press("cmdMeasure");
  ASSERT_NE(opened("frmMeasure"), nullptr);
  EXPECT_FALSE(isPossible("cmdDraw"));
  QTest::keyClick(opened("frmMeasure"), Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(opened("frmMeasure"), nullptr);
  press("cmdDraw");
  EXPECT_NE(opened("frmDraw"), nullptr);
  window->close();
  live(0ms);
  EXPECT_EQ(opened("frmDraw"), nullptr);
  EXPECT_TRUE(window->isHidden());
}

}  // namespace
}  // namespace touch::test
