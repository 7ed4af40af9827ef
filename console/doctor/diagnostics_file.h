#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "console/doctor/doctor.h"
#include "support/result.h"

namespace touch {

class Trace;

/// Why a part of the diagnostics file is missing.
struct Missing {
  std::string why;
};

/// One file in the diagnostics file.
struct DiagnosticsPart {
  std::string name;
  std::function<Result<std::string, Missing>()> make;
};

struct PackedParts {
  std::string archive;
  std::vector<std::string>
      failed;  ///< the names of those whose entry only says why they are missing
};

/// Packs the parts into a ZIP archive. A part that fails, by its result or by an exception, does
/// not keep the others out: its entry says why it is missing. The home folder and the computer's
/// name are left out of all.
PackedParts packParts(const std::vector<DiagnosticsPart>& parts,
                      std::chrono::system_clock::time_point time);

/// What saving came to.
struct DiagnosticsSaved {
  Status written;                   ///< nothing is after an error
  std::vector<std::string> failed;  ///< the parts whose entry only says why they are missing

  /// "The diagnostics are saved in ..."
  std::string describe(const std::filesystem::path& file) const;
};

/// What the file would contain, in a sentence or two for the user before it is saved.
std::string diagnosticsContents(const Patient& patient, const Diagnosis& diagnosis,
                                const Trace& trace);

/// Saves all that somebody needs who is to help from afar, in one ZIP file, whole or not at all:
/// what the doctor has found as text and as JSON, the versions, and of each controller that answers
/// the driver's settings and the parameter block; the end of the trace while it is on, as this
/// program has written it. Reads from the controllers, and changes nothing in them.
DiagnosticsSaved saveDiagnostics(const std::filesystem::path& file, const Patient& patient,
                                 const Diagnosis& diagnosis, const Trace& trace,
                                 const DoctorProgress& progress = nullptr);

}  // namespace touch
