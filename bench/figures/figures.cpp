#include "bench/figures/figures.h"

#include <algorithm>

namespace touch::bench {

namespace {

/// The library says so by a flag in old releases, and by the reason in new ones.
template <typename Run>
bool hasFailed(const Run& run) {
  if constexpr (requires { run.error_occurred; }) {
    return run.error_occurred;
  } else {
    return run.skipped != decltype(run.skipped){};
  }
}

}  // namespace

void Figures::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    failed_ |= hasFailed(run);
    if (hasFailed(run) || run.run_type != Run::RT_Iteration) continue;
    const std::string& name = run.run_name.function_name;
    const double total =
        run.run_name.time_type.empty() ? run.cpu_accumulated_time : run.real_accumulated_time;
    values_[{name, {}}].push_back(total / static_cast<double>(run.iterations));
    for (const auto& [counter, value] : run.counters)
      values_[{name, counter}].push_back(value);
  }
}

std::optional<Figure> Figures::of(const Quantity& quantity) const {
  const auto found = values_.find(quantity);
  if (found == values_.end()) return std::nullopt;
  auto values = found->second;
  std::ranges::sort(values);
  const auto at = [&values](std::size_t quarters) {
    return values[(values.size() - 1) * quarters / 4];
  };
  return Figure{at(2), at(1), at(3)};
}

}  // namespace touch::bench
