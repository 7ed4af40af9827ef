#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QLabel>
#include <QRegularExpression>
#include <cmath>

#include "bench/paced_line.h"
#include "bench/processor_time.h"
#include "bench/silent_prompt.h"
#include "bench/subjects.h"
#include "core/messages/messages.h"
#include "serial/port/asio_serial_port.h"
#include "serial/rawdrawing/frmRsDraw.h"
#include "ui/event_loop_clock.h"

namespace touch::bench {

namespace {

using namespace std::chrono_literals;

constexpr auto watchedDrawing = 20s;
constexpr QSize drawnScreen(1920, 1080);

/// A finger that goes round on the panel, lifted once in a round.
std::vector<std::uint8_t> rounds() {
  constexpr int reportsInRound = 200;
  std::vector<std::uint8_t> bytes;
  for (int i = 0; i < reportsInRound; ++i) {
    const double angle = 2 * M_PI * i / reportsInRound;
    const auto x = static_cast<unsigned>(8192 + 6000 * std::cos(angle));
    const auto y = static_cast<unsigned>(8192 + 6000 * std::sin(angle));
    const unsigned status = i == reportsInRound - 1 ? 0x98 : 0xD8;
    for (const unsigned byte : {status, x & 0x7FU, x >> 7U, y & 0x7FU, y >> 7U})
      bytes.push_back(static_cast<std::uint8_t>(byte));
  }
  return bytes;
}

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
