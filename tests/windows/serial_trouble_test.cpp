#include <malloc.h>

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTextBlock>
#include <atomic>
#include <thread>

#include "tests/windows/serial_desk.h"

namespace touch {
namespace {

using namespace std::chrono_literals;
using test::Bytes;
using test::replyOf;

/// What a serial line does to those who use it in the field: it is unplugged, and it never stops talking.
class SerialTrouble : public test::SerialDesk {
 protected:
  /// Chooses an entry and presses "Send".
  void send(const char* set, int entry) {
    QTest::mouseClick(find<QRadioButton>(*window, set), Qt::LeftButton, {}, {10, 15});
    find<QComboBox>(*window, "Combo1")->setCurrentIndex(entry);
    find<QLineEdit>(*window, "Text2")->setText("12");
    find<QLineEdit>(*window, "Text5")->setText("34");
    press("Command2_0");
  }
  /// The same while the device goes after `time`.
  void sendAndUnplug(const char* set, int entry, std::chrono::milliseconds time) {
    clock.after(time, [this] { terminal->unplug(); });
    send(set, entry);
  }
  void chooseSet(const char* set) {
    QTest::mouseClick(find<QRadioButton>(*window, set), Qt::LeftButton, {}, {10, 15});
  }
  void receive(const Bytes& bytes) {
    press("Command3");
    terminal->send(bytes);
    live(300ms);
  }
  void check(const char* name) { find<QCheckBox>(*openedDrawing(), name)->setChecked(true); }
  void replay() {
    folder.write("r.txt", "touch recording 1\n0.010000 < D8 10 20 30 01\n9.000000 < 41\n");
    answerFileDialog(QString::fromStdString(folder.path() / "r.txt"));
    press("cmdReplay");
    live(300ms);
    EXPECT_TRUE(isReplaying());
  }
  bool isReplaying() const {
    return find<QPushButton>(*window, "cmdReplay")->text().startsWith("Stop");
  }
  std::size_t boxes() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        journal, [](const std::string& line) { return line.starts_with("message "); }));
  }
};

const Bytes half = {0xD8, 0x10, 0x20};

TEST_F(SerialTrouble, UnpluggedAtAnyStepIsToldOnceAndTheProgramGoesOn) {
  const char* const gone = "COM1";
  const char* const notFound = "Device Can't found!!";
  const struct {
    const char* step;
    std::function<void()> reach;  ///< the device goes within, or when it is through
    const char* told;             ///< how the one box begins; null: the window itself says it
  } cases[] = {
      {"opening", [] {}, nullptr},
      {"waiting for the user", [] {}, gone},
      {"probing",
       [this] {
         clock.after(10ms, [this] { terminal->unplug(); });
         press("cmdSearchPort");
       },
       notFound},
      {"probing again",
       [this] {
         clock.after(60ms, [this] { terminal->unplug(); });
         press("cmdSearchPort");
       },
       notFound},
      {"sending",
       [this] {
         terminal->unplug();
         send("Option1", 22);
       },
       gone},
      {"waiting for a reply", [this] { sendAndUnplug("Option1", 22, 50ms); }, gone},
      {"repeating", [this] { sendAndUnplug("Option1", 22, 150ms); }, gone},
      {"reading a parameter", [this] { sendAndUnplug("Option1", 7, 50ms); }, gone},
      {"writing a parameter", [this] { sendAndUnplug("Option3", 12, 50ms); }, gone},
      {"changing the line", [this] { sendAndUnplug("Option1", 26, 50ms); }, gone},
      {"waiting for an E02 reply", [this] { sendAndUnplug("Option2", 3, 100ms); }, gone},
      {"repeating an E02 packet", [this] { sendAndUnplug("Option2", 3, 400ms); }, gone},
      {"repeating it once more",
       [this] {
         answers = {replyOf("xxx")};
         sendAndUnplug("Option2", 3, 350ms);
       },
       gone},
      {"receiving nothing", [this] { receive({}); }, gone},
      {"receiving a report", [this] { receive(half); }, gone},
      {"receiving an E02 report",
       [this] {
         chooseSet("Option2");
         receive({'U', 'T', 0x82});
       },
       gone},
      {"waiting for a stroke",
       [this] {
         find<QCheckBox>(*window, "Check1")->setChecked(true);
         receive({});
       },
       gone},
      {"measuring a stroke",
       [this] {
         find<QCheckBox>(*window, "Check1")->setChecked(true);
         receive({});
         receive(half);
       },
       gone},
      {"replaying", [this] { replay(); }, gone},
      {"opening the drawing",
       [this] {
         terminal->unplug();
         press("Command6");
       },
       gone},
      {"drawing nothing", [this] { press("Command6"); }, gone},
      {"drawing",
       [this] {
         press("Command6");
         terminal->send(half);
         live(100ms);
       },
       gone},
      {"drawing, paused",
       [this] {
         press("Command6");
         check("checkPause");
       },
       gone},
      {"drawing, monitor only",
       [this] {
         press("Command6");
         check("checkMonitorOnly");
         terminal->send(half);
         live(100ms);
       },
       gone},
      {"drawing a replay",
       [this] {
         replay();
         press("Command6");
         live(100ms);
       },
       gone},
  };
  for (const auto& [step, reach, told] : cases) {
    window.reset();
    journal.clear();
    answers.clear();
    terminal = std::make_unique<test::PseudoTerminal>();
    if (told == nullptr) terminal->unplug();
    open();
    reach();
    terminal->unplug();
    live(1s);
    EXPECT_EQ(boxes(), told != nullptr ? 1U : 0U) << step;
    EXPECT_EQ(messages(told != nullptr ? told : ""), told != nullptr ? 1 : 0) << step;
    EXPECT_EQ(label("statusLine").contains("there is no such device"), told == nullptr) << step;
    EXPECT_FALSE(port.isOpen()) << step;
    EXPECT_EQ(count("ReopenCOMPort"), count("CloseCOMPort")) << step;
    EXPECT_TRUE(script.openHandles.empty()) << step;

    if (QWidget* const drawing = openedDrawing()) {
      QTest::mouseClick(find<QPushButton>(*drawing, "cmdLeave"), Qt::LeftButton);
      live(1ms);
    }
    EXPECT_TRUE(window->isVisible()) << step;
    terminal = std::make_unique<test::PseudoTerminal>();
    if (isReplaying()) press("cmdReplay");
    press("cmdTakePort");
    EXPECT_TRUE(port.isOpen()) << step;
    expected = 4;
    answers = {replyOf("M0301")};
    press("Command4");
    send("Option1", 22);
    EXPECT_EQ(label("lblshow_0"), "M0301") << step;
    EXPECT_EQ(boxes(), told != nullptr ? 1U : 0U) << step;
  }
}

/// Megabytes of reports, fed as fast as the line takes them, while the user's events come in as well.
class SerialFlood : public SerialTrouble {
 protected:
  static constexpr std::size_t packetSize = 5;
  static constexpr std::size_t mostInOneGo = 65536;
  static constexpr int enoughQuiet = 10;  ///< steps without bytes, after which none will come

  static Bytes flood(std::size_t packets) {
    Bytes bytes;
    bytes.reserve(packets * packetSize);
    for (std::size_t i = 0; i < packets; ++i) {
      const auto low = static_cast<std::uint8_t>(i & 0x7F);
      const auto high = static_cast<std::uint8_t>(i >> 7 & 0x7F);
      bytes.insert(bytes.end(), {0xD8, low, high, 77, 0});
    }
    return bytes;
  }

  /// Runs `step` over and over until `isThrough`, with an event for the window before each.
  void feed(std::size_t packets, const std::function<void()>& step,
            const std::function<bool()>& isThrough) {
    const Bytes bytes = flood(packets);
    std::atomic<bool> sent = false;
    const std::jthread sender([&] {
      terminal->flood(bytes);
      sent = true;
    });
    std::size_t before = 0;
    int quiet = 0;
    for (std::size_t round = 0; quiet < enoughQuiet && !isThrough(); ++round) {
      // An idle line would end the packet under way, as it should.
      while (port.inBufferCount() == 0 && !sent)
        std::this_thread::yield();
      if (port.inBufferCount() == 0) ++quiet;
      QTimer::singleShot(0, window.get(), [this] { ++served; });
      step();
      journal.clear();
      constexpr std::size_t settled = 50;
      if (round == settled) before = heap();
      ASSERT_EQ(served, round + 1) << "an event waits";
      ASSERT_TRUE(port.isOpen());
    }
    EXPECT_GE(served, bytes.size() / mostInOneGo)
        << "a tick must not go on until the line is empty";
    constexpr std::size_t oneMegabyte = 1024 * 1024;
    EXPECT_LT(heap(), before + oneMegabyte);
  }
  /// What the program has allocated. A sanitizer's own allocator tells nothing here.
  static std::size_t heap() { return mallinfo2().uordblks; }

  std::size_t served = 0;
};

TEST_F(SerialFlood, OfTheRawDrawingLosesNoReport) {
  open();
  press("Command6");
  QWidget& drawing = *openedDrawing();
  const auto counts = [&drawing] { return find<QLabel>(drawing, "lblStray")->text(); };
  feed(
      2'000'000, [this] { live(50ms); }, [&] { return counts().startsWith("Reports: 2000000 "); });
  EXPECT_TRUE(counts().endsWith("in no report: 0")) << counts().toStdString();
  EXPECT_LE(find<QPlainTextEdit>(drawing, "Text1")->document()->characterCount(), 8010);
  QTest::mouseClick(find<QPushButton>(drawing, "cmdLeave"), Qt::LeftButton);
  live(1ms);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(SerialFlood, OfTheReceiveModeLosesNoReport) {
  open();
  press("Command3");
  auto* const console = find<QPlainTextEdit>(*window, "Text1");
  const auto xOf = [](const QTextBlock& block) {
    constexpr int place = 2;  // behind "X "
    const QString text = block.text();
    return text.mid(text.indexOf("X ") + place, 5).toInt();
  };
  constexpr int cycle = 16384;
  std::size_t seen = 0;
  int last = cycle - 1;
  std::size_t tooLong = 0;
  constexpr std::size_t packets = 200'000;
  feed(
      packets,
      [&] {
        live(200ms);
        tooLong += boxes();
        const auto* const text = console->document();
        if (!text->lastBlock().text().contains(" = ")) return;
        const auto ahead = [](int from, int to) { return (to - from + cycle) % cycle; };
        const int newest = xOf(text->lastBlock());
        if (text->firstBlock().text().contains(" = ")) {
          EXPECT_EQ(ahead(xOf(text->firstBlock()), newest), text->blockCount() - 1)
              << "a report is missing";
          EXPECT_LE(ahead(last, newest), text->blockCount()) << "what was read went unseen";
        }
        seen += static_cast<std::size_t>(ahead(last, newest));
        last = newest;
      },
      [&] { return seen >= packets; });
  EXPECT_EQ(seen, packets);
  EXPECT_EQ(tooLong, 1U);
  press("Command4");
  EXPECT_TRUE(find<QPushButton>(*window, "Command4")->isChecked());
}

}  // namespace
}  // namespace touch
