#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

#include "bench/subjects.h"
#include "core/driver/connection.h"
#include "core/driver/host/hosted_driver.h"
#include "core/driver/nexapi.h"
#include "support/system_clock.h"

namespace touch::bench {

namespace {

/// A driver that is waited for, and never lost.
class Endless final : public DriverPatience {
 public:
  Next stillWaiting(const DriverWait&) override { return Next::wait; }
  bool isEnding() const override { return false; }
  void lost(const std::string&) override {}
};

/// The counter "middle" is what one operation takes, in seconds: of all the one in the middle.
void operation(benchmark::State& state, Driver& driver) {
  using std::chrono::steady_clock;
  const std::int32_t handle = driver.OpenController("USB DEVICE 2");
  std::vector<double> taken;
  for (auto _ : state) {
    const auto begin = steady_clock::now();
    benchmark::DoNotOptimize(driver.GetRotation(handle));
    taken.push_back(std::chrono::duration<double>(steady_clock::now() - begin).count());
    state.SetIterationTime(taken.back());
  }
  driver.CloseController(handle);
  std::ranges::sort(taken);
  state.counters["middle"] = taken[taken.size() / 2];
  if (!Connection::isHandle(handle)) state.SkipWithError("the controller cannot be opened");
}

}  // namespace

void registerDriver() {
  constexpr int operations = 2000;
  const auto add = [](const char* name, const auto& function) {
    benchmark::RegisterBenchmark(name, function)->UseManualTime()->Iterations(operations);
  };
  add("driver/direct", [](benchmark::State& state) {
    const auto driver = NexapiDriver::bind(SIMULATOR_LIBRARY);
    if (!driver) return state.SkipWithError(driver.error().describe().c_str());
    operation(state, **driver);
  });
  add("driver/hosted", [](benchmark::State& state) {
    SystemClock clock;
    Endless patience;
    const auto driver = HostedDriver::bind([] { return startHostProcess(PROGRAMS "/touchdriver"); },
                                           SIMULATOR_LIBRARY, clock, patience);
    if (!driver) return state.SkipWithError(driver.error().describe().c_str());
    operation(state, **driver);
  });
}

}  // namespace touch::bench
