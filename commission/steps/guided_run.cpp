#include "commission/steps/guided_run.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "commission/bundle/bundle.h"
#include "commission/steps/controller_steps.h"
#include "console/doctor/doctor_report.h"
#include "console/settings/touch_settings.h"
#include "core/driver/driver_settings.h"
#include "measure/report/conditions.h"
#include "support/text/language.h"

namespace touch::commission {

Status printHtml(const RunFolder& folder, const Sheet& sheet, const measure::Report* report) {
  return folder.write("sheet.html", sheetHtml(sheet, report));
}

std::string GuidedRun::time() const {
  return measure::dateOf(now_());
}

Status GuidedRun::end(StepId id, Found found, Run run) {
  finish(run, id, std::move(found), time());
  if (auto saved = folder_.save(run); !saved) return saved;
  run_ = std::move(run);
  return {};
}

Status GuidedRun::lookAround(const Diagnosis& diagnosis) {
  const std::string name(RunFolder::doctorName);
  if (auto kept = folder_.write(name + ".txt", findingsAsText(diagnosis)); !kept) return kept;
  if (auto kept = folder_.write(name + ".json", findingsAsJson(diagnosis)); !kept) return kept;
  const auto reported = reportedSettings(access_);
  mends_ = mendsFor(diagnosis, access_.session.controllerName, reported);
  return end(StepId::prerequisites, prerequisitesOf(diagnosis, reported));
}

Status GuidedRun::moveTo(const std::filesystem::path& workFolder) {
  if (runsIn(workFolder) == folder_.path().parent_path()) return {};
  if (auto moved = carryInto(runsIn(workFolder)); !moved) return moved;
  // What it can put back is noted where it was kept.
  wayBack_ = takeWayBack();
  backup_ = Backup(workFolder);
  return {};
}

Status GuidedRun::carryInto(const std::filesystem::path& base) {
  auto carried = folder_.copyTo(base, run_);
  if (!carried) return tl::unexpected(carried.error());
  // It may be in the way that nothing can be written there: then it is found twice.
  static_cast<void>(folder_.discard());
  folder_ = std::move(*carried);
  return {};
}

const TargetAdvice& GuidedRun::targetAdvice() {
  if (!targetAdvice_) targetAdvice_ = adviseTargets(folder_.path().parent_path(), run_);
  return *targetAdvice_;
}

Status GuidedRun::namePanel(PanelFacts panel) {
  Run run = run_;
  run.panel = std::move(panel);
  targetAdvice_.reset();
  if (auto named = end(StepId::panel, {}, std::move(run)); !named) return named;
  return folder_.isNamedAfter(run_) ? Status() : carryInto(folder_.path().parent_path());
}

Status GuidedRun::identify(std::string_view driver) {
  Run run = run_;
  Found found = commission::identify(access_, backup_, driver, run);
  return end(StepId::identity, std::move(found), std::move(run));
}

Status GuidedRun::compareSettings() {
  Run run = run_;
  Found found = commission::compareSettings(access_, run);
  return end(StepId::settings, std::move(found), std::move(run));
}

Status GuidedRun::setAsWanted(Prompt& prompt) {
  if (const auto reported = reportedSettings(access_)) {
    for (const WantedSetting& one : deviations(run_.use, *reported))
      findSetting(one.name)->set(access_, prompt, *reported, one.value);
  }
  return compareSettings();
}

void GuidedRun::beginCalibration() {
  wayBack_ = std::make_unique<KeptCalibration>(access_, backup_);
}

Status GuidedRun::endCalibration(int targets, bool completed) {
  // Nothing was stored that could be put back.
  if (!completed)
    if (auto settled = takeWayBack()->settle(); !settled) return settled;
  Run run = run_;
  Found found{false, {say("commission", "The calibration was not completed.")}};
  if (completed) found = calibrated(access_, targets, run);
  return end(StepId::calibrate, std::move(found), std::move(run));
}

std::unique_ptr<WayBack> GuidedRun::takeWayBack() {
  return wayBack_ ? std::move(wayBack_) : wayBackLeft(access_, backup_);
}

Status GuidedRun::endCheck(const std::optional<CheckResult>& result) {
  Run run = run_;
  Found found{false, {say("commission", "The check was not completed.")}};
  if (result) found = checked(access_, *result, run);
  return end(StepId::check, std::move(found), std::move(run));
}

Result<measure::Measurement> GuidedRun::measurement(const measure::PanelSize& size) const {
  auto stored = folder_.measurement();
  if (!stored) return tl::unexpected(stored.error());
  if (*stored) return std::move(**stored);
  measure::Measurement fresh = measurementOf(run_, size);
  fresh.conditions.date = time();
  return fresh;
}

Status GuidedRun::keep(const measure::Measurement& measurement) const {
  return folder_.saveMeasurement(measurement);
}

Status GuidedRun::endMeasurement() {
  const auto made = folder_.report();
  if (!made) return tl::unexpected(made.error());
  const std::size_t strokes = *made ? (*made)->measurement.traces.size() : 0;
  Found found{*made && (*made)->verdict.outcome() != measure::Outcome::incomplete,
              {filled(say("commission", "%1 strokes were taken."), {std::to_string(strokes)})}};
  if (!found.good)
    found.texts.push_back(
        say("commission", "Something is missing. Repeat this step to go on with it."));
  return end(StepId::measure, std::move(found));
}

Status GuidedRun::tellRate() {
  const auto stored = folder_.measurement();
  if (!stored) return tl::unexpected(stored.error());
  Run run = run_;
  run.rate = *stored ? rateOf(**stored) : std::nullopt;
  if (!run.rate)
    return skip(StepId::rate, say("commission", "the times of the reports are not known"));
  Found found{true,
              {filled(say("commission", "%1 reports a second while the finger is down."),
                      {fmt::format("{:.1f}", run.rate->perSecond)})}};
  return end(StepId::rate, std::move(found), std::move(run));
}

Status GuidedRun::judge() {
  const auto made = folder_.report();
  if (!made) return tl::unexpected(made.error());
  const Judgement judged = judgeRun(run_, *made ? &**made : nullptr);
  Found found{judged.outcome == measure::Outcome::pass, {measure::wordOf(judged.outcome)}};
  if (!judged.reason.empty()) found.texts.push_back(judged.reason);
  return end(StepId::verdict, std::move(found));
}

Result<std::filesystem::path> GuidedRun::handOver(const RunTrace& trace,
                                                  const SheetPrinter& print) {
  const auto made = folder_.report();
  if (!made) return tl::unexpected(made.error());
  const measure::Report* const known = *made ? &**made : nullptr;
  // The sheet and the bundle say of themselves what they say of the other steps; the run says it
  // last, when they are there.
  Run run = run_;
  finish(run, StepId::sheet, {}, time());
  if (auto printed = print(folder_, sheetOf(run, known), known); !printed)
    return tl::unexpected(printed.error());
  auto kept = folder_.write("sheet.json", sheetJson(run, known).dump(2) + '\n').and_then([&] {
    return trace.keep();
  });
  if (!kept) return tl::unexpected(kept.error());
  auto bundle = writeBundle(folder_, run);
  if (!bundle) return bundle;
  if (auto saved = folder_.save(run); !saved) return tl::unexpected(saved.error());
  run_ = std::move(run);
  return bundle;
}

Status GuidedRun::skip(StepId id, std::string reason) {
  // What nobody checks is to be kept.
  if (id == StepId::check)
    if (auto settled = takeWayBack()->settle(); !settled) return settled;
  Run run = run_;
  commission::skip(run, id, std::move(reason), time());
  if (auto saved = folder_.save(run); !saved) return saved;
  run_ = std::move(run);
  return {};
}

Status GuidedRun::repeat(StepId id) {
  Run run = run_;
  commission::repeat(run, id);
  // Of another calibration; one that is only to be completed is kept.
  if (id != StepId::measure && run[StepId::measure].state == StepState::open)
    if (auto forgotten = folder_.forgetMeasurement(); !forgotten) return forgotten;
  if (auto saved = folder_.save(run); !saved) return saved;
  run_ = std::move(run);
  return {};
}

std::filesystem::path runsIn(const std::filesystem::path& workFolder) {
  return workFolder / "commissioning";
}

}  // namespace touch::commission
