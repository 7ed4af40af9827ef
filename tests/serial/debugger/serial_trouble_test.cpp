#include <atomic>
#include <thread>

#include "tests/serial/debugger/serial_desk.h"

namespace touch::test {
namespace {

/// What a serial line does to those who use it in the field: it is unplugged, and it never stops
/// talking.
class SerialTrouble : public SerialDesk {
 protected:
  void unplug() { terminal->unplug(); }
  /// Presses a button while the device goes within `time`.
  void pressAndUnplug(const char* name, std::chrono::milliseconds time) {
    clock.after(time, [this] { unplug(); });
    click(name);
  }
  void sendAndUnplug(const char* set, int entry, std::chrono::milliseconds time) {
    choose(set, entry);
    find<QLineEdit>("Text2")->setText("12");
    find<QLineEdit>("Text5")->setText("34");
    pressAndUnplug("Command2_0", time);
  }
  void receive(const Bytes& bytes) {
    click("Command3");
    terminal->send(bytes);
    live(300ms);
  }
  static QWidget* drawing() { return opened("frmRsDraw"); }
  void draw(const Bytes& bytes, const char* box = "checkFit") {
    click("Command6");
    find<QCheckBox>(*drawing(), box)->setChecked(true);
    terminal->send(bytes);
    live(100ms);
  }
  void leaveDrawing() {
    QTest::mouseClick(find<QPushButton>(*drawing(), "cmdLeave"), Qt::LeftButton);
    live(1ms);
    EXPECT_TRUE(window->isVisible());
  }
  void replay() {
    folder.write("r.txt", "touch recording 1\n0.010000 < D8 10 20 30 01\n9.000000 < 41\n");
    answerFileDialog("r.txt");
    click("cmdReplay");
    live(300ms);
  }
  bool isReplaying() const { return find<QPushButton>("cmdReplay")->text().startsWith("Stop"); }
};

const Bytes half = {0xD8, 0x10, 0x20};

TEST_F(SerialTrouble, UnpluggedAtAnyStepIsToldOnceAndTheProgramGoesOn) {
  const struct {
    const char* step;
    std::function<void()> reach;  ///< the device goes within, or when it is through
    std::string told = "COM1";    ///< how the one box begins; empty: the console says it
  } cases[] = {
      {"waiting for the user", [] {}, ""},
      {"probing", [&] { pressAndUnplug("cmdSearchPort", 10ms); }, "Device Can't found!!"},
      {"sending", [&] { unplug(), sendAndUnplug("Option1", 22, 50ms); }, ""},
      {"waiting for a reply", [&] { sendAndUnplug("Option1", 22, 50ms); }},
      {"repeating", [&] { sendAndUnplug("Option1", 22, 150ms); }},
      {"writing a parameter", [&] { sendAndUnplug("Option3", 12, 50ms); }},
      {"changing the line", [&] { sendAndUnplug("Option1", 26, 50ms); }},
      {"waiting for an E02 reply", [&] { sendAndUnplug("Option2", 3, 100ms); }},
      {"receiving a report", [&] { receive(half); }, ""},
      {"measuring a stroke", [&] { check("Check1", true), receive(half); }, ""},
      {"replaying", [&] { replay(); }, ""},
      {"opening the drawing", [&] { unplug(), draw({}); }},
      {"drawing", [&] { draw(half); }},
      {"drawing, paused", [&] { draw({}, "checkPause"); }, ""},
      {"drawing, monitor only", [&] { draw(half, "checkMonitorOnly"); }},
      {"drawing a replay", [&] { replay(), draw({}); }, ""},
  };
  for (const auto& [step, reach, told] : cases) {
    SCOPED_TRACE(step);
    window.reset();
    journal.clear();
    plugIn();
    open();
    reach();
    unplug();
    live(1s);
    const int boxes = told.empty() ? 0 : 1;
    EXPECT_EQ(count("message "), boxes);
    EXPECT_EQ(count("message " + told), boxes);
    EXPECT_FALSE(port.isOpen());
    EXPECT_EQ(count("ReopenCOMPort"), 0) << "the driver gets it back when the debugger ends";

    if (drawing() != nullptr) leaveDrawing();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(find<QPlainTextEdit>("Text1")->toPlainText().count("is gone: it was unplugged"),
              1 - boxes);
    plugIn();
    if (isReplaying()) click("cmdReplay");
    click("cmdTakePort");
    EXPECT_TRUE(port.isOpen());
    expected = 4;
    answers = {replyOf("M0301")};
    click("Command4");
    choose("Option1", 22);
    click("Command2_0");
    EXPECT_EQ(text("lblshow_0"), "M0301");
    EXPECT_EQ(count("message "), boxes);
    click("Command1");
    EXPECT_EQ(count("CloseCOMPort"), 1);
    EXPECT_EQ(count("ReopenCOMPort"), 1);
    EXPECT_TRUE(script.openHandles.empty());
  }
}

TEST_F(SerialTrouble, APortThatComesBackIsTakenUpAgainWhereItWas) {
  open();
  answerFileDialog("kept");
  click("cmdRecord");
  receive({0xD8, 0x10, 0x20, 0x30, 0x01});
  unplug();
  live(1s);
  EXPECT_FALSE(port.isOpen());
  plugIn();
  live(1500ms);
  ASSERT_TRUE(port.isOpen());
  EXPECT_TRUE(find<QPushButton>("Command3")->isChecked()) << "it receives again";
  terminal->send(Bytes{0xD8, 0x11, 0x20, 0x30, 0x01});
  live(500ms);
  const std::string console = find<QPlainTextEdit>("Text1")->toPlainText().toStdString();
  EXPECT_THAT(console, MatchesRegex("(.|\n)*COM1 has gone[.] 20[^\n]+\n[^\n]+is gone: it was "
                                    "unplugged[^\n]+\nCOM1 is there again[.] "
                                    "20(.|\n)*X  4113(.|\n)*"));
  click("cmdRecord");
  EXPECT_THAT(folder.read("kept.txt"), HasSubstr("< D8 11 20 30 01\n"));
  EXPECT_EQ(count("message "), 0) << "nobody may be there to close a box";
}

TEST_F(SerialTrouble, AnyPortOfTheMachineCanBeTakenOrSearched) {
  open();
  auto* const tabs = find<QTabWidget>("debuggerTabs");
  while (tabs->tabText(tabs->currentIndex()) != "Ports")
    tabs->setCurrentIndex((tabs->currentIndex() + 1) % tabs->count());
  live(2s);
  ASSERT_TRUE(find<QListWidget>("listPorts")->isVisible());
  EXPECT_EQ(find<QListWidget>("listPorts")->currentItem()->text().toStdString(),
            "COM1   " + terminal->path() + "\nfree");
  click("cmdSearchEverywhere");
  EXPECT_THAT(text("statusLine"), StartsWith("No controller answers on any port"));
  const std::string console = find<QPlainTextEdit>("Text1")->toPlainText().toStdString();
  EXPECT_THAT(console, HasSubstr("Asking on COM1, 9600,n,7,2 …"));
  EXPECT_TRUE(port.isOpen()) << "as before";
  click("cmdUsePort");
  EXPECT_EQ(text("statusLine"), "COM1 is open, 9600,n,8,1.");
}

/// Megabytes of reports, fed as fast as the line takes them, while the user's events come in as
/// well.
class SerialFlood : public SerialTrouble {
 protected:
  /// Runs `step` over and over, with an event for the window before each, until nothing comes any
  /// more.
  void feed(std::size_t packets, const std::function<void()>& step) {
    constexpr std::size_t mostInOneGo = 65536;
    Bytes bytes;
    for (std::size_t i = 0; i < packets; ++i) {
      const auto low = static_cast<std::uint8_t>(i & 0x7F);
      const auto high = static_cast<std::uint8_t>(i >> 7 & 0x7F);
      bytes.insert(bytes.end(), {0xD8, low, high, 77, 0});
    }
    std::atomic<bool> sent = false;
    const std::jthread sender([&] {
      terminal->flood(bytes);
      sent = true;
    });
    for (int quiet = 0; quiet < 10;) {
      // An idle line would end the packet under way, as it should.
      while (port.inBufferCount() == 0 && !sent)
        std::this_thread::yield();
      if (port.inBufferCount() == 0) ++quiet;
      const std::size_t round = served;
      QTimer::singleShot(0, window.get(), [this] { ++served; });
      step();
      journal.clear();
      ASSERT_EQ(served, round + 1) << "an event waits";
    }
    EXPECT_GE(served, bytes.size() / mostInOneGo)
        << "a tick must not go on until the line is empty";
  }

  std::size_t served = 0;  ///< events for the window
};

TEST_F(SerialFlood, OfTheRawDrawingLosesNoReport) {
  open();
  click("Command6");
  feed(2'000'000, [this] { live(50ms); });
  EXPECT_THAT(find<QLabel>(*drawing(), "lblStray")->text().toStdString(),
              StartsWith("Reports: 2000000     Unrecognised bytes: 0"));
  EXPECT_LE(find<QPlainTextEdit>(*drawing(), "Text1")->document()->characterCount(), 8010);
  leaveDrawing();
}

TEST_F(SerialFlood, OfTheReceiveModeLosesNoReport) {
  open();
  click("Command3");
  constexpr int packets = 200'000;
  constexpr int cycle = 16384;
  const QTextDocument& console = *find<QPlainTextEdit>("Text1")->document();
  const auto xOf = [](const QTextBlock& block) {
    return block.text().section("touch X ", 1).left(5).toInt();
  };
  int newest = cycle - 1;
  feed(packets, [&] {
    live(200ms);
    const QString first = console.firstBlock().text();
    if (!first.contains("touch X ") || !console.lastBlock().text().contains("touch X ")) return;
    newest = xOf(console.lastBlock());
    EXPECT_EQ((newest - xOf(console.firstBlock()) + cycle) % cycle, console.blockCount() - 1);
  });
  EXPECT_EQ(newest, (packets - 1) % cycle);
  click("Command4");
  EXPECT_TRUE(find<QPushButton>("Command4")->isChecked());
}

}  // namespace
}  // namespace touch::test
