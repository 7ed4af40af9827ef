#include "bench/figures/page.h"

#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/utsname.h>

#include <QtGlobal>
#include <ctime>
#include <fstream>
#include <optional>
#include <thread>

namespace touch::bench {

namespace {

std::string processorName() {
  std::ifstream file("/proc/cpuinfo");
  for (std::string line; std::getline(file, line);)
    if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
  return "unknown processor";
}

std::string machine() {
  utsname system{};
  uname(&system);
  return fmt::format("{}, {} cores; {} {}; GCC {}, Qt {}", processorName(),
                     std::thread::hardware_concurrency(), system.sysname, system.release,
                     __VERSION__, qVersion());
}

std::string text(double value, Unit unit) {
  switch (unit) {
    case Unit::bytes:
      return fmt::format("{:.1f} MiB", value / (1024 * 1024));
    case Unit::share:
      return fmt::format("{:.2g} %", value * 100);
    case Unit::seconds:
      break;
  }
  if (value < 1e-6) return fmt::format("{:.1f} ns", value * 1e9);
  if (value < 1e-3) return fmt::format("{:.1f} µs", value * 1e6);
  if (value < 1) return fmt::format("{:.2f} ms", value * 1e3);
  return fmt::format("{:.2f} s", value);
}

double measured(const Bar& bar, double ours, double baseline) {
  switch (bar.measure) {
    case Measure::ratio:
      return ours / baseline;
    case Measure::difference:
      return ours - baseline;
    case Measure::itself:
      break;
  }
  return ours;
}

std::string limit(const Bar& bar) {
  if (bar.most == noBar) return "-";
  switch (bar.measure) {
    case Measure::ratio:
      return fmt::format("{:.2f} ×", bar.most);
    case Measure::difference:
      return text(bar.most, bar.unit) + " more";
    case Measure::itself:
      break;
  }
  return text(bar.most, bar.unit);
}

std::string row(const Bar& bar, const Figure& ours, const std::optional<Figure>& baseline) {
  const Figure one{1, 1, 1};
  const Figure& other = baseline ? *baseline : one;
  const bool compared = !bar.baselineIs.empty();
  const bool met = measured(bar, ours.median, other.median) <= bar.most;
  const std::string comparison =
      compared
          ? fmt::format("{} | {} | **{:.3g}** | {:.3g} to {:.3g}", bar.baselineIs,
                        baseline ? text(other.median, bar.unit) : "100 %",
                        ours.median / other.median, ours.low / other.high, ours.high / other.low)
          : "- | - | - | -";
  return fmt::format("| {} | {} | {} | {} | {} |\n", bar.what, text(ours.median, bar.unit),
                     comparison, limit(bar),
                     bar.most == noBar ? "-"
                     : met             ? "yes"
                                       : "**no**");
}

}  // namespace

std::string figuresChapter(std::span<const Bar> bars, const Figures& figures) {
  std::string chapter = fmt::format(
      "## Figures\n\nMeasured on {:%Y-%m-%d} on {}.\n\n"
      "| what | takes | compared with | takes | ratio | middle half | at most | met |\n"
      "|---|--:|---|--:|--:|--:|--:|---|\n",
      fmt::localtime(std::time(nullptr)), machine());
  for (const Bar& bar : bars) {
    const auto ours = figures.of(bar.ours);
    const auto baseline = figures.of(bar.baseline);
    // What it is compared with may not be on this machine.
    if (ours && (baseline || bar.baseline.benchmark.empty())) chapter += row(bar, *ours, baseline);
  }
  return chapter;
}

}  // namespace touch::bench
