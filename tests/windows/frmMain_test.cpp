#include "console/frmMain.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

#include "tests/windows/main_window_desk.h"
#include "ui/text.h"

namespace touch {
namespace {

using test::Lines;
using namespace std::chrono_literals;

class MainWindow : public test::MainWindowDesk {};

TEST_F(MainWindow, ShowsWhatWasFoundAndFollowsTheChoice) {
  open();
  auto* const list = find<QTableWidget>(*window, "controllerList");
  EXPECT_EQ(list->horizontalHeaderItem(0)->text(), " No");
  EXPECT_EQ(list->horizontalHeaderItem(1)->text(), " Device");
  EXPECT_EQ(list->rowCount(), 2);
  EXPECT_EQ(list->currentRow(), 0);
  EXPECT_EQ(find<QLabel>(*window, "lblVersion")->text(), "Version :  3.1.0");
  EXPECT_EQ(find<QLabel>(*window, "lblFirmware")->text(), "M0130100");
  EXPECT_EQ(status(), "RS232 DEVICE 1 is ready.");
  EXPECT_EQ(window->focusWidget(), list) << "and not the button Exit";

  QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(session.controllerName, "USB DEVICE 2");
  QTest::mouseClick(find<QPushButton>(*window, "cmdInfo"), Qt::LeftButton);
  auto* const info = find<QListWidget>(*window, "infoList");
  ASSERT_EQ(info->count(), 4);
  EXPECT_EQ(info->item(2)->text(), "Output Identity : M0130100");
}

TEST_F(MainWindow, ShowsWhatAControllerSaysAsItStands) {
  for (const std::string said : {"<b>x</b>", "%1%n{}", "&amp;\xFF", "\x1B[2J"}) {
    const std::string name = "USB DEVICE " + said;
    script.names = {name};
    script.replies["UT"] = {test::replyOf(said)};
    open();
    EXPECT_EQ(find<QTableWidget>(*window, "controllerList")->item(0, 1)->text(), shownText(name));
    EXPECT_EQ(status(), shownText(name) + " is ready.");
    for (const QLabel* const label : window->findChildren<QLabel*>()) {
      if (label->isVisible()) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
      }
    }
    window.reset();
  }
}

TEST_F(MainWindow, HearsItsHotKeysBeforeItsControlsDo) {
  open();
  auto* const advanced = find<QFrame>(*window, "advancedFrame");
  auto* const tabs = find<QTabWidget>(*window, "tabs");
  auto* const list = find<QTableWidget>(*window, "controllerList");
  QTest::keyClick(list, Qt::Key_I);
  EXPECT_TRUE(advanced->isHidden()) << "only the page Maintenance has an advanced frame";
  showPage("Maintenance");
  QTest::keyClick(tabs, Qt::Key_I, Qt::ShiftModifier);
  EXPECT_TRUE(advanced->isHidden());
  QTest::keyClick(tabs, Qt::Key_I);
  EXPECT_FALSE(advanced->isHidden());

  auto* const box = find<QLineEdit>(*window, "passwordBox");
  QTest::keyClick(tabs, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(QApplication::focusWidget(), box);
  QTest::keyClicks(box, "1234567890");
  EXPECT_EQ(box->text(), "1234567890");
  QTest::keyClick(box, 'x');
  EXPECT_EQ(box->text(), "") << "an eleventh character empties the box";
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_EQ(journal, Lines{"message Password Error!!"});
  EXPECT_TRUE(find<QFrame>(*window, "passwordFrame")->isHidden());

  journal.clear();
  QTest::keyClick(tabs, Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(journal, Lines{"input Please Enter Password : [Special Function]"});
  journal.clear();
  QTest::keyClick(tabs, Qt::Key_E, Qt::ControlModifier);
  EXPECT_EQ(std::count(journal.begin(), journal.end(), "WriteBuffer PL"), 2);
  EXPECT_TRUE(window->isHidden());
}

TEST_F(MainWindow, TakesABadPictureAndNoControllerInItsStride) {
  folder.write("pic01.jpg", "this is no picture");
  folder.write("Zevrik.ico", "nor is this an icon");
  open();
  EXPECT_TRUE(find<QLabel>(*window, "lblPicture")->isHidden());
  ASSERT_TRUE(startUp.back().starts_with("message The picture ")) << startUp.back();
  EXPECT_NE(startUp.back().find("pic01.jpg cannot be shown"), std::string::npos);
  EXPECT_TRUE(find<QLabel>(*window, "lblVersion")->isVisible());

  script.names.clear();
  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_EQ(find<QTableWidget>(*window, "controllerList")->rowCount(), 0);
  EXPECT_FALSE(find<QPushButton>(*window, "cmdInfo")->isEnabled());
  EXPECT_FALSE(find<QPushButton>(*window, "cmd3pts")->isEnabled());
  EXPECT_NE(std::find(journal.begin(), journal.end(), "message No device was found"),
            journal.end());
}

TEST_F(MainWindow, BeginsNothingWhenItIsClosedAtOnce) {
  window = std::make_unique<frmMain>(access(), prompt, port, trace,
                                     TestParts{switches, files, linearity},
                                     Startup{folder.path(), "/lib/driver.so", {}, QSize(800, 480)});
  window->open();
  window->close();
  QApplication::processEvents();
  window->grab();
  QApplication::processEvents();
  EXPECT_EQ(journal, Lines{}) << "nobody was asked, so nothing is to be locked";
}

TEST_F(MainWindow, ComesBackFromACalibrationThatTheUserGaveUp) {
  script.replies["CR"] = {test::acknowledgement};
  script.replies["R"] = {test::acknowledgement};
  open();
  QTest::mouseClick(find<QPushButton>(*window, "cmd3pts"), Qt::LeftButton);
  ASSERT_FALSE(find<QTabWidget>(*window, "tabs")->isEnabled());
  clock.after(3s, [] {
    for (QWidget* const top : QApplication::topLevelWidgets()) {
      if (top->objectName() == "frmCal") QTest::keyClick(top, Qt::Key_Escape);
    }
  });
  live(10s);
  EXPECT_TRUE(find<QTabWidget>(*window, "tabs")->isEnabled());
  EXPECT_EQ(status(), "The calibration was cancelled; nothing was stored.");
}

TEST_F(MainWindow, FitsSmallScreensAndNamesItsControls) {
  open();
  window->resize(400, 240);
  QApplication::processEvents();
  EXPECT_LE(window->minimumSizeHint().width(), 400);
  EXPECT_LE(window->minimumSizeHint().height(), 240);
  for (const auto* const button : window->findChildren<QPushButton*>()) {
    EXPECT_FALSE(button->objectName().isEmpty()) << button->text().toStdString();
    EXPECT_TRUE(button->text().contains('&')) << button->text().toStdString();
  }
}

}  // namespace
}  // namespace touch
