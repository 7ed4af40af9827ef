#include <benchmark/benchmark.h>

#include "bench/subjects.h"
#include "measure/truth/trial.h"
#include "measure/verdict.h"

namespace touch::bench {

namespace {

/// Eighteen lines of about 3,000 samples each, on a bowed panel.
measure::Measurement slowLines() {
  measure::truth::Trial trial;
  trial.size = {{344}, {194}, measure::SizeSource::user};
  trial.traits.bow = 0.002;
  trial.hand.speed = 9;  // mm a second, at 100 reports a second
  return measure::truth::record(trial, {}, measure::profiles().front().limits);
}

void analyse(benchmark::State& state) {
  const auto measurement = slowLines();
  for (auto _ : state) {
    const auto analysis = measure::analyse(measurement);
    if (!analysis.field) return state.SkipWithError("there is no map");
    benchmark::DoNotOptimize(measure::mapOf(*analysis.field));
    benchmark::DoNotOptimize(measure::judge(measurement, analysis));
  }
}

}  // namespace

void registerMeasure() {
  benchmark::RegisterBenchmark("measure/18 lines", analyse);
}

}  // namespace touch::bench
