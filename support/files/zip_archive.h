#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/result.h"

namespace touch {

/// A file in a ZIP archive.
struct ZipEntry {
  std::string name;  ///< UTF-8, with "/" between folders; no two entries have the same
  std::string content;
};

/// The archive that holds these entries, as the bytes of a file, dated `time` in UTC. What becomes
/// smaller by it is deflated. All of them together must stay below 4 GiB, and there may be no more
/// than 65535: the plain form of a ZIP file has no room for more.
std::string zipArchive(std::span<const ZipEntry> entries,
                       std::chrono::system_clock::time_point time);

/// An archive of that plain form that is read: from anybody, so nothing in it is believed.
class ZipReader {
 public:
  /// More entries, or larger ones when unpacked, are refused.
  struct Most {
    std::size_t entries = 1000;
    std::size_t size = std::size_t{320} << 20U;
  };

  /// `archive` is the bytes of the file that errors call `file`. Names that lead out of a folder,
  /// and names that stand twice, are refused.
  static Result<ZipReader> open(std::string archive, std::string file, Most most);

  /// In the order of the archive, without folders.
  std::vector<std::string> names() const;
  bool holds(std::string_view name) const { return find(name) != nullptr; }
  /// Refused when it is not what the archive says of it: its size, its check sum.
  Result<std::string> content(std::string_view name) const;

 private:
  struct Entry {
    std::string name;
    std::uint16_t method = 0;
    std::uint32_t checkSum = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t size = 0;
    std::size_t place = 0;  ///< of its local header
  };

  const Entry* find(std::string_view name) const;

  std::string archive_;
  std::string file_;
  std::vector<Entry> entries_;
};

}  // namespace touch
