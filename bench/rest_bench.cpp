#include <benchmark/benchmark.h>

#include <thread>

#include "bench/subjects.h"
#include "bench/tools/child_program.h"
#include "bench/tools/processor_time.h"
#include "bench/tools/scratch_folder.h"
#include "support/system_clock.h"
#include "ui/event_loop_clock.h"

namespace touch::bench {

namespace {

using namespace std::chrono_literals;

constexpr auto settling = 10s;  // the start with all its exchanges is over by then
constexpr auto watched = 60s;

/// Of one core, over the minute.
double share(std::chrono::duration<double> processorTime) {
  return processorTime / watched;
}

double shareOfWaiting(Clock& clock) {
  const double before = processorSeconds(CLOCK_THREAD_CPUTIME_ID);
  clock.delay(watched);
  return share(std::chrono::duration<double>(processorSeconds(CLOCK_THREAD_CPUTIME_ID) - before));
}

// The same minute for all: both programs at rest, and a wait in each kind of clock.
void rest(benchmark::State& state) {
  const ScratchFolder folder;
  for (auto _ : state) {
    const ChildProgram program(
        {PROGRAMS "/touchutility", "--simulate", "--work-dir", folder.path().string()});
    const ChildProgram empty({PROGRAMS "/empty_window"});
    std::this_thread::sleep_for(settling);
    const auto programBefore = program.processorTime();
    const auto emptyBefore = empty.processorTime();
    double inShell = 0;
    std::thread shell([&inShell] {
      SystemClock clock;
      inShell = shareOfWaiting(clock);
    });
    EventLoopClock clock;
    state.counters["wait in a window"] = shareOfWaiting(clock);
    shell.join();
    state.counters["wait in the shell"] = inShell;
    state.counters["touchutility"] = share(program.processorTime() - programBefore);
    state.counters["empty window"] = share(empty.processorTime() - emptyBefore);
    state.counters["resident"] = static_cast<double>(program.residentBytes());
    state.counters["resident empty"] = static_cast<double>(empty.residentBytes());
    state.SetIterationTime(std::chrono::duration<double>(watched).count());
  }
}

}  // namespace

void registerRest() {
  benchmark::RegisterBenchmark("rest", rest)->UseManualTime()->Iterations(1)->Repetitions(1);
}

}  // namespace touch::bench
