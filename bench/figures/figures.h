#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace touch::bench {

/// One quantity of one benchmark: a counter, or without a name its time in seconds. That is
/// processor time, unless the benchmark times itself.
struct Quantity {
  std::string benchmark;
  std::string counter;
  friend auto operator<=>(const Quantity&, const Quantity&) = default;
};

/// Of the repetitions, in the order of their size: the one in the middle, and those at a quarter
/// and at three quarters.
struct Figure {
  double median = 0;
  double low = 0;
  double high = 0;
};

/// Shows the benchmarks as they run, and keeps what they measure.
class Figures final : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Nothing when the benchmark did not run.
  std::optional<Figure> of(const Quantity& quantity) const;
  bool failed() const { return failed_; }

 private:
  std::map<Quantity, std::vector<double>> values_;
  bool failed_ = false;
};

}  // namespace touch::bench
