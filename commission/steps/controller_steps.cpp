#include "commission/steps/controller_steps.h"

#include <algorithm>
#include <iterator>

#include "console/parameters/backup.h"
#include "console/parameters/parameter_block.h"
#include "core/discovery/identity.h"
#include "core/driver/driver_settings.h"
#include "support/text/language.h"
#include "support/text/personal_names.h"
#include "support/text/text_encoding.h"

namespace touch::commission {

namespace {

constexpr int desktopMode = 1;
constexpr int drawingMode = 2;
constexpr int off = 0;

constexpr WantedSetting wanted[] = {
    {"industrial", "touch-panel", 1, marked("commission", "without it no touch is reported")},
    {"industrial", "touch-mode", desktopMode,
     marked("commission", "touches are to act like a mouse")},
    {"kiosk", "touch-panel", 1, marked("commission", "without it no touch is reported")},
    {"kiosk", "right-click", off,
     marked("commission", "a finger that rests would open menus that no visitor needs")},
    {"signature", "touch-panel", 1, marked("commission", "without it no touch is reported")},
    {"signature", "touch-mode", drawingMode, marked("commission", "this mode is made for drawing")},
    {"signature", "right-click", off, marked("commission", "a pen that rests would open a menu")},
};

std::vector<std::string> wordsIn(const ParameterBlock& block) {
  std::vector<std::string> words;
  std::ranges::transform(block, std::back_inserter(words), wordText);
  return words;
}

/// None when it keeps none.
std::vector<std::string> wordsOfController(const Access& access) {
  const auto block = readBlock(access);
  return block ? wordsIn(*block) : std::vector<std::string>();
}

}  // namespace

std::string driverName(const Patient& patient) {
  // It stands on the sheet, which is handed over.
  return patient.simulated ? std::string(simulatedDriver)
                           : withoutPersonalNames(utf8Of(patient.driverPath), personalNames());
}

Found prerequisitesOf(const Diagnosis& diagnosis, const std::optional<DriverSettings>& reported) {
  Found found;
  if (reported && !reported->reporting)
    found = {false, {say("commission", "The touch panel is switched off: it reports no touch.")}};
  for (const Finding& finding : diagnosis.findings) {
    if (finding.state == FindingState::ok) continue;
    if (finding.state == FindingState::problem) found.good = false;
    const std::string text =
        finding.nextStep.empty() ? finding.what : filled("%1 %2", {finding.what, finding.nextStep});
    found.texts.push_back(withoutPersonalNames(text, personalNames()));
  }
  if (found.texts.empty()) found.texts = {say("commission", "Nothing is in the way.")};
  return found;
}

Found identify(const Access& access, const Backup& backup, std::string_view driver, Run& run) {
  const Identity identity = readfw(access);
  run.driver = driver;
  run.controller = toUtf8(access.session.controllerName);
  run.unitType = toUtf8(identity.unitType);
  run.firmware = toUtf8(identity.firmware);
  if (identity.unitType.empty() && identity.firmware.empty())
    return {false, {filled(say("commission", "%1 does not answer."), {run.controller})}};
  Found found{true,
              {filled(say("commission", "%1: unit type %2, firmware %3"),
                      {run.controller, run.unitType, run.firmware})}};
  const auto block = readBlock(access);
  if (!block) {
    found.texts.push_back(filled(say("commission", "Its parameters cannot be kept: %1."),
                                 {block.error().describe()}));
    return found;
  }
  // Those of before the run, however often this step is done.
  if (run.blockBefore.empty()) run.blockBefore = wordsIn(*block);
  const auto kept = backup.keep(access.session.controllerName, *block);
  if (!kept) {
    found.good = false;
    found.texts.push_back(kept.error().describe());
  } else {
    found.texts.push_back(
        filled(say("commission", "Its parameters are kept in %1."), {utf8Of(kept->filename())}));
  }
  return found;
}

std::vector<WantedSetting> deviations(std::string_view use, const DriverSettings& reported) {
  std::vector<WantedSetting> differing;
  std::ranges::copy_if(wanted, std::back_inserter(differing), [&](const WantedSetting& one) {
    return one.use == use && findSetting(one.name)->get(reported) != one.value;
  });
  return differing;
}

Found compareSettings(const Access& access, Run& run) {
  const auto reported = reportedSettings(access);
  if (!reported)
    return {false, {filled(say("commission", "%1 cannot be opened."), {run.controller})}};
  run.settings.clear();
  for (const Setting& setting : settingTable())
    if (setting.get != nullptr)
      run.settings.emplace(setting.name, settingText(setting, setting.get(*reported)));
  Found found;
  for (const WantedSetting& one : deviations(run.use, *reported)) {
    const Setting& setting = *findSetting(one.name);
    found.good = false;
    found.texts.push_back(
        filled(say("commission", "%1: %2 instead of %3: %4."),
               {say("settings", setting.label), settingText(setting, setting.get(*reported)),
                settingText(setting, one.value), say("commission", one.reason)}));
  }
  if (found.good) found.texts = {say("commission", "All settings are as this use wants them.")};
  return found;
}

Found calibrated(const Access& access, int targets, Run& run) {
  run.calibration = CalibrationFacts{targets, {}};
  run.blockAfter = wordsOfController(access);
  return {true,
          {filled(say("commission", "Calibrated with %1 targets."), {std::to_string(targets)})}};
}

Found checked(const Access& access, const CheckResult& result, Run& run) {
  if (run.calibration) {
    run.calibration->check = result.outcome == CheckOutcome::kept      ? "kept"
                             : result.outcome == CheckOutcome::putBack ? "put back"
                                                                       : "bad";
  }
  run.blockAfter = wordsOfController(access);
  return {result.outcome == CheckOutcome::kept, {result.notice.text}};
}

std::optional<ReportRate> rateOf(const measure::Measurement& measurement) {
  std::vector<double> intervals;  // ms
  for (const measure::Trace& trace : measurement.traces) {
    const measure::Source& source = measurement.sources[trace.source];
    if (!source.timed || source.kind != measure::SourceKind::reports) continue;
    for (std::size_t i = 1; i < trace.samples.size(); ++i)
      intervals.push_back((trace.samples[i].time - trace.samples[i - 1].time).count() * 1000);
  }
  if (intervals.empty()) return std::nullopt;
  std::ranges::sort(intervals);
  const double median = intervals[intervals.size() / 2];
  if (median <= 0) return std::nullopt;
  return ReportRate{1000 / median, median, intervals.back()};
}

}  // namespace touch::commission
