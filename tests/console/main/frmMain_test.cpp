#include "console/main/frmMain.h"

#include "tests/ui/window_desk.h"
#include "ui/text.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;

class MainWindow : public MainWindowDesk {
 protected:
  QTableWidget* controllers() { return find<QTableWidget>("controllerList"); }
  static QWidget* debugger() { return opened("frmRSDebug"); }
  void openDebugger() {
    open();
    QTest::keyClick(window.get(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(find<QLineEdit>("passwordBox"), "kqzm\r");
    journal.clear();
    ASSERT_NE(debugger(), nullptr);
  }
};

using MainWindowWithDebugger = MainWindow;

TEST_F(MainWindow, ShowsWhatWasFoundAndFollowsTheChoice) {
  open();
  EXPECT_EQ(controllers()->rowCount(), 2);
  EXPECT_EQ(text("lblFirmware"), "M0130100");
  EXPECT_EQ(status(), "OK: RS232 DEVICE 1 is ready.");
  EXPECT_EQ(text("lblVersion"), "Version :  3.1.0");
  EXPECT_TRUE(find<QLabel>("lblVersion")->isVisible());
  EXPECT_EQ(window->focusWidget(), controllers()) << "and not the button Exit";
  QTest::keyClick(controllers(), Qt::Key_Down);
  EXPECT_EQ(session.controllerName, "USB DEVICE 2");
  QWidget* const rows = controllers()->viewport();
  QTest::mouseClick(rows, Qt::LeftButton, {}, rows->rect().bottomRight());
  EXPECT_EQ(controllers()->selectedItems().size(), 2) << "a press beside the rows is no choice";
  click("cmdInfo");
  EXPECT_EQ(find<QListWidget>("infoList")->item(2)->text(), "Output Identity : M0130100");

  script.names.clear();
  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_EQ(controllers()->rowCount(), 0);
  for (const char* const button : {"cmdInfo", "cmd3pts"})
    EXPECT_FALSE(find<QPushButton>(button)->isEnabled()) << button;
}

TEST_F(MainWindow, CardsSayWhatEachControllerHasAnswered) {
  open();
  const auto cards = [this] {
    QStringList said;
    for (int row = 0; row < controllers()->rowCount(); ++row)
      said << controllers()->item(row, 1)->data(Qt::AccessibleDescriptionRole).toString();
    return said;
  };
  EXPECT_EQ(cards(), (QStringList{"Serial, firmware M0130100, answers", "USB, not asked yet"}));
  const QImage before = controllers()->viewport()->grab().toImage();
  QTest::keyClick(controllers(), Qt::Key_Down);
  EXPECT_EQ(cards(),
            (QStringList{"Serial, firmware M0130100, answers", "USB, firmware M0130100, answers"}));
  EXPECT_NE(controllers()->viewport()->grab().toImage(), before);
  EXPECT_EQ(text("lblController"), "USB DEVICE 2");
  script.replies.clear();
  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_EQ(cards(), (QStringList{"Serial, does not answer", "USB, does not answer"}));
  EXPECT_EQ(controllers()->item(0, 1)->text(), "RS232 DEVICE 1");
  for (const int width : {60, 200, 900}) {
    controllers()->setFixedWidth(width);
    QApplication::processEvents();
    EXPECT_FALSE(controllers()->grab().isNull()) << width;
  }
}

TEST_F(MainWindow, GreetsOnceAndGoesWhereTheUserWants) {
  const std::pair<const char*, const char*> choices[] = {{"cmdGreetCalibrate", "Calibration"},
                                                         {"cmdGreetProve", "Tests"},
                                                         {"cmdGreetTalk", "Controller"},
                                                         {"cmdGreetNotNow", "Controller"}};
  for (const auto& [button, page] : choices) {
    SCOPED_TRACE(button);
    ownFolder = folder.path() / button;
    open();
    EXPECT_EQ(window->focusWidget(), controllers()) << "it is in nobody's way";
    EXPECT_TRUE(find<QWidget>("frmGreeting")->isVisible());
    find<QPushButton>(button)->click();
    live(0ms);
    auto* const tabs = find<QTabWidget>("tabs");
    EXPECT_EQ(tabs->tabText(tabs->currentIndex()), page);
    EXPECT_EQ(find<QWidget>("passwordBox")->isVisible(), std::string(button) == "cmdGreetTalk");
    EXPECT_EQ(window->findChild<QWidget*>("frmGreeting"), nullptr);
    window.reset();
    open();
    EXPECT_EQ(window->findChild<QWidget*>("frmGreeting"), nullptr) << "never again";
    window.reset();
  }
}

TEST_F(MainWindow, ShowsWhatAControllerSaysAsItStands) {
  for (const std::string said : {"<b>x</b>", "%1%n{}", "&amp;\xFF", "\x1B[2J"}) {
    script.names = {"USB DEVICE " + said};
    script.replies["UT"] = {test::replyOf(said)};
    open();
    EXPECT_EQ(controllers()->item(0, 1)->text(), shownText(script.names[0]));
    EXPECT_EQ(status(), shownText("OK: " + script.names[0] + " is ready.").toStdString());
    for (const QLabel* const label : window->findChildren<QLabel*>())
      EXPECT_TRUE(!label->isVisible() || label->textFormat() == Qt::PlainText) << status();
    window.reset();
  }
}

TEST_F(MainWindow, HearsItsHotKeysBeforeItsControlsDo) {
  open();
  auto* const tabs = find<QTabWidget>("tabs");
  QTest::keyClick(find<QPushButton>("cmdExit"), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(tabs->currentIndex(), 1);
  showPage("Maintenance");
  QTest::keyClick(tabs, Qt::Key_I);
  EXPECT_FALSE(find<QFrame>("advancedFrame")->isHidden());

  auto* const box = find<QLineEdit>("passwordBox");
  QTest::keyClick(tabs, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(QApplication::focusWidget(), box);
  QTest::keyClicks(box, "1234567890x");
  EXPECT_EQ(box->text(), "") << "an eleventh character empties the box";
  QTest::keyClick(box, Qt::Key_Return);
  QTest::keyClick(tabs, Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(journal, (Lines{"message Password Error!!",
                            "input Please Enter Password : [Special Function]"}));
  QTest::keyClick(tabs, Qt::Key_E, Qt::ControlModifier);
  EXPECT_EQ(count("WriteBuffer PL"), 2);
  EXPECT_TRUE(window->isHidden());
}

TEST_F(MainWindow, TakesBadPicturesInItsStride) {
  folder.write("pic01.jpg", "this is no picture");
  folder.write("Zevrik.ico", "nor is this an icon");
  open();
  EXPECT_TRUE(find<QLabel>("lblPicture")->isHidden());
  EXPECT_THAT(startUp.back(), testing::HasSubstr("pic01.jpg cannot be shown"));
  window.reset();
  QImage(5000, 4000, QImage::Format_Mono)
      .save(shownText((folder.path() / "pic01.jpg").string()), "PNG");
  open();
  EXPECT_THAT(startUp.back(),
              testing::HasSubstr("expected at most 16777216 pixels, found 20000000"));
}

TEST_F(MainWindow, ShowsWholePicturesOfEveryKind) {
  for (const char* const format : {"jpeg", "png", "bmp", "ico"}) {
    SCOPED_TRACE(format);
    for (const char* const name : {"pic01.jpg", "Zevrik.ico"}) {
      QImageWriter writer(QString::fromStdString((folder.path() / name).string()), format);
      writer.setProgressiveScanWrite(true);
      QImage picture(64, 32, QImage::Format_RGB32);
      picture.fill(Qt::red);
      ASSERT_TRUE(writer.write(picture));
    }
    open();
    EXPECT_THAT(startUp, testing::Not(testing::Contains(testing::StartsWith("message "))));
    EXPECT_GT(find<QLabel>("lblPicture")->pixmap().toImage().pixelColor(9, 9).red(), 250);
    EXPECT_EQ(window->windowIcon().availableSizes(), QList{QSize(64, 32)});
    window.reset();
    journal.clear();
  }
}

TEST_F(MainWindow, BeginsNothingWhenItIsClosedAtOnce) {
  for (const bool byKey : {false, true}) {
    make();
    byKey ? QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier) : void(window->close());
    QApplication::processEvents();
    window->grab();
    QApplication::processEvents();
    EXPECT_EQ(journal, Lines{}) << "nobody was asked, so nothing is to be locked";
    EXPECT_TRUE(window->isHidden());
    window.reset();
  }
}

TEST_F(MainWindow, ShowsNoWordFromBeforeACalibrationThatIsStored) {
  script.replies["CR"] = {test::acknowledgement};
  script.touches = {std::pair(1000, 0), std::pair(2000, 0), std::pair(3000, 0)};
  for (const char address : {'0', '1', '2', '3', '4', '5', '6', '7'})
    script.replies[std::string("GP0") + address] = {test::replyOf("01234")};
  open();
  click("cmdReadParameters");
  const auto* const word = find<QTableWidget>("parameterTable")->item(1, 1);
  EXPECT_EQ(word->text(), "12");
  click("cmd3pts");
  EXPECT_TRUE(QTest::qWaitForWindowActive(opened("frmCal")));
  live(30s);
  EXPECT_EQ(status(), "OK: Calibration saved.");
  EXPECT_EQ(word->text(), "?");
}

TEST_F(MainWindow, PutsBackACalibrationThatNobodyCanTouch) {
  script.replies["CR"] = {test::acknowledgement};
  script.touches = {std::pair(1000, 0), std::pair(2000, 0), std::pair(3000, 0)};
  for (const char address : {'0', '1', '2', '3', '4', '5', '6', '7'})
    script.replies[std::string("GP0") + address] = {test::replyOf("01234")};
  open();
  showPage("Calibration");
  check("checkAfterCalibrating", true);
  click("cmd3pts");
  EXPECT_EQ(count("WriteBuffer GP"), 8) << "kept before";
  EXPECT_TRUE(QTest::qWaitForWindowActive(opened("frmCal")));
  live(30s);
  ASSERT_NE(opened("frmCheck"), nullptr);
  EXPECT_TRUE(QTest::qWaitForWindowActive(opened("frmCheck")));
  EXPECT_FALSE(find<QTabWidget>("tabs")->isEnabled());
  live(30s);
  EXPECT_EQ(status(), "OK: No touch came for 20 seconds. The calibration from before is in force.");
  EXPECT_TRUE(find<QTabWidget>("tabs")->isEnabled());

  click("cmdCheck");
  EXPECT_TRUE(QTest::qWaitForWindowActive(opened("frmCheck")));
  QTest::keyClick(opened("frmCheck"), Qt::Key_Escape);
  live(1s);
  EXPECT_THAT(status(), HasSubstr("No calibration from before is kept."));
}

TEST_F(MainWindow, ComesBackFromACalibrationThatTheUserGaveUp) {
  for (const char* const command : {"CR", "R"})
    script.replies[command] = {test::acknowledgement};
  open();
  showPage("Calibration");
  click("cmd3pts");
  ASSERT_FALSE(find<QTabWidget>("tabs")->isEnabled());
  EXPECT_TRUE(QTest::qWaitForWindowActive(opened("frmCal")));
  clock.after(3s, [] { QTest::keyClick(opened("frmCal"), Qt::Key_Escape); });
  live(10s);
  EXPECT_TRUE(find<QTabWidget>("tabs")->isEnabled());
  EXPECT_EQ(status(), "Note: The calibration was cancelled; nothing was stored.");
  EXPECT_EQ(window->focusWidget(), find<QPushButton>("cmd3pts"));
  EXPECT_EQ(count("WriteBuffer R"), 1) << "the controller has left its raw calibration";
}

TEST_F(MainWindow, CoversThePanelsMonitor) {
  const auto screens = QGuiApplication::screens();
  if (screens.size() < 2) GTEST_SKIP() << "there is one screen";
  const struct {
    std::optional<int> said;
    int assigned;  // 0: none
    int expected;
  } cases[] = {{{}, 0, 1}, {2, 0, 2}, {2, 1, 1}, {{}, 2, 2}, {3, 0, 1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.said.value_or(0)) + ", " + std::to_string(c.assigned));
    monitor = c.said;
    open();
    if (c.assigned > 0) {
      find<QComboBox>("monitorList")->setCurrentIndex(c.assigned - 1);
      find<QPushButton>("cmdAssignMonitor")->click();
    }
    for (const auto& [button, name] :
         {std::pair("cmd5pts", "frmCal"), std::pair("cmdDraw", "frmDraw"),
          std::pair("cmdMeasure", "frmMeasure")}) {
      find<QPushButton>(button)->click();
      QWidget* const covering = opened(name);
      ASSERT_NE(covering, nullptr) << name;
      EXPECT_EQ(screens.indexOf(covering->screen()) + 1, c.expected) << name;
      // The frame that windows of the tests have, which do not fill the screen, lies outside of it
      // or not.
      const QPoint off = covering->geometry().topLeft() - covering->screen()->geometry().topLeft();
      EXPECT_LE(off.manhattanLength(), 4) << name;
      EXPECT_TRUE(QTest::qWaitForWindowActive(covering)) << name;
      QApplication::processEvents();
      covering->close();
      live(1s);
    }
    window.reset();
  }
}

TEST_F(MainWindowWithDebugger, DrawsOnThePanelsMonitorWhereverTheDebuggerStands) {
  const auto screens = QGuiApplication::screens();
  if (screens.size() < 2) GTEST_SKIP() << "there is one screen";
  openDebugger();
  debugger()->move(screens[1]->geometry().topLeft());
  QApplication::processEvents();
  ASSERT_EQ(debugger()->screen(), screens[1]);
  find<QPushButton>(*debugger(), "Command6")->click();
  EXPECT_EQ(opened("frmRsDraw")->screen(), window->screen());
  window.reset();
}

TEST_F(MainWindowWithDebugger, StaysInUseButForWhatTheDebuggerHas) {
  openDebugger();
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(find<QTabWidget>("tabs")->isEnabled());
  window->activateWindow();
  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_EQ(journal, Lines{});
  const auto refused = testing::HasSubstr("has the port of RS232 DEVICE 1");
  EXPECT_THAT(status(), refused);
  prompt.answerText = "kqzm";
  QTest::keyClick(window.get(), Qt::Key_B, Qt::ControlModifier);
  auto* const pins = find<QDialog>("frmPinDefine");
  EXPECT_THAT(find<QLabel>(*pins, "statusLine")->text().toStdString(), refused);
  pins->close();
  window->activateWindow();
  QTest::keyClick(controllers(), Qt::Key_Down);
  EXPECT_EQ(session.controllerName, "USB DEVICE 2");
  QTest::keyClick(controllers(), Qt::Key_Up);
  EXPECT_EQ(controllers()->currentRow(), 1) << "the choice is put back";
  QWidget* const first = debugger();
  QTest::keyClick(window.get(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(debugger(), first);
  journal.clear();

  auto* const record = find<QPushButton>(*debugger(), "cmdRecord");
  find<QPushButton>(*debugger(), "Command1")->click();
  // A shortcut's click comes after a moment, to a window that is going; its dialog would stand on
  // one that is destroyed.
  bool asked = false;
  QTimer::singleShot(0, [&asked] {
    QWidget* const dialog = QApplication::activeModalWidget();
    asked = dialog != nullptr;
    if (asked) dialog->close();
  });
  emit record->clicked();
  EXPECT_FALSE(asked);
  live(1ms);
  EXPECT_EQ(debugger(), nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(find<QTabWidget>("tabs")->isEnabled());
  EXPECT_EQ(journal, (Lines{"ReopenCOMPort", "CloseController", "delay 1"}));
  EXPECT_THAT(status(), testing::HasSubstr("The driver has its port again."));
}

TEST_F(MainWindowWithDebugger, EndsInOrderFromTheDebugger) {
  for (const bool fromOutside : {false, true}) {
    openDebugger();
    EXPECT_TRUE(port.isOpen());
    fromOutside ? void(window->close()) : find<QPushButton>(*debugger(), "Command2_1")->click();
    EXPECT_FALSE(port.isOpen()) << "the debugger keeps the port";
    live(1ms);
    EXPECT_TRUE(window->isHidden());
    EXPECT_EQ(count("ReopenCOMPort"), 1);
    EXPECT_EQ(count("WriteBuffer PL"), fromOutside ? 4 : 0)
        << "the main window's ways out lock the parameters, the debugger's does not";
    window.reset();
  }
}

}  // namespace
}  // namespace touch::test
