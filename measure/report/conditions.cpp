#include "measure/report/conditions.h"

#include <fmt/chrono.h>
#include <fmt/core.h>

#include <algorithm>

#include "measure/report/words.h"
#include "support/text/language.h"

namespace touch::measure {

namespace {

struct TextRow {
  std::string_view name;
  const char* caption;
  std::string Conditions::*text;
};
constexpr TextRow textRows[] = {
    {"panel", marked("measure", "Panel"), &Conditions::panel},
    {"serial number", marked("measure", "Serial number"), &Conditions::serialNumber},
    {"controller", marked("measure", "Controller"), &Conditions::controller},
    {"firmware", marked("measure", "Firmware"), &Conditions::firmware},
    {"unit type", marked("measure", "Unit type"), &Conditions::unitType},
    {"screen", marked("measure", "Screen"), &Conditions::screen},
    {"program", marked("measure", "Program"), &Conditions::program},
    {"date", marked("measure", "Date"), &Conditions::date},
    {"operator", marked("measure", "Operator"), &Conditions::person},
};

/// Whether samples are raw counts or pointer events, and with their times.
std::string samplesText(const std::vector<Source>& sources) {
  const auto all = [&](const auto& holds) { return std::ranges::all_of(sources, holds); };
  const bool raw = all([](const Source& source) { return source.kind == SourceKind::reports; });
  const bool pointer = all([](const Source& source) { return source.kind == SourceKind::pointer; });
  const bool timed = all([](const Source& source) { return source.timed; });
  const std::string kind = raw       ? say("measure", "raw counts of the controller")
                           : pointer ? say("measure", "pointer events")
                                     : say("measure", "raw counts and pointer events");
  return filled(timed ? say("measure", "%1 with their times")
                      : say("measure", "%1, not all with their times"),
                {kind});
}

}  // namespace

std::string dateOf(std::chrono::system_clock::time_point time) {
  return fmt::format("{:%Y-%m-%dT%H:%M:%S%z}",
                     fmt::localtime(std::chrono::system_clock::to_time_t(time)));
}

std::string unitText(const PanelSize& size, std::string_view unit) {
  if (unit.empty()) return {};
  if (unit.starts_with("mm") && size.source == SizeSource::nominal)
    return ' ' + filled(say("measure", "%1 nominal"), {unit});
  return fmt::format(" {}", unit);
}

std::vector<Condition> conditionsOf(const Measurement& measurement) {
  std::vector<Condition> known;
  for (const auto& [name, caption, text] : textRows)
    if (const std::string& value = measurement.conditions.*text; !value.empty())
      known.push_back({name, say("measure", caption), value});
  known.push_back({"size", say("measure", "Active area"), panelText(measurement.size)});
  if (!measurement.sources.empty())
    known.push_back({"samples", say("measure", "Samples"), samplesText(measurement.sources)});
  for (const auto& [name, value] : measurement.conditions.settings)
    known.push_back({name, name, value});
  return known;
}

}  // namespace touch::measure
