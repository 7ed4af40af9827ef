#include "commission/replay/source_recordings.h"

#include <fmt/format.h>

#include <algorithm>
#include <random>
#include <system_error>

#include "commission/bundle/bundle.h"
#include "commission/run/run_folder.h"
#include "support/files/own_folder.h"
#include "support/text/language.h"
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
  if (failed) {
    return tl::unexpected(FileError{say("commission", "the system's temporary folder"), 0,
                                    say("commission", "a folder"), failed.message()});
  }
  std::random_device random;
  auto folder =
      OwnFolder::make(base / fmt::format("touchutility-{:08x}{:08x}", random(), random()));
  if (!folder) return folder;
  fs::permissions(folder->path(), fs::perms::owner_all, failed);
  if (!failed) return folder;
  std::error_code ignored;
  fs::remove(folder->path(), ignored);
  return tl::unexpected(FileError{utf8Of(folder->path()), 0,
                                  say("commission", "a folder for this user alone"),
                                  failed.message()});
}

}  // namespace

SourceRecordings::Unpacked::~Unpacked() {
  std::error_code failed;
  fs::remove_all(folder_, failed);
}

Result<SourceRecordings> SourceRecordings::of(const fs::path& source) {
  SourceRecordings recordings;
  recordings.source_ = source;
  std::error_code unknown;
  if (fs::is_directory(source, unknown)) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(source, unknown))
      names.push_back(utf8Of(entry.path().filename()));
    recordings.names_ = recordingsAmong(names);
    return recordings;
  }
  const auto bundle = Bundle::open(source);
  if (!bundle) return tl::unexpected(bundle.error());
  recordings.isBundle_ = true;
  recordings.names_ = recordingsAmong(bundle->files().names());
  return recordings;
}

bool SourceRecordings::has(const std::string& name) const {
  return std::ranges::find(names_, name) != names_.end();
}

Result<fs::path> SourceRecordings::file(const std::string& name) {
  if (!isBundle_) return source_ / name;
  const auto bundle = Bundle::open(source_);
  if (!bundle) return tl::unexpected(bundle.error());
  const auto content = bundle->files().content(name);
  if (!content) return tl::unexpected(content.error());
  if (!unpacked_) {
    const auto made = makeTemporaryFolder();
    if (!made) return tl::unexpected(made.error());
    unpacked_ = std::make_shared<const Unpacked>(made->path());
  }
  const auto folder = OwnFolder::open(unpacked_->folder());
  if (!folder) return tl::unexpected(folder.error());
  if (const auto written = folder->write(name, *content); !written)
    return tl::unexpected(written.error());
  return unpacked_->folder() / name;
}

Result<fs::path> SourceRecordings::folder() {
  fs::path folder;
  for (const std::string& name : names_) {
    const auto unpacked = file(name);
    if (!unpacked) return tl::unexpected(unpacked.error());
    folder = unpacked->parent_path();
  }
  return folder;
}

}  // namespace touch::commission
