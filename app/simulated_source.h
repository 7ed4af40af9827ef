#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "app/options.h"
#include "commission/replay/replay.h"
#include "commission/replay/source_recordings.h"
#include "core/driver/driver.h"

namespace touch {

/// Reads what --simulate-from names, if it was given, into the options. What the source does not
/// tell is told on the error output, in the name of `program`.
Status readSimulatedSource(Options& options, const std::string& program);

/// The source of --simulate-from; what it does not tell is told as above.
Result<std::shared_ptr<const commission::Replay>> replayNamed(const std::filesystem::path& source,
                                                              const std::string& program);

/// The recordings of what --simulate-from names; none when it was not given.
Result<commission::SourceRecordings> recordingsOf(
    const std::optional<std::filesystem::path>& source);
/// The recording that the command line calls `name`, in UTF-8: a file, or, where there is none and
/// no folder was named, one of `recordings`.
Result<std::filesystem::path> recordingNamed(const std::string& name,
                                             commission::SourceRecordings& recordings);

/// Makes a simulated driver's one controller that of the source; else why it did not become so.
Result<void, std::string> become(Driver& driver, const commission::Replay& replay);

}  // namespace touch
