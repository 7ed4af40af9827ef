#include "serial/debugger/frmRSDebug.h"

#include "serial/debugger/panels/frmConsolePanel.h"
#include "tests/doubles/small_disk.h"
#include "tests/serial/debugger/serial_desk.h"

namespace touch::test {
namespace {

class DebuggerWindow : public SerialDesk {
 protected:
  QPlainTextEdit& consoleBox() { return *find<QPlainTextEdit>("Text1"); }
  QString firstShown() { return consoleBox().cursorForPosition({0, 0}).block().text(); }
  std::string console() { return consoleBox().toPlainText().toStdString(); }
  void closeInAnExchange() {
    choose("Option1", 12);
    clock.after(50ms, [this] {
      EXPECT_FALSE(find<QComboBox>("Combo1")->isEnabled());
      window->close();
      click("cmdSearchPort");
      EXPECT_TRUE(port.isOpen()) << "the answer is still to come";
    });
    click("Command2_0");
  }
  void failInAnExchange() {
    choose("Option1", 12);
    clock.after(60ms, [] { throw std::runtime_error("beyond mending"); });
    EXPECT_THROW(find<QPushButton>("Command2_0")->click(), std::runtime_error);
    EXPECT_FALSE(window->isBusy());
    EXPECT_TRUE(find<QComboBox>("Combo1")->isEnabled());
    EXPECT_EQ(text("statusLine"), "");
    EXPECT_TRUE(port.isOpen()) << "nothing is done while an error passes";
  }
  void closeBehindABox() {
    std::string recording = "touch recording 1\n";
    for (int i = 0; i < 100; ++i)
      recording += "0.010000 < D8 10 20 30 01\n";
    folder.write("long.txt", recording);
    answerFileDialog("long.txt");
    click("cmdReplay");
    prompt.onMessage = [this] {
      live(1s);
      EXPECT_TRUE(find<QPushButton>("cmdReplay")->text().startsWith("Stop")) << "it is shown yet";
      window->close();
      EXPECT_TRUE(port.isOpen());
    };
    live(400ms);
    EXPECT_EQ(count("message Text too long !!"), 1);
    prompt.onMessage = {};
    live(100ms);
  }
  void drawAndLeave() {
    click("Command6");
    window->leave(DebuggerEnd::exit);
    live(1ms);
  }
};

TEST_F(DebuggerWindow, TakesThePortAndGivesItBackInEveryWay) {
  const std::tuple<const char*, std::function<void()>, std::optional<DebuggerEnd>> ways[] = {
      {"quit", [this] { click("Command1"); }, DebuggerEnd::quit},
      {"exit", [this] { click("Command2_1"); }, DebuggerEnd::exit},
      {"closed", [this] { window->close(); }, DebuggerEnd::quit},
      {"closed over the drawing", [this] { drawAndLeave(); }, DebuggerEnd::exit},
      {"closed in an exchange", [this] { closeInAnExchange(); }, DebuggerEnd::quit},
      {"failed", [this] { failInAnExchange(), window->close(); }, DebuggerEnd::quit},
      {"closed in an exchange that fails",
       [this] {
         clock.after(50ms, [this] { window->close(); });
         failInAnExchange();
         clock.delay(0ms);
       },
       DebuggerEnd::quit},
      {"closed behind a box", [this] { closeBehindABox(); }, DebuggerEnd::quit},
      {"gone with the program", [this] { window.reset(); }, std::nullopt},
  };
  for (const auto& [way, take, end] : ways) {
    SCOPED_TRACE(way);
    ended.reset();
    journal.clear();
    open();
    EXPECT_TRUE(port.isOpen());
    EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "CloseCOMPort"}));
    take();
    EXPECT_FALSE(port.isOpen());
    live(1ms);
    EXPECT_EQ(ended, end);
    EXPECT_EQ(count("ReopenCOMPort"), 1);
    EXPECT_EQ(count("CloseController"), 1);
  }
}

TEST_F(DebuggerWindow, SaysWhyAPortCannotBeOpenedAndWhatThatMeans) {
  terminal->unplug();
  open();
  const std::string refusal =
      "COM1 (/dev/there-is-none) cannot be opened: there is no such device. ";
  EXPECT_EQ(count("message " + refusal), 1);
  EXPECT_THAT(text("statusLine"), StartsWith(refusal));
  click("Command6");
  EXPECT_EQ(count("message COM1 is closed: no touches will be drawn."), 1);
  QTest::mouseClick(find<QPushButton>(*opened("frmRsDraw"), "cmdLeave"), Qt::LeftButton);
  live(1ms);
  plugIn();
  click("cmdTakePort");
  EXPECT_THAT(text("statusLine"), StartsWith("The driver has released its port. COM1 is open"));
  EXPECT_EQ(count("CloseCOMPort"), 1);
  EXPECT_EQ(count("message "), 2);
}

TEST_F(DebuggerWindow, LeftAloneWakesForNothing) {
  open();
  EXPECT_EQ(QApplication::focusWidget(), find<QComboBox>("Combo1"));
  std::size_t wakes = 0;
  clock.onAdvance = [&wakes](auto) { ++wakes; };
  live(1h);
  EXPECT_EQ(wakes, 1u) << "more than the end of the hour";
  terminal->send(Bytes{0x41});
  live(1h);
  EXPECT_LE(wakes, 4u) << "bytes that nobody reads are looked at, and that was it";
}

TEST_F(DebuggerWindow, BeginsNoExchangeInsideAnotherAndKeepsWhatWasSaidMeanwhile) {
  open();
  choose("Option1", 12);
  mainIsBusy = true;
  click("Command2_0");
  EXPECT_THAT(text("statusLine"), StartsWith("The main window is busy."));
  EXPECT_EQ(count("delay"), 0);
  mainIsBusy = false;
  clock.after(50ms, [this] {
    EXPECT_TRUE(window->isBusy());
    find<frmConsolePanel>("consolePanel")->copy();
  });
  expected = 4;
  answers = {replyOf("M0130100")};
  click("Command2_0");
  EXPECT_EQ(text("statusLine"), "Copied.");
}

TEST_F(DebuggerWindow, SendsAParameterAsItsBoxesHoldIt) {
  open();
  choose("Option2", 7);
  EXPECT_TRUE(find<QWidget>("Combo2")->isVisible());
  EXPECT_FALSE(find<QWidget>("dataFrame")->isVisible());
  choose("Option3", 12);
  EXPECT_FALSE(find<QWidget>("Combo2")->isVisible());
  find<QScrollBar>("VScroll1")->setValue(64);
  EXPECT_EQ(text("lblAddress"), "80");
  auto* const low = find<QLineEdit>("Text5");
  find<QLineEdit>("Text2")->setFocus();
  QTest::keyClicks(find<QLineEdit>("Text2"), "1a");
  EXPECT_EQ(QApplication::focusWidget(), low) << "a full high byte moves on";
  QTest::keyClicks(low, "3x\t");
  QApplication::processEvents();
  EXPECT_EQ(QApplication::focusWidget(), low) << "a wrong digit keeps the focus";
  QTest::keyClicks(low, "34");

  expected = 10;
  answers = {replyOf("0OK")};
  find<QPushButton>("Command2_0")->setFocus();
  QTest::keyClick(find<QPushButton>("Command2_0"), Qt::Key_Space);
  EXPECT_EQ(QApplication::focusWidget(), find<QPushButton>("Command2_0")) << "for the next one";
  EXPECT_EQ(wire, Lines{"01 53 50 38 30 31 41 33 34 0D"});
  EXPECT_EQ(text("lblshow_0"), "0OK");
  EXPECT_EQ(text("lblshow_1"), "01 30 4F 4B 0D ");
}

TEST_F(DebuggerWindow, ShowsReportsAndMeasuresTheirRate) {
  open();
  click("Command3");
  terminal->send(Bytes{0xD8, 0x10, 0x20, 0x30, 0x01, 0x41});
  live(700ms);
  EXPECT_THAT(console(), HasSubstr("= D8 10 20 30 01"));
  const std::pair<const char*, const char*> bytes[] = {
      {" 20 30", "Byte 3 of 5: X, high bits. touch X  4112"},
      {"< 41 ", "Byte 1 of 1: decimal 65."}};
  for (const auto& [found, said] : bytes) {
    QTextCursor digits = consoleBox().document()->find(found);
    digits.setPosition(digits.selectionStart() + (*found == '<' ? 2 : 1));
    consoleBox().setTextCursor(digits);
    EXPECT_THAT(text("statusLine"), StartsWith(said));
    ASSERT_EQ(consoleBox().extraSelections().size(), 1);
    EXPECT_TRUE(
        QString(found).contains(consoleBox().extraSelections()[0].cursor.selectedText() + ' '));
  }
  QTest::mouseDClick(consoleBox().viewport(), Qt::LeftButton);
  EXPECT_TRUE(find<QPushButton>("Command4")->isChecked());

  check("Check1", true);
  click("Command3");
  live(250ms);
  for (const std::uint8_t status : Bytes{0xD8, 0xD8, 0x98}) {
    terminal->send(Bytes{status, 1, 2, 3, 4});
    live(10ms);
  }
  live(400ms);
  EXPECT_THAT(console(), HasSubstr("Total Points : 3"));
  EXPECT_THAT(text("lblEvidence"), HasSubstr("median 10.0"));
  EXPECT_EQ(find<QWidget>("rateHistogram")->accessibleDescription(), "from 10 ms: 2");

  check("Check1", false);
  terminal->send(Bytes{0xD8, 0x10, 0x20, 0x30, 0x01});
  live(700ms);
  EXPECT_THAT(console(), HasSubstr("touch X  4112"));

  folder.write("stroke.txt",
               "touch recording 1\n0.000000 < 41\n0.300000 < D8 01 02 03 04\n"
               "0.310000 < D8 01 02 03 04\n0.320000 < 98 01 02 03 04\n");
  for (const int measured : {1, 2}) {
    answerFileDialog("stroke.txt");
    click("cmdReplay");
    if (measured == 1) check("Check1", true);
    live(2s);
    EXPECT_EQ(text("lblPort"), "COM1 is open, 9600,n,8,1.") << "the replay is over";
    EXPECT_EQ(consoleBox().toPlainText().count("Total Points : 3"), measured)
        << "only the box clears the console";
    EXPECT_THAT(text("lblEvidence"), HasSubstr("median 10.0"));
  }
}

TEST_F(DebuggerWindow, FiltersFindsPausesAndCopies) {
  open();
  choose("Option1", 12);
  const auto exchange = [this] {
    expected = 4;
    answers = {replyOf("M0130100")};
    click("Command2_0");
  };
  exchange();
  find<QLineEdit>("searchedText")->setText("m0130");
  click("cmdFind");
  EXPECT_THAT(consoleBox().textCursor().selectedText().toStdString(), HasSubstr(".M0130100."));
  check("checkOnlyMatches", true);
  EXPECT_THAT(console(), MatchesRegex("[^\n]+[.]M0130100[.]"));
  check("checkOnlyMatches", false);
  find<QComboBox>("comboFilter")->setCurrentIndex(2);
  const std::string sent = console();
  EXPECT_THAT(sent, MatchesRegex("[^\n]+[.]OI[.]"));
  consoleBox().moveCursor(QTextCursor::End);
  click("cmdCopy");
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), sent + '\n');

  check("checkPauseView", true);
  exchange();
  EXPECT_EQ(console(), sent);
  check("checkPauseView", false);
  EXPECT_THAT(console(), StartsWith(sent + '\n'));

  for (int line = 0; line < 60; ++line)
    exchange();
  QScrollBar& bar = *consoleBox().verticalScrollBar();
  EXPECT_EQ(bar.value(), bar.maximum()) << "whoever is at the end stays there";
  bar.setValue(1);
  exchange();
  EXPECT_EQ(bar.value(), 1) << "whoever reads is left alone";
  const QString read = firstShown();
  find<QComboBox>("comboFilter")->setCurrentIndex(0);
  EXPECT_EQ(firstShown(), read) << "also where the lines are written anew";
}

TEST_F(DebuggerWindow, ScrollsOverAllLinesAndStandsWhereItWasScrolledTo) {
  open();
  auto& tabs = *find<QTabWidget>("debuggerTabs");
  for (int page = 0; page < tabs.count(); ++page)
    if (tabs.tabText(page) == "Console") tabs.setCurrentIndex(page);
  std::string recording = "touch recording 1\n0.000000 < 41\n0.300000 <";
  for (int i = 0; i < 6000; ++i) {
    const auto low = static_cast<std::uint8_t>(i % 128);
    const auto high = static_cast<std::uint8_t>(i / 128);
    recording += ' ' + hexText(Bytes{0xD8, low, high, 0x30, 0x01});
  }
  folder.write("long.txt", recording + '\n');
  answerFileDialog("long.txt");
  click("cmdReplay");
  live(3s);
  QScrollBar& all = *find<QScrollBar>("keptLinesBar");
  QScrollBar& own = *consoleBox().verticalScrollBar();
  EXPECT_EQ(all.value(), all.maximum());
  EXPECT_GT(all.maximum(), 5900);

  const auto xAtTop = [this] { return firstShown().section("touch X ", 1).left(5).toInt(); };
  all.setValue(1000);
  const int there = xAtTop();
  EXPECT_NEAR(there, 1000, 10);
  int top = there;
  for (int step = 0; step < 5000 && top < there + 1500; ++step) {
    own.triggerAction(QAbstractSlider::SliderPageStepAdd);
    QApplication::processEvents();
    const int before = std::exchange(top, xAtTop());
    EXPECT_GE(top, before);
    EXPECT_LE(top, before + own.pageStep());
    EXPECT_LE(consoleBox().blockCount(), 2000);
  }
  EXPECT_GE(top, there + 1500) << "page by page, over more lines than the text has";

  QTest::keyClick(&consoleBox(), Qt::Key_Home);
  EXPECT_EQ(all.value(), 0);
  const QString first = firstShown();
  click("Command3");
  terminal->send(Bytes{0xD8, 0x10, 0x20, 0x30, 0x01});
  live(1s);
  EXPECT_EQ(firstShown(), first) << "what comes meanwhile moves nothing";
  EXPECT_EQ(all.value(), 0);

  QTest::keyClick(&consoleBox(), Qt::Key_End);
  live(1s);
  EXPECT_EQ(all.value(), all.maximum());
  EXPECT_EQ(own.value(), own.maximum());
  EXPECT_THAT(console(), EndsWith("touch X  4112 Y   176"));
}

TEST_F(DebuggerWindow, HasAHeadingOverItsColumns) {
  open();
  choose("Option1", 12);
  expected = 4;
  answers = {replyOf("M0130100")};
  click("Command2_0");
  const QString heading = find<QWidget>("columnHeading")->accessibleName();
  const QString line = consoleBox().document()->lastBlock().text();
  ASSERT_THAT(line.toStdString(), HasSubstr(" < 01 4D"));
  EXPECT_EQ(heading.indexOf("Time") + 4, line.indexOf("   < "));
  EXPECT_EQ(heading.indexOf("Dir") + 2, line.indexOf('<'));
  EXPECT_EQ(heading.indexOf("Hexadecimal"), line.indexOf("01 4D"));
  EXPECT_EQ(heading.indexOf("Text"), line.indexOf(".M01"));
}

TEST_F(DebuggerWindow, SavesRecordsAndReplaysByItsDialogsAndSaysWhatFails) {
  open();
  folder.write("bad.txt", "touch recording 1\nnonsense\n");
  folder.write("silent.txt", "touch recording 1\n0.010000 > 01\n");
  folder.write("good.txt", "touch recording 1\n0.010000 < D8 10 20 30 01\n");
  const struct {
    const char* button;
    const char* file;  ///< none: the dialog is cancelled
    const char* said;
    bool goesOn = false;  ///< it must be ended by the button
  } cases[] = {
      {"cmdSave", "kept", "Saved in "},
      {"cmdSave", "missing/kept.txt", "missing/kept.txt: expected "},
      {"cmdRecord", "taken", "Recording to ", true},
      {"cmdRecord", "missing/taken.txt", "missing/taken.txt: expected a file that can be written"},
      {"cmdRecord", "", ""},
      {"cmdReplay", "good.txt", "Replaying ", true},
      {"cmdReplay", "silent.txt", "silent.txt holds nothing that came from a controller."},
      {"cmdReplay", "bad.txt", "bad.txt, line 2: expected a time in seconds"},
  };
  for (const auto& [button, file, said, goesOn] : cases) {
    SCOPED_TRACE(button + std::string(" ") + file);
    find<QLabel>("statusLine")->clear();
    const QString caption = find<QPushButton>(button)->text();
    answerFileDialog(file);
    click(button);
    EXPECT_THAT(text("statusLine"), HasSubstr(said));
    EXPECT_EQ(text("statusLine") == "", file == std::string());
    EXPECT_EQ(find<QPushButton>(button)->text() != caption, goesOn);
    if (goesOn) click(button);
  }
  EXPECT_THAT(folder.read("kept.txt"),
              StartsWith("The driver has released its port. COM1 is open"));
  EXPECT_THAT(folder.read("taken.txt"),
              MatchesRegex("touch recording 1\n# Started: [-0-9]{10}T[:.0-9]{13}[+-][:0-9]{5}\n"
                           "# Port: COM1\n# Line: 9600,n,8,1\n# Controller: RS232 DEVICE 1\n"
                           "# Program: Program 1\n# Times: [^\n]+\n"));

  const SmallDisk disk(250);
  answerFileDialog("full");
  click("cmdRecord");
  click("Command3");
  terminal->send(Bytes{0x41});
  live(300ms);
  EXPECT_THAT(text("statusLine"), StartsWith("The recording broke off. "));
}

}  // namespace
}  // namespace touch::test
