#include "commission/replay/source_recordings.h"

#include <fmt/format.h>

#include <algorithm>
#include <random>
#include <system_error>

#include "commission/bundle/bundle.h"
#include "commission/run/run_folder.h"
#include "support/files/own_folder.h"
#include "support/text/text_encoding.h"

namespace touch::commission {

namespace fs = std::filesystem;

namespace {

/// Those of `names` that are a recording's, in the order in which they were made.
std::vector<std::string> recordingsAmong(const std::vector<std::string>& names) {
  constexpr std::string_view ending = ".txt";
  std::vector<std::string> recordings;
  for (const std::string& name : names)
    if (name.starts_with(RunFolder::recordingName) && name.ends_with(ending) &&
        name.find('/') == std::string::npos)
      recordings.push_back(name);
  std::ranges::sort(recordings, {}, [](const std::string& name) {
    return std::pair(name.size(), std::string_view(name));
  });
  return recordings;
}

/// A new folder for this user alone.
Result<OwnFolder> makeTemporaryFolder() {
  std::error_code failed;
  const fs::path base = fs::temp_directory_path(failed);
  std::random_device random;
  auto folder =
      OwnFolder::make(base / fmt::format("touchutility-{:08x}{:08x}", random(), random()));
  if (folder) fs::permissions(folder->path(), fs::perms::owner_all, failed);
  return folder;
}

}  // namespace

SourceRecordings::Unpacked::~Unpacked() {
  std::error_code failed;
  fs::remove_all(folder_, failed);
}

Result<SourceRecordings> SourceRecordings::of(const fs::path& source) {
  SourceRecordings recordings;
  std::error_code unknown;
  if (fs::is_directory(source, unknown)) {
    recordings.folder_ = source;
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(source, unknown))
      names.push_back(utf8Of(entry.path().filename()));
    recordings.names_ = recordingsAmong(names);
    return recordings;
  }
  const auto bundle = Bundle::open(source);
  if (!bundle) return tl::unexpected(bundle.error());
  recordings.names_ = recordingsAmong(bundle->files().names());
  if (recordings.names_.empty()) return recordings;
  const auto folder = makeTemporaryFolder();
  if (!folder) return tl::unexpected(folder.error());
  recordings.unpacked_ = std::make_shared<const Unpacked>(folder->path());
  recordings.folder_ = folder->path();
  for (const std::string& name : recordings.names_) {
    const auto content = bundle->files().content(name);
    if (!content) return tl::unexpected(content.error());
    if (const auto written = folder->write(name, *content); !written)
      return tl::unexpected(written.error());
  }
  return recordings;
}

}  // namespace touch::commission
