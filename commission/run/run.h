#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "measure/judging/limits.h"
#include "measure/measurement.h"

namespace touch::commission {

/// The steps of a commissioning, in their order.
enum class StepId : std::uint8_t {
  prerequisites,
  panel,
  identity,
  settings,
  calibrate,
  check,
  measure,
  rate,
  verdict,
  sheet,
};
inline constexpr std::size_t stepCount = 10;

/// How much is measured.
/// What a run says in place of a driver library's path, in any language.
inline constexpr std::string_view simulatedDriver = "simulated";

enum class Profile : std::uint8_t {
  quick,  ///< ten lines, nine taps three times each, coverage
  full,   ///< all lines with diagonals and ways back, 25 targets, resting finger, coverage
};
/// As it is called in files and on command lines.
struct NamedProfile {
  std::string_view name;
  Profile value;
};
inline constexpr NamedProfile profileNames[] = {{"quick", Profile::quick}, {"full", Profile::full}};
std::string_view nameOf(Profile profile);
measure::Plan planOf(Profile profile);

/// Texts are said in the context "commission".
struct Step {
  StepId id;
  std::string_view name;  ///< in files
  const char* caption;
  const char* purpose;
  std::chrono::seconds quick;  ///< how long it takes
  std::chrono::seconds full;
  bool mayBeSkipped;

  // cppcheck-suppress passedByValue ; an enumeration, and not the limits of that name
  std::chrono::seconds duration(Profile profile) const {
    return profile == Profile::quick ? quick : full;
  }
};
std::span<const Step, stepCount> steps();
const Step& stepOf(StepId id);
/// How long all of them take.
std::chrono::minutes durationOf(Profile profile);

enum class StepState : std::uint8_t { open, done, skipped };

/// What a step came to.
struct Found {
  bool good = true;
  std::vector<std::string> texts;
  friend bool operator==(const Found&, const Found&) = default;
};

struct StepRecord {
  StepState state = StepState::open;
  int times = 0;  ///< how often it was done
  Found found;
  std::string reason;  ///< why it was skipped
  std::string ended;   ///< local time with its zone, as in "2026-12-31T23:59:59+0100"
  friend bool operator==(const StepRecord&, const StepRecord&) = default;
};

/// What is typed in, or scanned from a bar code. Empty where nobody said.
struct PanelFacts {
  std::string serialNumber, person, place, order, note;
  friend bool operator==(const PanelFacts&, const PanelFacts&) = default;
};

/// What was calibrated, and how its check ended.
struct CalibrationFacts {
  int targets = 0;
  std::string check;  ///< "kept", "put back", "bad"; empty: not checked
  friend bool operator==(const CalibrationFacts&, const CalibrationFacts&) = default;
};

/// How often the controller reports a touch.
struct ReportRate {
  double perSecond = 0;
  double medianMs = 0;
  double longestMs = 0;
  friend bool operator==(const ReportRate&, const ReportRate&) = default;
};

/// A commissioning from the plugged cable to the sheet, but for its measurement.
struct Run {
  Profile profile = Profile::quick;
  std::string use = "industrial";  ///< name of the limits' profile and of the wanted settings
  PanelFacts panel;
  std::string began;  ///< like StepRecord::ended
  std::string program;
  std::string driver;
  std::string controller, unitType, firmware;
  std::map<std::string, std::string> settings;
  std::vector<std::string> blockBefore, blockAfter;  ///< eight words; none: it keeps none
  std::optional<CalibrationFacts> calibration;
  std::optional<ReportRate> rate;
  std::array<StepRecord, stepCount> records;

  const StepRecord& operator[](StepId id) const { return records[static_cast<std::size_t>(id)]; }
  StepRecord& operator[](StepId id) { return records[static_cast<std::size_t>(id)]; }
  friend bool operator==(const Run&, const Run&) = default;
};

/// The first step that is open; nothing when the run is at its end.
std::optional<StepId> nextStep(const Run& run);
/// What comes before it is there.
bool isReachable(const Run& run, StepId id);
/// The step that is to be in hand when `ended` has ended: a problem is seen before the run goes on.
StepId stepAfter(const Run& run, StepId ended);
/// Those that people have most often for skipping a step; said in the context "commission".
std::span<const char* const> usualReasons();
void finish(Run& run, StepId id, Found found, std::string time);
/// `reason` stands on the sheet.
void skip(Run& run, StepId id, std::string reason, std::string time);
/// Opens a step again, and what rests on it: after another calibration its check, the measurements
/// and the verdict.
void repeat(Run& run, StepId id);

/// From 0 to 1, by the time that the steps take.
double progress(const Run& run);

/// A measurement of the run's panel that holds nothing yet, on what the run knows. Its date is the
/// caller's to say.
measure::Measurement measurementOf(const Run& run, const measure::PanelSize& size);

}  // namespace touch::commission
