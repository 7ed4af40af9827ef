#include "serial/frmRSDebug.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTimer>

#include "tests/support/small_disk.h"
#include "tests/windows/main_window_desk.h"
#include "tests/windows/serial_desk.h"

namespace touch {
namespace {

using namespace std::chrono_literals;
using test::Bytes;
using test::Lines;
using test::replyOf;

class DebuggerWindow : public test::SerialDesk {
 protected:
  void choose(const char* set, int entry) {
    QTest::mouseClick(find<QRadioButton>(*window, set), Qt::LeftButton, {}, {10, 15});
    find<QComboBox>(*window, "Combo1")->setCurrentIndex(entry);
  }
  bool isHidden(const char* control) { return find<QWidget>(*window, control)->isHidden(); }
  QString console() { return find<QPlainTextEdit>(*window, "Text1")->toPlainText(); }
};

TEST_F(DebuggerWindow, TakesThePortAndGivesItBackInEveryWay) {
  const std::pair<std::function<void()>, DebuggerEnd> ways[] = {
      {[this] { press("Command1"); }, DebuggerEnd::quit},
      {[this] { press("Command2_1"); }, DebuggerEnd::exit},
      {[this] { window->close(); }, DebuggerEnd::quit},
  };
  for (const auto& [takeWayOut, end] : ways) {
    ended.reset();
    journal.clear();
    open();
    EXPECT_TRUE(port.isOpen());
    EXPECT_EQ(window->windowTitle(), "KVD Debuger");
    EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "CloseCOMPort"}));
    takeWayOut();
    EXPECT_FALSE(port.isOpen());
    live(1ms);
    EXPECT_EQ(ended, end);
    EXPECT_EQ(count("ReopenCOMPort"), 1);
    EXPECT_EQ(count("CloseController"), 1);
  }
  journal.clear();
  open();
  window.reset();
  EXPECT_EQ(count("ReopenCOMPort"), 1) << "the program is closed from outside";
}

TEST_F(DebuggerWindow, ShowsThePanelsOfTheChosenCommand) {
  open();
  auto* const entries = find<QComboBox>(*window, "Combo1");
  EXPECT_EQ(entries->count(), 15);
  EXPECT_EQ(entries->currentIndex(), -1);
  const struct {
    const char* set;
    int entry;
    bool address;
    bool data;
    bool setting;
  } cases[] = {
      {"Option1", 7, true, false, false},   {"Option1", 21, true, true, false},
      {"Option1", 12, false, false, false}, {"Option3", 2, true, false, false},
      {"Option3", 12, true, true, false},   {"Option2", 7, false, false, true},
      {"Option2", 6, false, false, false},
  };
  for (const auto& tested : cases) {
    choose(tested.set, tested.entry);
    const std::string what = tested.set + std::string(" ") + std::to_string(tested.entry);
    EXPECT_EQ(find<QScrollBar>(*window, "VScroll1")->isVisibleTo(window.get()), tested.address)
        << what;
    EXPECT_EQ(!isHidden("dataFrame"), tested.data) << what;
    EXPECT_EQ(find<QComboBox>(*window, "Combo2")->isVisibleTo(window.get()), tested.setting)
        << what;
  }
  EXPECT_EQ(session.commandSet, CommandSet::e02);
}

TEST_F(DebuggerWindow, SendsAParameterAsItsBoxesHoldIt) {
  open();
  choose("Option3", 12);
  auto* const address = find<QScrollBar>(*window, "VScroll1");
  for (const auto& [value, text] :
       {std::pair(63, "3F"), std::pair(64, "80"), std::pair(5, "05"), std::pair(32, "20")}) {
    address->setValue(value);
    EXPECT_EQ(label("lblAddress"), text);
  }
  auto* const high = find<QLineEdit>(*window, "Text2");
  auto* const low = find<QLineEdit>(*window, "Text5");
  high->setFocus();
  QTest::keyClicks(high, "1a");
  EXPECT_EQ(QApplication::focusWidget(), low) << "a full high byte moves on";
  EXPECT_EQ(high->text(), "1A");
  QTest::keyClicks(high, "2");
  EXPECT_EQ(high->text(), "A2");
  QTest::keyClicks(low, "3x");
  QTest::keyClick(low, Qt::Key_Tab);
  QApplication::processEvents();
  EXPECT_EQ(QApplication::focusWidget(), low) << "a wrong digit keeps the focus";
  EXPECT_EQ(low->selectedText(), "3x");
  QTest::keyClicks(low, "34");

  expected = 10;
  answers = {replyOf("0OK")};
  QTest::keyClick(find<QPushButton>(*window, "Command2_0"), Qt::Key_Space);
  EXPECT_EQ(wire, Lines{"01 53 50 32 30 41 32 33 34 0D"});
  EXPECT_EQ(label("lblshow_0"), "0OK");
  EXPECT_EQ(label("lblshow_1"), "01 30 4F 4B 0D ");
  EXPECT_TRUE(console().contains("> 01 53 50")) << console().toStdString();
  EXPECT_TRUE(console().contains("< 01 30 4F 4B 0D"));
}

TEST_F(DebuggerWindow, HoldsItsControlsAndItsEndWhileAnExchangeIsUnderWay) {
  open();
  choose("Option1", 12);
  clock.after(50ms, [this] {
    EXPECT_FALSE(find<QComboBox>(*window, "Combo1")->isEnabled());
    window->close();
    EXPECT_TRUE(port.isOpen()) << "the answer is still to come";
  });
  press("Command2_0");
  EXPECT_FALSE(port.isOpen());
  live(1ms);
  EXPECT_EQ(ended, DebuggerEnd::quit);
}

TEST_F(DebuggerWindow, ShowsReportsAndMeasuresTheirRate) {
  open();
  auto* const rate = find<QCheckBox>(*window, "Check1");
  press("Command3");
  terminal->send(Bytes{0xD8, 0x10, 0x20, 0x30, 0x01, 0x41});
  live(700ms);
  EXPECT_TRUE(console().contains("= touch X  4112 Y   176")) << console().toStdString();
  QTest::mouseDClick(find<QPlainTextEdit>(*window, "Text1")->viewport(), Qt::LeftButton);
  EXPECT_TRUE(find<QPushButton>(*window, "Command4")->isChecked());

  rate->setChecked(true);
  EXPECT_EQ(console(), "======== Report Rate Mode ==============");
  press("Command3");
  live(250ms);
  for (const std::uint8_t status : Bytes{0xD8, 0xD8, 0x98}) {
    terminal->send(Bytes{status, 1, 2, 3, 4});
    live(10ms);
  }
  live(400ms);
  EXPECT_TRUE(console().contains("Total Points : 3")) << console().toStdString();
  EXPECT_TRUE(label("lblEvidence").contains("median 10.0")) << label("lblEvidence").toStdString();
  EXPECT_TRUE(label("lblEvidence").contains("At most 192"));
  EXPECT_FALSE(find<QWidget>(*window, "rateHistogram")->accessibleDescription().isEmpty());
  rate->setChecked(false);
  EXPECT_TRUE(find<QWidget>(*window, "lblEvidence")->parentWidget()->isHidden());
}

TEST_F(DebuggerWindow, FiltersFindsPausesAndCopies) {
  open();
  choose("Option1", 12);
  expected = 4;
  answers = {replyOf("M0130100")};
  press("Command2_0");
  const QString all = console();
  find<QComboBox>(*window, "comboFilter")->setCurrentIndex(2);
  EXPECT_EQ(console().count('\n'), 0);
  EXPECT_TRUE(console().contains(".OI."));
  find<QComboBox>(*window, "comboFilter")->setCurrentIndex(0);
  auto* const searched = find<QLineEdit>(*window, "searchedText");
  searched->setText("m0130");
  press("cmdFind");
  EXPECT_TRUE(
      find<QPlainTextEdit>(*window, "Text1")->textCursor().selectedText().contains(".M0130100."));
  find<QCheckBox>(*window, "checkOnlyMatches")->setChecked(true);
  EXPECT_EQ(console().count('\n'), 0);
  find<QCheckBox>(*window, "checkOnlyMatches")->setChecked(false);
  find<QPlainTextEdit>(*window, "Text1")->moveCursor(QTextCursor::End);
  press("cmdCopy");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), all + '\n');

  find<QCheckBox>(*window, "checkPauseView")->setChecked(true);
  answers = {replyOf("M0130100")};
  press("Command2_0");
  EXPECT_EQ(console(), all);
  find<QCheckBox>(*window, "checkPauseView")->setChecked(false);
  EXPECT_EQ(console().count('\n'), all.count('\n') + 2);
  press("Command5");
  EXPECT_EQ(console(), "");
}

TEST_F(DebuggerWindow, SavesRecordsAndReplaysByItsDialogsAndSaysWhatFails) {
  open();
  folder.write("bad.txt", "touch recording 1\nnonsense\n");
  folder.write("good.txt", "touch recording 1\n0.010000 < D8 10 20 30 01\n");
  const struct {
    const char* button;
    const char* file;  ///< null: the dialog is cancelled
    const char* said;
    bool goesOn;  ///< it must be ended by the button
  } cases[] = {
      {"cmdSave", "kept", "Saved in ", false},
      {"cmdSave", "missing/kept.txt", "missing/kept.txt: expected ", false},
      {"cmdSave", nullptr, "", false},
      {"cmdRecord", "taken", "Recording to ", true},
      {"cmdRecord", "missing/taken.txt", "missing/taken.txt: expected a file that can be written",
       false},
      {"cmdRecord", nullptr, "", false},
      {"cmdReplay", "good.txt", "Replaying ", true},
      {"cmdReplay", "bad.txt", "bad.txt, line 2: expected a time in seconds", false},
      {"cmdReplay", nullptr, "", false},
  };
  for (const auto& [button, file, said, goesOn] : cases) {
    const std::string what = std::string(button) + ' ' + (file != nullptr ? file : "cancelled");
    find<QLabel>(*window, "statusLine")->clear();
    const QString caption = find<QPushButton>(*window, button)->text();
    answerFileDialog(file != nullptr ? QString::fromStdString(folder.path() / file) : QString());
    press(button);
    EXPECT_TRUE(label("statusLine").contains(said))
        << what << ": " << label("statusLine").toStdString();
    EXPECT_EQ(label("statusLine").isEmpty(), file == nullptr) << what;
    EXPECT_EQ(find<QPushButton>(*window, button)->text() != caption, goesOn) << what;
    if (goesOn) press(button);
  }
  EXPECT_TRUE(
      folder.read("kept.txt").starts_with("The driver has let go of its port. COM1 is open"));
  EXPECT_EQ(folder.read("taken.txt"), "touch recording 1\n");

  const test::SmallDisk disk(20);
  Debugger debugger(access(), prompt, port, {});
  debugger.startRecording(folder.path() / "full");
  debugger.receiveMode().receive();
  terminal->send(Bytes{0x41});
  live(300ms);
  debugger.watch();
  EXPECT_TRUE(debugger.takeStatus()->starts_with("The recording broke off. "));
}

TEST_F(DebuggerWindow, ReplaysWhatItsRecordingKept) {
  const auto file = folder.path() / "kept.txt";
  Debugger debugger(access(), prompt, port, {});
  const auto reports = [&debugger] {
    return debugger.log().lines({.sent = false, .received = false, .notes = false}).size();
  };
  debugger.takePort();
  debugger.startReplay(file);
  EXPECT_FALSE(debugger.isReplaying()) << "there is no such file yet";
  debugger.startRecording(file);
  debugger.receiveMode().receive();
  terminal->send(Bytes{0xD8, 0x10, 0x20, 0x30, 0x01});
  live(500ms);
  debugger.stopRecording();
  EXPECT_EQ(reports(), 1U);

  debugger.startReplay(file);
  live(500ms);
  debugger.watch();
  EXPECT_TRUE(debugger.isReplaying());
  EXPECT_EQ(reports(), 2U);
  const ReceivingPort drawing = debugger.beginDrawing();
  live(300ms);
  EXPECT_EQ(drawing.port.readAll().size(), 5U) << "it begins anew for the drawing";
  debugger.endDrawing();
  live(600ms);
  debugger.watch();
  EXPECT_FALSE(debugger.isReplaying()) << "it has come to its end";
  EXPECT_TRUE(debugger.receiveMode().isReceiving()) << "the port is listened to again";
  debugger.leave();
  EXPECT_EQ(count("ReopenCOMPort"), 1);
}

TEST_F(DebuggerWindow, FitsSmallScreensAndNamesItsControls) {
  open();
  window->resize(400, 240);
  QApplication::processEvents();
  EXPECT_LE(window->minimumSizeHint().width(), 800);
  EXPECT_LE(window->minimumSizeHint().height(), 240);
  std::map<QString, QString> mnemonics;
  for (const auto* const button : window->findChildren<QAbstractButton*>()) {
    if (button->text().isEmpty()) continue;  // a tab bar's arrows
    EXPECT_FALSE(button->objectName().isEmpty()) << button->text().toStdString();
    const QString key = QKeySequence::mnemonic(button->text()).toString();
    EXPECT_FALSE(key.isEmpty()) << button->text().toStdString();
    EXPECT_EQ(mnemonics.count(key), 0U)
        << button->text().toStdString() << " and " << mnemonics[key].toStdString();
    mnemonics[key] = button->text();
  }
}

class MainWindowWithDebugger : public test::MainWindowDesk {
 protected:
  void openDebugger() {
    open();
    QTest::keyClick(window.get(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(find<QLineEdit>(*window, "passwordBox"), "kqzm");
    QTest::keyClick(find<QLineEdit>(*window, "passwordBox"), Qt::Key_Return);
  }
  static QWidget* debugger() {
    for (QWidget* const top : QApplication::topLevelWidgets()) {
      if (top->objectName() == "frmRSDebug" && top->isVisible()) return top;
    }
    return nullptr;
  }
};

TEST_F(MainWindowWithDebugger, DoesNothingWithTheControllerUntilTheDebuggerHasEnded) {
  openDebugger();
  ASSERT_NE(debugger(), nullptr);
  EXPECT_TRUE(window->isHidden());
  EXPECT_FALSE(find<QTabWidget>(*window, "tabs")->isEnabled());
  journal.clear();
  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_EQ(journal, Lines{});

  auto* const record = find<QPushButton>(*debugger(), "cmdRecord");
  QTest::mouseClick(find<QPushButton>(*debugger(), "Command1"), Qt::LeftButton);
  // A click that comes before the window has gone; its dialog would stand on a window that is destroyed.
  bool asked = false;
  QTimer::singleShot(0, [&asked] {
    QWidget* const dialog = QApplication::activeModalWidget();
    asked = dialog != nullptr;
    if (asked) dialog->close();
  });
  record->click();
  EXPECT_FALSE(asked);
  live(1ms);
  EXPECT_EQ(debugger(), nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(find<QTabWidget>(*window, "tabs")->isEnabled());
  ASSERT_GE(journal.size(), 2U);
  EXPECT_EQ(journal[0], "ReopenCOMPort");
  EXPECT_EQ(journal[1], "CloseController");
}

TEST_F(MainWindowWithDebugger, EndsInOrderFromTheDebugger) {
  for (const bool fromOutside : {false, true}) {
    openDebugger();
    journal.clear();
    ASSERT_NE(debugger(), nullptr);
    if (fromOutside) {
      window->close();
    } else {
      QTest::mouseClick(find<QPushButton>(*debugger(), "Command2_1"), Qt::LeftButton);
    }
    live(1ms);
    EXPECT_TRUE(window->isHidden());
    ASSERT_FALSE(journal.empty());
    EXPECT_EQ(journal[0], "ReopenCOMPort");
    EXPECT_GE(std::ranges::count(journal, "WriteBuffer PL"), 1) << "the parameters are locked";
    window.reset();
  }
}

}  // namespace
}  // namespace touch
