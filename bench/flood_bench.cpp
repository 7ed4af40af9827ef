#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <thread>

#include "bench/subjects.h"
#include "bench/tools/child_program.h"
#include "bench/tools/paced_line.h"
#include "bench/tools/processor_time.h"
#include "bench/tools/resident_bytes.h"
#include "bench/tools/rounds.h"
#include "bench/tools/scratch_folder.h"
#include "bench/tools/x_server.h"
#include "core/driver/nexapi.h"
#include "serial/debugger/frmRSDebug.h"
#include "serial/port/asio_serial_port.h"
#include "serial/rawdrawing/frmRsDraw.h"
#include "ui/event_loop_clock.h"
#include "ui/screens/panel_monitor.h"

namespace touch::bench {

namespace {

using namespace std::chrono_literals;

constexpr int fastest = 4'000'000;  // baud
constexpr auto ownFlood = 60s;
constexpr auto watchedFlood = 10s;
// By then the console has all the lines that it keeps.
constexpr auto fillingUp = 20s;
constexpr auto settling = 500ms;

/// Who gets all boxes away at once.
class HastyPrompt final : public Prompt {
 public:
  void message(std::string_view, std::string_view) override {}
  bool await(std::string_view, std::string_view) override { return false; }
  bool proceed(std::string_view, std::string_view) override { return false; }
  Answer ask(std::string_view, std::string_view) override { return Answer::none; }
  std::optional<std::string> input(std::string_view, std::string_view) override { return {}; }
};

/// What a debugger needs around it, with the line's far end behind COM1.
struct FloodDesk {
  PacedLine line{rounds(), fastest};
  ComPorts ports = [this] {
    ComPorts all;
    all.assignUnlessGiven(1, [this] { return line.device(); });
    return all;
  }();
  std::unique_ptr<NexapiDriver> driver = std::move(*NexapiDriver::bind(SIMULATOR_LIBRARY));
  AsioSerialPort port{ports};
  EventLoopClock clock;
  HastyPrompt prompt;
  Session session;
  ScratchFolder folder;
  Access access() { return {session, *driver, clock}; }
};

/// Sends a flood for a minute and counts the processor time that a megabyte of it takes, how long
/// the windows stand still at most, and by what the memory grows once the console is full.
void flood(benchmark::State& state, FloodDesk& desk) {
  for (auto _ : state) {
    const std::size_t sentBefore = desk.line.sentBytes();
    const double before = processorSeconds(CLOCK_PROCESS_CPUTIME_ID);
    const auto begin = desk.clock.now();
    std::size_t full = 0;
    std::chrono::duration<double> longest{};
    desk.line.start();
    // Waiting for an event that comes is no standing still.
    QTimer heart;
    heart.start(2);
    for (auto now = begin; now < begin + ownFlood;) {
      if (full == 0 && now > begin + fillingUp) full = residentBytes("self");
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
      const auto then = std::exchange(now, desk.clock.now());
      longest = std::max<std::chrono::duration<double>>(longest, now - then);
    }
    desk.line.stop();
    const double taken =
        processorSeconds(CLOCK_PROCESS_CPUTIME_ID) - before - desk.line.processorSeconds();
    state.counters["a megabyte"] =
        taken / (static_cast<double>(desk.line.sentBytes() - sentBefore) / 1e6);
    state.counters["longest"] = longest.count();
    const std::size_t last = residentBytes("self");
    state.counters["growth"] = static_cast<double>(last - std::min(full, last));
  }
  if (!desk.line.wasDrained()) state.SkipWithError("the line ran over");
}

void receive(benchmark::State& state) {
  FloodDesk desk;
  QWidget main;
  DrawingSwitches switches;
  PanelMonitor panelMonitor;
  SendHistory history;
  frmRSDebug window(desk.access(), desk.prompt, desk.port,
                    DebuggerSurroundings{desk.folder.path(),
                                         {},
                                         switches,
                                         {},
                                         {},
                                         panelMonitor,
                                         main,
                                         history,
                                         "Bench 1",
                                         {},
                                         desk.ports},
                    [](DebuggerEnd) {});
  window.open();
  window.findChild<QPushButton*>("Command3")->click();
  desk.clock.delay(settling, nullptr);
  flood(state, desk);
  window.leave(DebuggerEnd::quit);
}

void record(benchmark::State& state) {
  FloodDesk desk;
  Debugger debugger(desk.access(), desk.prompt, desk.port, {}, desk.ports);
  if (const auto taken = debugger.takePort(); !taken)
    return state.SkipWithError(taken.error().c_str());
  const auto before = debugger.lineView().received;
  const auto sentBefore = desk.line.sentBytes();
  debugger.startRecording(desk.folder.path() / "flood.txt", "Bench 1");
  flood(state, desk);
  desk.clock.delay(settling, nullptr);
  if (debugger.lineView().received - before != desk.line.sentBytes() - sentBefore)
    state.SkipWithError("not all was recorded");
  debugger.leave();
}

void draw(benchmark::State& state) {
  FloodDesk desk;
  Debugger debugger(desk.access(), desk.prompt, desk.port, {}, desk.ports);
  if (const auto taken = debugger.takePort(); !taken)
    return state.SkipWithError(taken.error().c_str());
  DrawingSwitches switches;
  const MessageTable messages;
  frmRsDraw window({desk.clock, desk.prompt, messages, switches, debugger.makeDecoder(),
                    Simulation(), QSize(1024, 768)},
                   debugger.beginDrawing(), *QGuiApplication::primaryScreen(), [] {});
  window.open();
  desk.clock.delay(settling, nullptr);
  flood(state, desk);
  debugger.endDrawing();
  debugger.leave();
}

/// Sends the same flood to another program.
void floodChild(benchmark::State& state, PacedLine& line, const ChildProgram& program) {
  for (auto _ : state) {
    const auto before = program.processorTime();
    line.start();
    std::this_thread::sleep_for(watchedFlood);
    line.stop();
    state.counters["a megabyte"] =
        (program.processorTime() - before).count() / (static_cast<double>(line.sentBytes()) / 1e6);
    state.counters["of what was due"] =
        static_cast<double>(line.sentBytes()) /
        (fastest / 10.0 * std::chrono::duration<double>(watchedFlood).count());
  }
}

void readByCat(benchmark::State& state) {
  PacedLine line(rounds(), fastest);
  const ChildProgram cat({"/bin/sh", "-c", "exec cat " + line.device() + " >/dev/null"});
  std::this_thread::sleep_for(settling);
  floodChild(state, line, cat);
}

constexpr const char* cuteCom = "/usr/bin/cutecom";
constexpr const char* keys = "/usr/bin/xdotool";

/// CuteCom shows what comes in hexadecimal, in a window under an X server of its own.
void readByCuteCom(benchmark::State& state) {
  PacedLine line(rounds(), fastest);
  const ScratchFolder home;
  std::filesystem::create_directory(home.path() / "CuteCom");
  std::ofstream(home.path() / "CuteCom" / "CuteCom5.conf")
      << "[sessions]\n1\\BaudRate=115200\n1\\DataBits=8\n1\\Device=" << line.device()
      << "\n1\\FlowControl=0\n1\\OpenMode=3\n1\\Parity=0\n1\\StopBits=1\n"
         "1\\name=Default\nsize=1\n";
  const XServer screen;
  const std::string& display = screen.display();
  const ChildProgram program(
      {cuteCom}, {display, "HOME=" + home.path().string(), "QT_QPA_PLATFORM=xcb",
                  "XDG_CONFIG_HOME=" + home.path().string(), "LD_PRELOAD=" MODEM_LINES});
  // It opens its device by Alt+O and shows hexadecimal by Alt+X.
  ChildProgram({keys, "search", "--sync", "--onlyvisible", "--class", "cutecom", "sleep", "2",
                "windowfocus", "key", "alt+o", "sleep", "3", "key", "alt+x", "sleep", "1"},
               {display})
      .awaitEnd();
  floodChild(state, line, program);
  if (line.sentBytes() < 100'000) state.SkipWithError("CuteCom does not read");
}

bool isThere(const char* program) {
  if (access(program, X_OK) == 0) return true;
  std::fprintf(stderr, "%s is not there: a flood is not compared with CuteCom.\n", program);
  return false;
}

}  // namespace

void registerFlood() {
  const auto add = [](const char* name, void (*run)(benchmark::State&)) {
    return benchmark::RegisterBenchmark(name, run)->Iterations(1)->Repetitions(3);
  };
  add("flood/receive", receive)->Repetitions(1);
  add("flood/recording", record)->Repetitions(1);
  add("flood/raw drawing", draw)->Repetitions(1);
  add("flood/cat", readByCat);
  if (isThere(cuteCom) && XServer::isThere() && isThere(keys)) add("flood/CuteCom", readByCuteCom);
}

}  // namespace touch::bench
