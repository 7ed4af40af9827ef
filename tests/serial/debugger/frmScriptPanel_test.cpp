#include "tests/serial/debugger/serial_desk.h"

namespace touch::test {
namespace {

class ScriptWindow : public SerialDesk {
 protected:
  void choose(const char* file, const std::string& lines) {
    folder.write(file, "touch script 1\n" + lines);
    answerFileDialog(file);
    click("cmdChooseScript");
  }
  std::string console() { return find<QPlainTextEdit>("Text1")->toPlainText().toStdString(); }
  bool isEnabled(const char* name) { return find<QWidget>(name)->isEnabled(); }
  std::string marked() {
    const auto marks = find<QPlainTextEdit>("scriptText")->extraSelections();
    return marks.empty() ? "" : marks.front().cursor.block().text().toStdString();
  }
};

TEST_F(ScriptWindow, ShowsWhatAScriptDoesAndHowItEnds) {
  open();
  choose("bad.tus", "send 0\n");
  EXPECT_THAT(text("statusLine"), StartsWith("bad.tus, line 2: expected two hexadecimal digits"));
  EXPECT_FALSE(isEnabled("cmdRunScript"));

  choose("good.tus", "\nline 9600,n,7,2\ncommand Z\nexpect 01 \"0\"\nnote \"It is there.\"\n");
  EXPECT_EQ(text("statusLine"), "");
  expected = 3;
  answers = {replyOf("0")};
  click("cmdRunScript");
  EXPECT_EQ(wire, Lines{"01 5A 0D"});
  EXPECT_EQ(text("statusLine"), "good.tus: passed; 3 bytes sent, 3 received");
  EXPECT_THAT(console(),
              MatchesRegex("(.|\n)*\nline 9600,n,7,2\n *[0-9.]+   > 01 5A 0D .*\n"
                           " *[0-9.]+   < 01 30 0D .*\nIt is there.\ngood.tus: passed.*"));
  EXPECT_EQ((terminal->settings().c_cflag & CSTOPB), 0u) << "the usual line settings are back";
  EXPECT_EQ(marked(), "");

  // It is read anew each time.
  folder.write("good.tus", "touch script 1\ncommand Z\nexpect 01 within 50 ms\n");
  click("cmdRunScript");
  EXPECT_EQ(text("statusLine"), "good.tus, line 3: expected 01 within 50 ms, received nothing");
  EXPECT_EQ(marked(), "  3  expect 01 within 50 ms");
}

TEST_F(ScriptWindow, NeverSendsAfterItsStop) {
  open();
  choose("long.tus", "repeat 1000\nwait 100 ms\nsend 01\nend\n");
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"stopped", [this] { click("cmdStopScript"); }},
      {"stopped while paused",
       [this] {
         click("cmdPauseScript");
         clock.after(5s, [this] { click("cmdStopScript"); });
       }},
      {"unplugged", [this] { terminal->unplug(); }},
      {"closed", [this] { window->close(); }},
  };
  for (const auto& [way, end] : ways) {
    SCOPED_TRACE(way);
    if (!port.isOpen()) {
      plugIn();
      click("cmdTakePort");
    }
    clock.after(250ms, [this, &said = way, &act = end] {
      EXPECT_EQ(marked(), "  3  wait 100 ms");
      EXPECT_FALSE(isEnabled("Combo1") || isEnabled("cmdRunScript")) << "one thing at a time";
      EXPECT_EQ(hexText(terminal->receive(2)), "01 01") << said;
      act();
    });
    click("cmdRunScript");
    if (!port.isOpen()) continue;
    EXPECT_FALSE(window->isBusy());
    EXPECT_EQ(text("statusLine"), "long.tus, line 3: stopped");
    port.write(Bytes{0x55});
    EXPECT_EQ(hexText(terminal->receive(1)), "55") << "nothing came before it";
  }
  EXPECT_EQ(count("message COM1 "), 1) << "it was unplugged";
  live(1ms);
  EXPECT_EQ(ended, DebuggerEnd::quit);
}

TEST_F(ScriptWindow, AsksBeforeAScriptThatChangesTheController) {
  open();
  prompt.answerYes = false;
  choose("restore.tus", "command iF\n");
  click("cmdRunScript");
  EXPECT_EQ(count("confirm Line 2 of restore.tus, \"command iF\", changes what"), 1);
  EXPECT_EQ(text("statusLine"), "The script was not run.");
  port.write(Bytes{0x55});
  EXPECT_EQ(hexText(terminal->receive(1)), "55") << "nothing came before it";
}

}  // namespace
}  // namespace touch::test
