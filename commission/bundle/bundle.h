#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commission/run/run.h"
#include "commission/run/run_folder.h"
#include "commission/sheet/sheet.h"
#include "measure/measurement.h"
#include "support/files/zip_archive.h"
#include "support/result.h"

namespace touch::commission {

// A commissioning as one file that is handed over and kept: "SERIAL-DATE.tub.zip".
// docs/file-formats.md describes it.

inline constexpr std::string_view bundleEnding = ".tub.zip";

/// Where the bundle of a run's folder is, or will be.
std::filesystem::path bundleOf(const RunFolder& folder);

/// Packs a run's folder, with `run` as what became of it, and writes it beside that, whole or not
/// at all; returns where. The home folder and the computer's name are left out of all texts.
Result<std::filesystem::path> writeBundle(const RunFolder& folder, const Run& run);

/// A bundle that is read. It may be anybody's.
class Bundle {
 public:
  static constexpr const char* manifestName = "SHA256SUMS";

  static Result<Bundle> open(const std::filesystem::path& file);

  Result<Run> run() const;
  /// Nothing when nothing was measured.
  Result<std::optional<measure::Measurement>> measurement() const;
  /// The sheet as it is in the bundle; what it says is not checked.
  Result<measure::Json> sheet() const;
  const ZipReader& files() const { return files_; }

 private:
  Bundle(ZipReader files, std::string name) : files_(std::move(files)), name_(std::move(name)) {}
  std::string nameOf(std::string_view file) const;

  ZipReader files_;
  std::string name_;
};

/// What became of a bundle since it was made.
struct BundleCheck {
  Run run;
  Judgement judged;                   ///< of all samples, anew
  std::vector<std::string> problems;  ///< each names a file; none: nothing was changed
  std::vector<std::string> notes;     ///< what could not be computed anew, so that its hash decides
};
/// Checks each hash, judges all samples anew by the limits of the run's use, and compares what
/// comes out with what the bundle says. `program` is the version of this program, which draws a
/// page anew only if it made it. The error says why the bundle, its run or its measurement cannot
/// be read.
Result<BundleCheck> verifyBundle(const Bundle& bundle, std::string_view program);

}  // namespace touch::commission
