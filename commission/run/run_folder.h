#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commission/run/run.h"
#include "measure/measurement.h"
#include "measure/report/report_pages.h"
#include "support/files/own_folder.h"
#include "support/result.h"

namespace touch::commission {

// docs/file-formats.md describes the files.

std::string runText(const Run& run);
/// `name` is what an error calls the file.
Result<Run> parseRun(std::string_view text, const std::string& name);

/// What follows from a run's measurement with the limits of its use.
measure::Report reportOf(const Run& run, measure::Measurement measurement);

/// A run's folder. Each file is written whole and is on the disk before the next step begins, so
/// that a run goes on where it was, whenever the computer went down.
class RunFolder {
 public:
  static constexpr const char* runName = "run.json";
  static constexpr const char* measurementName = "measurement.json";
  // The beginnings of others; each has an ending of its own.
  static constexpr std::string_view sheetName = "sheet";
  static constexpr std::string_view doctorName = "doctor";
  static constexpr std::string_view traceName = "trace";
  static constexpr std::string_view recordingName = "recording";
  static constexpr std::size_t largestRun = std::size_t{4} << 20U;

  /// A new one in `base`, which is made if need be: "SERIAL-DATE", or with a number behind it.
  static Result<RunFolder> make(const std::filesystem::path& base, const Run& run);
  static Result<RunFolder> open(const std::filesystem::path& path);

  /// Whether `make` would call it so.
  bool isNamedAfter(const Run& run) const;

  [[nodiscard]] Status save(const Run& run) const;
  Result<Run> run() const;
  [[nodiscard]] Status saveMeasurement(const measure::Measurement& measurement) const;
  /// Nothing when none was begun.
  Result<std::optional<measure::Measurement>> measurement() const;
  /// Removes it, and the files of its lines.
  [[nodiscard]] Status forgetMeasurement() const;
  /// What follows from the measurement with the limits of the run's use; nothing when none was
  /// begun.
  Result<std::optional<measure::Report>> report() const;
  /// The same files in a new folder, as `make` names it.
  Result<RunFolder> copyTo(const std::filesystem::path& base, const Run& run) const;
  /// Removes its files, and the folder when nothing else is in it.
  [[nodiscard]] Status discard() const;
  /// Any file, by its name.
  [[nodiscard]] Status write(const std::string& name, std::string_view content) const;
  Result<std::string> read(const std::string& name) const;
  std::vector<std::string> names() const { return folder_.names(); }

  const std::filesystem::path& path() const { return folder_.path(); }

 private:
  explicit RunFolder(OwnFolder folder) : folder_(std::move(folder)) {}
  OwnFolder folder_;
};

/// A run that has not come to its end.
struct UnfinishedRun {
  std::filesystem::path folder;
  Run run;
};
struct UnfinishedRuns {
  std::vector<UnfinishedRun> runs;  ///< the one that was begun last first
  std::vector<FileError> damaged;   ///< what is wrong with those that cannot be read

  /// The run of the panel with this serial number that was begun last; null when there is none.
  const UnfinishedRun* of(std::string_view serialNumber) const;
};
/// Those in `base`. Folders that hold no run are passed over.
UnfinishedRuns unfinishedRuns(const std::filesystem::path& base);

}  // namespace touch::commission
