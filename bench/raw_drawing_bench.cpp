#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QLabel>
#include <QRegularExpression>

#include "bench/subjects.h"
#include "bench/tools/paced_line.h"
#include "bench/tools/processor_time.h"
#include "bench/tools/rounds.h"
#include "bench/tools/silent_prompt.h"
#include "core/messages/messages.h"
#include "serial/port/asio_serial_port.h"
#include "serial/rawdrawing/frmRsDraw.h"
#include "ui/event_loop_clock.h"

namespace touch::bench {

namespace {

using namespace std::chrono_literals;

constexpr auto watchedDrawing = 20s;
constexpr QSize drawnScreen(1920, 1080);

std::size_t drawnReports(const QWidget& window) {
  const QString text = window.findChild<QLabel*>("lblStray")->text();
  return QRegularExpression("\\d+").match(text).captured().toULongLong();
}

void draw(benchmark::State& state) {
  PacedLine line(rounds());
  ComPorts ports;
  ports.assignUnlessGiven(1, [&line] { return line.device(); });
  AsioSerialPort port(ports);
  port.setSettings(normalLineSettings);
  port.selectPort(1);
  if (const auto opened = port.open(); !opened) return state.SkipWithError(opened.error().c_str());
  EventLoopClock clock;
  SilentPrompt prompt;
  DrawingSwitches switches;
  const MessageTable messages;
  Gate gate(clock);
  frmRsDraw window({clock, prompt, messages, switches, ReportDecoder(ReportFamily::tablet),
                    Simulation(), drawnScreen},
                   {port, gate, {}}, *QGuiApplication::primaryScreen(), [] {});
  window.open();
  clock.delay(500ms, nullptr);
  for (auto _ : state) {
    const double before = processorSeconds(CLOCK_PROCESS_CPUTIME_ID);
    line.start();
    clock.delay(watchedDrawing, nullptr);
    line.stop();
    const double taken =
        processorSeconds(CLOCK_PROCESS_CPUTIME_ID) - before - line.processorSeconds();
    state.counters["share"] = taken / std::chrono::duration<double>(watchedDrawing).count();
  }
  clock.delay(500ms, nullptr);
  constexpr std::size_t packet = 5;
  if (drawnReports(window) != line.sentBytes() / packet) {
    state.SkipWithError("not all reports were drawn");
  }
}

}  // namespace

void registerRawDrawing() {
  benchmark::RegisterBenchmark("raw drawing", draw)->Iterations(1)->Repetitions(3);
}

}  // namespace touch::bench
