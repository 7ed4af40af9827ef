#include "commission/run/run.h"

#include <algorithm>
#include <utility>

#include "support/text/language.h"

namespace touch::commission {

namespace {

using namespace std::chrono_literals;

constexpr std::array<Step, stepCount> table = {{
    {StepId::prerequisites, "prerequisites", marked("commission", "What has to be there"),
     marked("commission",
            "Looks at driver, ports, folder and screens, so that nothing stops you later."),
     10s, 10s, true},
    {StepId::panel, "panel", marked("commission", "Which panel"),
     marked("commission",
            "Says on the sheet which panel this is and who commissions it. A bar code scanner can "
            "type the serial number."),
     30s, 30s, false},
    {StepId::identity, "identity", marked("commission", "Controller and backup"),
     marked("commission",
            "Asks the controller what it is, and keeps its parameters so that they can be put "
            "back."),
     5s, 5s, false},
    {StepId::settings, "settings", marked("commission", "Settings"),
     marked("commission", "Compares the settings with those that the panel's use wants."), 20s, 20s,
     true},
    {StepId::calibrate, "calibrate", marked("commission", "Calibration"),
     marked("commission", "Makes touches land where the finger is."), 30s, 30s, true},
    {StepId::check, "check", marked("commission", "Check of the calibration"),
     marked("commission",
            "Five crosses show whether touches land well. If they do not, the old calibration is "
            "put back by itself."),
     20s, 20s, true},
    {StepId::measure, "measure", marked("commission", "Measurement"),
     marked("commission", "Proves how good the panel is, in millimetres against limits."), 180s,
     900s, true},
    {StepId::rate, "rate", marked("commission", "Report rate"),
     marked("commission", "Shows how often the controller reports a touch."), 10s, 10s, true},
    {StepId::verdict, "verdict", marked("commission", "Verdict"),
     marked("commission", "Judges all that was found."), 5s, 5s, false},
    {StepId::sheet, "sheet", marked("commission", "Sheet"),
     marked("commission", "Writes what you hand over."), 5s, 5s, false},
}};

/// What a step's result is worth nothing without.
constexpr std::pair<StepId, StepId> restsOn[] = {
    {StepId::check, StepId::calibrate},   {StepId::measure, StepId::calibrate},
    {StepId::verdict, StepId::check},     {StepId::verdict, StepId::measure},
    {StepId::verdict, StepId::settings},  {StepId::verdict, StepId::rate},
    {StepId::settings, StepId::identity}, {StepId::calibrate, StepId::identity},
    {StepId::rate, StepId::identity},     {StepId::sheet, StepId::verdict},
    {StepId::sheet, StepId::panel},
};

}  // namespace

std::string_view nameOf(Profile profile) {
  return std::ranges::find(profileNames, profile, &NamedProfile::value)->name;
}

measure::Plan planOf(Profile profile) {
  if (profile == Profile::quick) return {true, true, false, true, measure::LineSet::ten, 9};
  return {true, true, true, true, measure::LineSet::full, 25};
}

std::span<const Step, stepCount> steps() {
  return table;
}

const Step& stepOf(StepId id) {
  return table[static_cast<std::size_t>(id)];
}

std::chrono::minutes durationOf(Profile profile) {
  std::chrono::seconds all{};
  for (const Step& step : table)
    all += step.duration(profile);
  return std::chrono::ceil<std::chrono::minutes>(all);
}

std::optional<StepId> nextStep(const Run& run) {
  for (const Step& step : table)
    if (run[step.id].state == StepState::open) return step.id;
  return std::nullopt;
}

bool isReachable(const Run& run, StepId id) {
  return run[id].state != StepState::open || nextStep(run) == id;
}

StepId stepAfter(const Run& run, StepId ended) {
  const StepRecord& record = run[ended];
  if (record.state == StepState::done && !record.found.good) return ended;
  return nextStep(run).value_or(StepId::sheet);
}

std::span<const char* const> usualReasons() {
  static constexpr std::array reasons = {
      marked("commission", "done before"), marked("commission", "not ordered"),
      marked("commission", "not possible here"), marked("commission", "no time")};
  return reasons;
}

void finish(Run& run, StepId id, Found found, std::string time) {
  StepRecord& record = run[id];
  record = {StepState::done, record.times + 1, std::move(found), {}, std::move(time)};
}

void skip(Run& run, StepId id, std::string reason, std::string time) {
  StepRecord& record = run[id];
  record = {StepState::skipped, record.times, {}, std::move(reason), std::move(time)};
}

void repeat(Run& run, StepId id) {
  StepRecord opened;
  opened.times = run[id].times;
  run[id] = opened;
  for (const auto& [later, earlier] : restsOn)
    if (earlier == id && run[later].state != StepState::open) repeat(run, later);
}

double progress(const Run& run) {
  std::chrono::seconds all{}, over{};
  for (const Step& step : table) {
    all += step.duration(run.profile);
    if (run[step.id].state != StepState::open) over += step.duration(run.profile);
  }
  return static_cast<double>(over.count()) / static_cast<double>(all.count());
}

measure::Measurement measurementOf(const Run& run, const measure::PanelSize& size) {
  measure::Measurement measurement;
  measurement.size = size;
  measurement.plan = planOf(run.profile);
  if (const measure::Profile* const use = measure::findProfile(run.use))
    measurement.limits = use->limits;
  measure::Conditions& conditions = measurement.conditions;
  conditions.serialNumber = run.panel.serialNumber;
  conditions.person = run.panel.person;
  conditions.controller = run.controller;
  conditions.firmware = run.firmware;
  conditions.unitType = run.unitType;
  conditions.program = run.program;
  conditions.settings = run.settings;
  conditions.parameterWords = run.blockAfter.empty() ? run.blockBefore : run.blockAfter;
  return measurement;
}

}  // namespace touch::commission
