#include <benchmark/benchmark.h>

#include <memory>

#include "bench/subjects.h"
#include "bench/tools/child_program.h"
#include "bench/tools/scratch_folder.h"

namespace touch::bench {

namespace {

using std::chrono::steady_clock;

double secondsSince(steady_clock::time_point begin) {
  return std::chrono::duration<double>(steady_clock::now() - begin).count();
}

void untilPainted(benchmark::State& state, const std::vector<std::string>& arguments) {
  double processor = 0;
  std::size_t resident = 0;
  for (auto _ : state) {
    const auto begin = steady_clock::now();
    const ChildProgram program(
        arguments, {"QT_PLUGIN_PATH=" BENCH_PLUGINS, "QT_QPA_GENERIC_PLUGINS=first_paint"});
    program.awaitOutput();
    state.SetIterationTime(secondsSince(begin));
    processor += program.processorTime().count();
    resident += program.residentBytes();
  }
  state.counters["processor"] = {processor, benchmark::Counter::kAvgIterations};
  state.counters["resident"] = {static_cast<double>(resident), benchmark::Counter::kAvgIterations};
}

void untilEnd(benchmark::State& state, const std::vector<std::string>& arguments) {
  double processor = 0;
  for (auto _ : state) {
    const auto begin = steady_clock::now();
    ChildProgram program(arguments);
    processor += program.awaitEnd().count();
    state.SetIterationTime(secondsSince(begin));
  }
  state.counters["processor"] = {processor, benchmark::Counter::kAvgIterations};
}

}  // namespace

void registerStart() {
  constexpr int windows = 3;
  constexpr int runs = 40;
  const auto folder = std::make_shared<ScratchFolder>();
  benchmark::RegisterBenchmark("start/touchutility",
                               [folder](benchmark::State& state) {
                                 untilPainted(state, {PROGRAMS "/touchutility", "--simulate",
                                                      "--work-dir", folder->path().string()});
                               })
      ->UseManualTime()
      ->Iterations(windows);
  benchmark::RegisterBenchmark(
      "start/hosted",
      [folder](benchmark::State& state) {
        untilPainted(state, {PROGRAMS "/touchutility", "--simulate", "--driver-hosted",
                             "--work-dir", folder->path().string()});
      })
      ->UseManualTime()
      ->Iterations(windows);
  benchmark::RegisterBenchmark(
      "start/empty window",
      [](benchmark::State& state) { untilPainted(state, {PROGRAMS "/empty_window"}); })
      ->UseManualTime()
      ->Iterations(windows);
  benchmark::RegisterBenchmark("version/touchctl",
                               [](benchmark::State& state) {
                                 untilEnd(state, {PROGRAMS "/touchctl", "--version"});
                               })
      ->UseManualTime()
      ->Iterations(runs);
  benchmark::RegisterBenchmark(
      "version/empty program",
      [](benchmark::State& state) { untilEnd(state, {PROGRAMS "/empty_program"}); })
      ->UseManualTime()
      ->Iterations(runs);
}

}  // namespace touch::bench
