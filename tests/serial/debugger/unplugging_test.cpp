#include <random>

#include "serial/debugger/debugger.h"
#include "serial/port/asio_serial_port.h"
#include "serial/rawdrawing/raw_drawing.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/temporary_folder.h"
#include "tests/linetest/canvas/recording_surface.h"
#include "tests/ports/pseudo_terminal.h"

namespace touch::test {
namespace {

/// The debugger on a pseudo-terminal that is unplugged at any moment, while everything is recorded.
/// The controller at the far end sends numbered reports without end, and answers.
class Unplugging : public Desk, public testing::WithParamInterface<unsigned> {
 protected:
  Unplugging() {
    answerEnd_ = bytesOf("\r");
    beat_ = clock.makeTimer([this] { beat(); });
    // As the window does.
    watch_ = clock.makeTimer([this] { debugger.watch(); });
  }
  void SetUp() override {
    folder.write("s.tus", "touch script 1\nrepeat 3\n  send 01 \"Z\" 0D\n  wait 100 ms\nend\n");
    folder.write("r.txt", "touch recording 1\n0.010000 < D8 10 20 30 01\n9.000000 < 41\n");
    ASSERT_EQ(whyNot(debugger.script().choose(folder.path() / "s.tus")), "");
    ASSERT_EQ(whyNot(debugger.takePort()), "");
    beat_->start(beatInterval);
    watch_->start(100ms);
  }
  void TearDown() override {
    debugger.leave();
    Desk::TearDown();
  }

  void record() {
    file_ = folder.path() / "kept.txt";
    sent_.clear();
    debugger.startRecording(file_, "test");
  }
  /// That the recording has all that arrived, once and in order.
  void expectRecorded() {
    debugger.stopRecording();
    Bytes recorded;
    const auto recording = std::move(*RecordingFile::open(file_));
    while (const auto transfer = recording->next()) {
      if (transfer->direction == Direction::fromController)
        recorded.insert(recorded.end(), transfer->bytes.begin(), transfer->bytes.end());
    }
    std::span<const std::uint8_t> rest = recorded;
    for (const auto& [bytes, arrived] : sent_) {
      const auto next = rest.first(std::min(rest.size(), bytes.size()));
      if (std::ranges::equal(next, bytes)) {
        rest = rest.subspan(bytes.size());
      } else {
        ASSERT_FALSE(arrived) << "lost: " << hexText(bytes) << ", instead of it " << hexText(next);
      }
    }
    EXPECT_TRUE(rest.empty()) << "never sent: " << hexText(rest);
  }

  void unplug() {
    if (!terminal->isPluggedIn()) return;
    // What the system had and nobody could read yet is gone with the device.
    if (!sent_.empty() && clock.now() - sentAt_ <= readWithin) sent_.back().second = false;
    // As a search in vain leaves it.
    wasClosed = !debugger.portIsOpen() && !debugger.isBusy();
    terminal->unplug();
  }
  void plugIn() {
    if (!terminal->isPluggedIn()) terminal.emplace();
  }

  void send(const char* set, const char* entry) {
    debugger.chooseSet(set == std::string("e02") ? CommandSet::e02 : CommandSet::m01);
    debugger.send({.entry = entry});
    debugger.chooseSet(CommandSet::m01);
  }
  void receive(bool rate) {
    debugger.receiveMode().measureRate(rate);
    debugger.receiveMode().receive();
    clock.delay(300ms);
    debugger.receiveMode().debug();
    debugger.receiveMode().measureRate(false);
  }
  void draw() {
    RecordingSurface surface;
    RawDrawing drawing(clock, debugger.beginDrawing(), {surface, {10000, 10000}, {}},
                       debugger.makeDecoder());
    drawing.start();
    clock.delay(300ms);
    drawing.stop();
    debugger.endDrawing();
  }
  void replay() {
    debugger.startReplay(folder.path() / "r.txt");
    clock.delay(200ms);
    debugger.stopReplay();
  }
  void holdAndSeek() {
    debugger.startReplay(folder.path() / "r.txt");
    debugger.replay()->pause(true);
    clock.delay(200ms);
    debugger.replay()->seek(8s);
    debugger.replay()->pause(false);
    clock.delay(150ms);
    debugger.stopReplay();
  }
  void searchEverywhere() {
    // What this machine has beside it would be asked for long.
    clock.after(1s, [this] { debugger.stopSearch(); });
    debugger.searchEverywhere();
  }

  static constexpr std::chrono::milliseconds beatInterval{40};
  /// A recording looks this often what has come.
  static constexpr std::chrono::milliseconds readWithin{2};

  TemporaryFolder folder;
  std::optional<PseudoTerminal> terminal{std::in_place};
  ComPorts comPorts = [this] {
    ComPorts ports;
    ports.assignUnlessGiven(1, [this] { return terminal->path(); });
    return ports;
  }();
  AsioSerialPort port{comPorts};
  Debugger debugger{access(), prompt, port, {}, comPorts};
  bool wasClosed = false;  ///< when it was unplugged, or the debugger had given it back

 private:
  void beat() {
    if (!terminal->isPluggedIn() || !port.isOpen()) return;
    const auto low = static_cast<std::uint8_t>(number_ & 0x7F);
    const auto high = static_cast<std::uint8_t>(number_ >> 7 & 0x7F);
    // Every now and then what an answer ends with.
    Bytes bytes = number_ % 7 == 0 ? answerEnd_ : Bytes{0xD8, low, high, 1, 2};
    ++number_;
    sentAt_ = clock.now();
    terminal->send(bytes);
    sent_.emplace_back(std::move(bytes), true);
  }

  fs::path file_;
  std::vector<std::pair<Bytes, bool>> sent_;  ///< and whether it must have arrived
  Clock::TimePoint sentAt_{};
  Bytes answerEnd_;
  unsigned number_ = 0;
  std::unique_ptr<Timer> beat_;
  std::unique_ptr<Timer> watch_;
};

TEST_P(Unplugging, AtAnyMomentOfAnyActionHangsNothingAndLosesNoByteThatHadArrived) {
  const struct {
    const char* name;
    std::function<void()> run;
  } actions[] = {
      {"nothing", [this] { clock.delay(300ms); }},
      {"receiving", [this] { receive(false); }},
      {"measuring", [this] { receive(true); }},
      {"sending", [this] { send("m01", "UT=Unit Type[w]"); }},
      {"sending E02", [this] { send("e02", "i==ID[d]"); }},
      {"changing the line", [this] { send("m01", "N72toN81"); }},
      {"sending bytes", [this] { debugger.sendBytes(bytesOf("\x01UT\r")); }},
      {"a script", [this] { debugger.runScript(); }},
      {"drawing", [this] { draw(); }},
      {"replaying", [this] { replay(); }},
      {"drawing a replay",
       [this] {
         debugger.startReplay(folder.path() / "r.txt");
         draw();
         debugger.stopReplay();
       }},
      {"a break", [this] { debugger.sendBreak(); }},
      {"setting the line",
       [this] {
         debugger.setLine({19200, Parity::none, 8, 1});
       }},
      {"holding and seeking in a replay", [this] { holdAndSeek(); }},
      {"searching", [this] { debugger.searchPort(); }},
      {"searching everywhere", [this] { searchEverywhere(); }},
      {"opening anew",
       [this] {
         debugger.usePort({.number = 1, .device = terminal->path()});
         clock.delay(300ms);
         debugger.takePort();
       }},
      {"recording anew", [this] { expectRecorded(), record(), clock.delay(300ms); }},
      {"leaving",
       [this] {
         clock.delay(100ms);
         debugger.leave();
         if (!debugger.takePort()) wasClosed = true;
         expectRecorded(), record();
       }},
  };
  std::mt19937 random(GetParam());
  record();
  int unplugged = 0;
  for (int round = 0; unplugged < 100; ++round) {
    const auto& [name, run] = actions[random() % std::size(actions)];
    const std::chrono::milliseconds moment(random() % 400);
    SCOPED_TRACE(testing::Message() << "round " << round << ", " << name << ", unplugged after "
                                    << moment.count() << " ms");
    journal.clear();
    wasClosed = false;
    const auto begun = clock.now();
    clock.after(moment, [this] { unplug(); });
    run();
    // Some moments are behind the action: then it happens while nothing is done.
    clock.delay(600ms);
    ASSERT_FALSE(terminal->isPluggedIn());
    ++unplugged;
    EXPECT_LT(clock.now() - begun, 10s) << "it goes on without end";
    EXPECT_FALSE(debugger.isBusy());
    EXPECT_FALSE(debugger.portIsOpen());
    EXPECT_LE(matching(journal, "^message COM1").size(), 1u) << "that it has gone is told once";
    const bool comesBack = debugger.isAwaitingPort();
    plugIn();
    clock.delay(200ms);
    if (!comesBack) {
      EXPECT_TRUE(wasClosed) << "whatever was done meanwhile";
      EXPECT_EQ(whyNot(debugger.takePort()), "");
    }
    ASSERT_TRUE(debugger.portIsOpen());
    const auto before = debugger.lineView().received;
    clock.delay(100ms);
    EXPECT_GT(debugger.lineView().received, before) << "bytes come in again";
    EXPECT_TRUE(debugger.isRecording());
    if (HasFailure()) return;
    // All of it in one file would be compared for long.
    if (round % 20 == 19) expectRecorded(), record();
    if (HasFatalFailure()) return;
  }
  expectRecorded();
}

// Five hundred in all, so that they can be tried side by side.
INSTANTIATE_TEST_SUITE_P(Seeds, Unplugging, testing::Range(1U, 6U));

}  // namespace
}  // namespace touch::test
