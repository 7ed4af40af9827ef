#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commission/run/run.h"
#include "commission/run/run_folder.h"
#include "commission/run/run_trace.h"
#include "commission/sheet/sheet.h"
#include "commission/steps/mending.h"
#include "commission/steps/target_advice.h"
#include "console/doctor/doctor.h"
#include "console/parameters/kept_calibration.h"
#include "core/session.h"

namespace touch::commission {

/// Writes the sheet for people into the run's folder.
using SheetPrinter =
    std::function<Status(const RunFolder& folder, const Sheet& sheet, const measure::Report*)>;
/// As "sheet.html".
[[nodiscard]] Status printHtml(const RunFolder& folder, const Sheet& sheet,
                               const measure::Report* report);

/// A run as it is gone through, step by step. When a step has ended, all that is known is on the
/// disk; so a run can be taken up again wherever it was. An error says which file could not be
/// written or read; the step is open then.
class GuidedRun {
 public:
  using WallClock = std::function<std::chrono::system_clock::time_point()>;

  /// What it refers to outlives it.
  GuidedRun(const Access& access, const Backup& backup, RunFolder folder, Run run,
            WallClock now = std::chrono::system_clock::now)
      : access_(access),
        backup_(backup),
        folder_(std::move(folder)),
        run_(std::move(run)),
        now_(std::move(now)) {}

  const Run& run() const { return run_; }
  const RunFolder& folder() const { return folder_; }
  std::optional<StepId> next() const { return nextStep(run_); }

  // One for each step.
  [[nodiscard]] Status lookAround(const Diagnosis& diagnosis);
  /// What of that can be mended here; looking around again tells what it helped.
  const std::vector<Mend>& mends() const { return mends_; }
  /// Keeps everything in this working folder from now on, the run and its files too.
  [[nodiscard]] Status moveTo(const std::filesystem::path& workFolder);
  /// The folder takes the panel's name.
  [[nodiscard]] Status namePanel(PanelFacts panel);
  /// `driver` is how it is called on the sheet.
  [[nodiscard]] Status identify(std::string_view driver);
  [[nodiscard]] Status compareSettings();
  /// Sets what the use wants otherwise, and compares again.
  [[nodiscard]] Status setAsWanted(Prompt& prompt);
  /// With how many targets the panel is best calibrated.
  const TargetAdvice& targetAdvice();
  /// Before the first target is shown: keeps the parameters.
  void beginCalibration();
  [[nodiscard]] Status endCalibration(int targets, bool completed);
  /// What the check puts back, for whoever checks.
  std::unique_ptr<WayBack> takeWayBack();
  /// Nothing: it was left without an outcome.
  [[nodiscard]] Status endCheck(const std::optional<CheckResult>& result);
  /// What has been measured so far, or a measurement that holds nothing yet.
  Result<measure::Measurement> measurement(const measure::PanelSize& size) const;
  /// After each stroke.
  [[nodiscard]] Status keep(const measure::Measurement& measurement) const;
  /// Done, but not good, when something is missing.
  [[nodiscard]] Status endMeasurement();
  /// Skips itself where no times of reports are known.
  [[nodiscard]] Status tellRate();
  [[nodiscard]] Status judge();
  /// Writes the sheet, for people by `print` and for programs, and packs all into the bundle;
  /// returns where that is.
  Result<std::filesystem::path> handOver(const RunTrace& trace,
                                         const SheetPrinter& print = printHtml);

  [[nodiscard]] Status skip(StepId id, std::string reason);
  /// Another calibration forgets the measurement of before.
  [[nodiscard]] Status repeat(StepId id);

 private:
  /// The run as it would be with this step ended becomes the run, once it is on the disk.
  Status end(StepId id, Found found, Run run);
  Status carryInto(const std::filesystem::path& base);
  Status end(StepId id, Found found) { return end(id, std::move(found), run_); }
  std::string time() const;

  Access access_;
  Backup backup_;
  RunFolder folder_;
  Run run_;
  WallClock now_;
  std::unique_ptr<WayBack> wayBack_;
  std::vector<Mend> mends_;
  std::optional<TargetAdvice> targetAdvice_;
};

/// Where the runs are whose working folder this is.
std::filesystem::path runsIn(const std::filesystem::path& workFolder);

}  // namespace touch::commission
