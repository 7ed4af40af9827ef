#include <benchmark/benchmark.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "bench/subjects.h"
#include "bench/tools/processor_time.h"
#include "core/driver/nexapi.h"
#include "core/exchange/exchange.h"
#include "support/system_clock.h"
#include "ui/event_loop_clock.h"

namespace touch::bench {

namespace {

using std::chrono::steady_clock;

constexpr int exchanges = 5;
constexpr std::string_view unitType = "UT";

/// Times `action`. In seconds, the counter "overhead" is what it takes beyond `stated`, of several
/// times the middle one, and "processor" the processor time.
template <typename Action>
void time(benchmark::State& state, std::chrono::milliseconds stated, const Action& action) {
  std::vector<double> overheads;
  const double processorBefore = processorSeconds(CLOCK_THREAD_CPUTIME_ID);
  for (auto _ : state) {
    const auto begin = steady_clock::now();
    action();
    const std::chrono::duration<double> taken = steady_clock::now() - begin;
    state.SetIterationTime(taken.count());
    overheads.push_back(std::chrono::duration<double>(taken - stated).count());
  }
  state.counters["processor"] = {processorSeconds(CLOCK_THREAD_CPUTIME_ID) - processorBefore,
                                 benchmark::Counter::kAvgIterations};
  std::ranges::sort(overheads);
  state.counters["overhead"] = overheads[overheads.size() / 2];
}

/// Opens the simulated controller, asks for its unit type, and closes it.
void exchange(benchmark::State& state, Clock& clock) {
  const auto driver = NexapiDriver::bind(SIMULATOR_LIBRARY);
  if (!driver) return state.SkipWithError(driver.error().describe().c_str());
  Session session;
  const Access access{session, **driver, clock};
  session.controllerName = controllerName(**driver, 1).value_or("");
  bool answered = true;
  time(state, enquiryWait, [&] {
    Connection connection(access);
    answered &=
        !ask(connection, clock, commandFrame(unitType), {.wait = enquiryWait}).bytes.empty();
  });
  if (!answered) state.SkipWithError("the simulated controller does not answer");
}

}  // namespace

void registerExchange() {
  const auto add = [](const char* name, const auto& function) {
    benchmark::RegisterBenchmark(name, function)->UseManualTime()->Iterations(exchanges);
  };
  add("exchange/shell", [](benchmark::State& state) {
    SystemClock clock;
    exchange(state, clock);
  });
  add("exchange/window", [](benchmark::State& state) {
    EventLoopClock clock;
    exchange(state, clock);
  });
  add("exchange/bare wait", [](benchmark::State& state) {
    time(state, enquiryWait, [] { std::this_thread::sleep_for(enquiryWait); });
  });
}

}  // namespace touch::bench
