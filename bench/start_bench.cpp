#include <benchmark/benchmark.h>

#include <functional>
#include <memory>

#include "bench/subjects.h"
#include "bench/tools/child_program.h"
#include "bench/tools/scratch_folder.h"
#include "bench/tools/x_server.h"

namespace touch::bench {

namespace {

using std::chrono::steady_clock;

double secondsSince(steady_clock::time_point begin) {
  return std::chrono::duration<double>(steady_clock::now() - begin).count();
}

using Environment = std::vector<std::string>;

void untilPainted(benchmark::State& state, const std::vector<std::string>& arguments,
                  Environment screen) {
  screen.insert(screen.end(),
                {"QT_PLUGIN_PATH=" BENCH_PLUGINS, "QT_QPA_GENERIC_PLUGINS=first_paint"});
  double processor = 0;
  std::size_t resident = 0;
  for (auto _ : state) {
    const auto begin = steady_clock::now();
    const ChildProgram program(arguments, screen);
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

void registerWindows(const std::string& where, const std::function<Environment()>& screen) {
  constexpr int windows = 3;
  const auto folder = std::make_shared<ScratchFolder>();
  const auto add = [&](const std::string& name, const std::vector<std::string>& arguments) {
    benchmark::RegisterBenchmark((name + where).c_str(),
                                 [folder, screen, arguments](benchmark::State& state) {
                                   untilPainted(state, arguments, screen());
                                 })
        ->UseManualTime()
        ->Iterations(windows);
  };
  const std::string work = folder->path().string();
  add("start/touchutility", {PROGRAMS "/touchutility", "--simulate", "--work-dir", work});
  add("start/hosted",
      {PROGRAMS "/touchutility", "--simulate", "--driver-hosted", "--work-dir", work});
  add("start/empty window", {PROGRAMS "/empty_window"});
}

}  // namespace

void registerStart() {
  constexpr int runs = 40;
  registerWindows(" in memory", [] { return Environment{"QT_QPA_PLATFORM=offscreen"}; });
  if (XServer::isThere()) {
    const auto server = std::make_shared<std::unique_ptr<XServer>>();
    registerWindows("", [server] {
      if (!*server) *server = std::make_unique<XServer>();
      return Environment{"QT_QPA_PLATFORM=xcb", (*server)->display()};
    });
  }
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
