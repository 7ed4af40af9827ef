#pragma once

#include <chrono>
#include <span>
#include <string>

namespace touch {

/// A file in a ZIP archive.
struct ZipEntry {
  std::string name;  ///< UTF-8, with "/" between folders; no two entries have the same
  std::string content;
};

/// The archive that holds these entries, as the bytes of a file; they are stored as they are, dated
/// `time` in UTC. All of them together must stay below 4 GiB, and there may be no more than 65535:
/// the plain form of a ZIP file has no room for more.
std::string zipArchive(std::span<const ZipEntry> entries,
                       std::chrono::system_clock::time_point time);

}  // namespace touch
