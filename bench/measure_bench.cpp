#include <benchmark/benchmark.h>

#include <QApplication>
#include <algorithm>
#include <chrono>

#include "bench/subjects.h"
#include "measure/judging/verdict.h"
#include "measure/truth/trial.h"
#include "measure/windows/frmVerdict.h"

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

/// What a user waits for at most who turns a page while lines are analysed beside it.
void serveWindow(benchmark::State& state) {
  const auto measurement = slowLines();
  measure::frmVerdict page;
  page.resize(1024, 768);
  page.show();
  bool isShown = false;
  QObject::connect(&page, &measure::frmVerdict::shown, &page, [&] { isShown = true; });
  std::chrono::duration<double> longest{};
  for (auto _ : state) {
    isShown = false;
    page.showMeasurement(measurement);
    while (!isShown) {
      const auto before = std::chrono::steady_clock::now();
      QApplication::processEvents();
      longest = std::max<std::chrono::duration<double>>(longest,
                                                        std::chrono::steady_clock::now() - before);
    }
  }
  state.counters["longest"] = longest.count();
}

}  // namespace

void registerMeasure() {
  benchmark::RegisterBenchmark("measure/18 lines", analyse);
  benchmark::RegisterBenchmark("measure/window meanwhile", serveWindow);
}

}  // namespace touch::bench
