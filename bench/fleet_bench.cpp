#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/subjects.h"
#include "bench/tools/scratch_folder.h"
#include "commission/bundle/bundle.h"
#include "commission/bundle/fleet.h"
#include "measure/truth/trial.h"

namespace touch::bench {

namespace {

constexpr int panels = 1000;

/// The bundles of so many panels, each measured in full.
void commissionPanels(const std::filesystem::path& folder) {
  commission::Run run;
  run.use = "kiosk";
  run.profile = commission::Profile::full;
  run.began = "2026-11-12T14:05:59+0100";
  measure::truth::Trial trial;
  trial.size = {{344}, {194}, measure::SizeSource::user};
  trial.traits.bow = 0.002;
  const auto measurement = measure::truth::record(trial, commission::planOf(run.profile),
                                                  measure::findProfile(run.use)->limits);
  const measure::Report report = commission::reportOf(run, measurement);
  for (int panel = 0; panel < panels; ++panel) {
    run.panel.serialNumber = "A-" + std::to_string(panel);
    const auto made = commission::RunFolder::make(folder, run).value();
    if (!made.saveMeasurement(measurement) ||
        !made.write("sheet.json", commission::sheetJson(run, &report).dump(2)) ||
        !commission::writeBundle(made, run))
      throw std::runtime_error("a bundle cannot be written");
  }
}

/// Made once: that takes longer than anything that is measured.
const std::filesystem::path& bundles() {
  static const auto folder = [] {
    auto made = std::make_unique<const ScratchFolder>();
    commissionPanels(made->path());
    return made;
  }();
  return folder->path();
}

void summarise(benchmark::State& state) {
  const auto& folder = bundles();
  for (auto _ : state) {
    const auto files = commission::bundlesIn(folder).value();
    std::vector<commission::Visit> visits;
    for (const auto& file : files)
      visits.push_back(commission::readVisit(file).value());
    if (commission::panelsOf(std::move(visits)).size() != panels)
      return state.SkipWithError("a panel is missing");
  }
}

}  // namespace

void registerFleet() {
  benchmark::RegisterBenchmark("fleet/summary", summarise)->Iterations(1)->Unit(benchmark::kSecond);
}

}  // namespace touch::bench
