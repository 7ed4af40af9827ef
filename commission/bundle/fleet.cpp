#include "commission/bundle/fleet.h"

#include <fmt/core.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "commission/bundle/bundle.h"
#include "commission/run/word.h"
#include "commission/sheet/sheet.h"
#include "measure/files/json_reader.h"
#include "support/files/sha256.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch::commission {

namespace {

namespace fs = std::filesystem;
using measure::JsonNode;
using measure::Outcome;

constexpr double largest = std::numeric_limits<double>::max();
// Of its limit: a figure moves by less from one hand to the next.
constexpr double leastDrift = 0.2;

constexpr Word<Outcome> outcomes[] = {
    {"PASS", Outcome::pass}, {"INCOMPLETE", Outcome::incomplete}, {"FAIL", Outcome::fail}};
constexpr Word<std::string Visit::*> runTexts[] = {
    {"began", &Visit::began}, {"controller", &Visit::controller}, {"firmware", &Visit::firmware}};
constexpr Word<std::string Visit::*> panelTexts[] = {{"serialNumber", &Visit::serialNumber},
                                                     {"place", &Visit::place},
                                                     {"order", &Visit::order},
                                                     {"operator", &Visit::person}};

void readCheck(const JsonNode& node, Visit& visit) {
  FleetFigure figure;
  std::string name;
  node.member("name", [&](const JsonNode& text) { name = text.text(); });
  node.member("value",
              [&](const JsonNode& value) { figure.value = value.number(-largest, largest); });
  node.member("unit", [&](const JsonNode& unit) { figure.unit = unit.text(); });
  const auto readLimit = [&](const JsonNode& limit) {
    figure.limit = limit.number(-largest, largest);
  };
  figure.atLeast = node.optionalMember("atLeast", readLimit);
  if (!figure.atLeast) node.member("atMost", readLimit);
  const auto [worst, isFirst] = visit.worst.emplace(name, figure);
  if (!isFirst && figure.used() > worst->second.used()) worst->second = figure;
}

void readMeasurement(const JsonNode& node, Visit& visit) {
  node.member("subjects", [&](const JsonNode& subjects) {
    subjects.eachItem([&](const JsonNode& subject) {
      subject.member("checks", [&](const JsonNode& checks) {
        checks.eachItem([&](const JsonNode& check) { readCheck(check, visit); });
      });
    });
  });
  node.member("causes", [&](const JsonNode& causes) {
    causes.eachItem([&](const JsonNode& cause) {
      cause.member("name", [&](const JsonNode& name) { visit.causes.push_back(name.text()); });
    });
  });
}

Visit readSheet(const JsonNode& sheet, bool isMeasured) {
  Visit visit;
  sheet.member("schema", [](const JsonNode& node) {
    if (node.text() != sheetSchema) node.refuse(fmt::format("\"{}\"", sheetSchema));
  });
  sheet.member("version", [](const JsonNode& node) {
    if (node.integer(1, std::numeric_limits<int>::max()) != sheetVersion)
      node.refuse(fmt::format("version {}", sheetVersion));
  });
  sheet.member("outcome", [&](const JsonNode& node) { visit.outcome = node.oneOf(outcomes); });
  sheet.member("run", [&](const JsonNode& run) {
    for (const auto& [name, text] : runTexts)
      run.member(name, [&, at = text](const JsonNode& node) { visit.*at = node.text(); });
    run.member("panel", [&](const JsonNode& panel) {
      for (const auto& [name, text] : panelTexts)
        panel.member(name, [&, at = text](const JsonNode& node) { visit.*at = node.text(); });
    });
  });
  if (isMeasured)
    sheet.member("measurement", [&](const JsonNode& node) { readMeasurement(node, visit); });
  return visit;
}

std::vector<Drift> driftsBetween(const Visit& first, const Visit& last) {
  std::vector<Drift> drifts;
  for (const auto& [name, figure] : last.worst) {
    const auto before = first.worst.find(name);
    if (before != first.worst.end() && figure.used() - before->second.used() > leastDrift)
      drifts.push_back({name, before->second, figure});
  }
  std::ranges::sort(drifts, std::greater{}, [](const Drift& drift) { return drift.last.used(); });
  return drifts;
}

}  // namespace

double FleetFigure::used() const {
  const double part = atLeast ? limit : value;
  const double whole = atLeast ? value : limit;
  if (whole > 0) return part / whole;
  return part > 0 ? largest : 0;
}

Result<Visit> readVisit(const fs::path& bundle) {
  const auto opened = Bundle::open(bundle);
  if (!opened) return tl::unexpected(opened.error());
  const auto sheet = opened->sheet();
  if (!sheet) return tl::unexpected(sheet.error());
  JsonNode::Problem problem{utf8Of(bundle) + ": sheet.json", std::nullopt};
  const bool isMeasured =
      !sheet->is_object() || !sheet->contains("measurement") || !sheet->at("measurement").is_null();
  Visit visit = readSheet(JsonNode(*sheet, problem), isMeasured);
  if (problem.error) return tl::unexpected(*problem.error);
  visit.file = bundle;
  visit.sheetHash = sha256(sheet->dump());
  return visit;
}

Result<std::vector<fs::path>> bundlesIn(const fs::path& folder) {
  std::vector<fs::path> bundles;
  std::error_code failed;
  fs::recursive_directory_iterator entry(folder, failed);
  for (; !failed && entry != fs::recursive_directory_iterator(); entry.increment(failed)) {
    std::error_code unknown;
    if (utf8Of(entry->path().filename()).ends_with(bundleEnding) && entry->is_regular_file(unknown))
      bundles.push_back(entry->path());
  }
  if (failed)
    return tl::unexpected(FileError{utf8Of(folder), 0,
                                    say("commission", "a folder that can be read to its end"),
                                    failed.message()});
  std::ranges::sort(bundles);
  return bundles;
}

std::vector<FleetPanel> panelsOf(std::vector<Visit> visits) {
  // "2026-11-12T14:05:59+0100" sorts by time but for the zones, which panels do not change.
  std::ranges::stable_sort(visits, {}, [](const Visit& one) {
    return std::tie(one.serialNumber, one.began, one.sheetHash);
  });
  const auto isCopy = [](const Visit& one, const Visit& other) {
    return one.sheetHash == other.sheetHash;
  };
  visits.erase(std::unique(visits.begin(), visits.end(), isCopy), visits.end());
  std::vector<FleetPanel> panels;
  const Visit* first = nullptr;
  for (const Visit& visit : visits) {
    if (!panels.empty() && !visit.serialNumber.empty() &&
        panels.back().last.serialNumber == visit.serialNumber) {
      FleetPanel& panel = panels.back();
      panel.last = visit;
      ++panel.visits;
      panel.drifts = driftsBetween(*first, visit);
    } else {
      panels.push_back({visit, 1, {}});
      first = &visit;
    }
  }
  std::ranges::stable_sort(panels, std::greater{},
                           [](const FleetPanel& panel) { return panel.last.outcome; });
  return panels;
}

}  // namespace touch::commission
