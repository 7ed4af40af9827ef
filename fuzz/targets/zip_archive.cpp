// ZIP archives, which bundles are.

#include "support/files/zip_archive.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const auto read = ZipReader::open(std::string(textOf(bytes)), "fuzz",
                                    {.entries = 100, .size = std::size_t{1} << 20U});
  if (!read) return;
  std::vector<ZipEntry> entries;
  for (const std::string& name : read->names()) {
    const auto content = read->content(name);
    if (!content) return;
    entries.push_back({name, *content});
  }
  const auto again = ZipReader::open(zipArchive(entries, {}), "again", {});
  require(again.has_value(), "what was read can be packed");
  for (const ZipEntry& entry : entries)
    require(again->content(entry.name) == entry.content, "it is the same");
}

}  // namespace touch::fuzz
