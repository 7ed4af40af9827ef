#include "support/files/marked_folder.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "support/files/whole_file.h"
#include "support/text/language.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view mark =
    "Working files of TouchUtility: those in this folder are replaced and deleted by it.\r\n";

bool hasMark(std::FILE* file) {
  std::array<char, mark.size()> found{};
  return std::fread(found.data(), 1, found.size(), file) == found.size() &&
         std::string_view(found.data(), found.size()) == mark;
}

tl::unexpected<FileError> unmarked(const fs::path& path) {
  return tl::unexpected(FileError{path.string(), 0,
                                  say("files", "a folder that TouchUtility has made"),
                                  say("files", "another one of this name")});
}

/// What a program that could not mark a folder has made goes again: it would be nobody's.
tl::unexpected<FileError> madeInVain(const OwnFolder& folder, FileError why) {
  folder.remove(MarkedFolder::markName);
  SystemFolder::removeEmpty(folder.path());
  return tl::unexpected(std::move(why));
}

}  // namespace

Result<MarkedFolder> MarkedFolder::take(const fs::path& path) {
  auto folder = OwnFolder::open(path);
  if (!folder) return tl::unexpected(folder.error());
  auto held = folder->openFile(markName, OwnFolder::Opening::alone);
  if (!held) return tl::unexpected(held.error());
  if (!hasMark(held->get())) return unmarked(path);
  return MarkedFolder(std::move(*folder), std::move(*held));
}

Result<MarkedFolder> MarkedFolder::make(const fs::path& path) {
  if (isFolderOfTheSystem(path.parent_path()))
    return tl::unexpected(FileError{path.string(), 0, say("files", "a folder for the user's files"),
                                    say("files", "one of the system's")});
  auto folder = OwnFolder::make(path);
  if (!folder) return tl::unexpected(folder.error());
  auto held = folder->openFile(markName, OwnFolder::Opening::create);
  if (!held) return madeInVain(*folder, held.error());
  if (const auto failed = writeOut(held->get(), mark)) {
    held->reset();
    return madeInVain(
        *folder, {path.string(), 0, say("files", "a place that can be written"), failed.message()});
  }
  return MarkedFolder(std::move(*folder), std::move(*held));
}

Status MarkedFolder::tryOut(const fs::path& path) {
  std::error_code failed;
  if (!fs::exists(fs::symlink_status(path, failed))) return {};
  const auto folder = OwnFolder::open(path);
  if (!folder) return tl::unexpected(folder.error());
  const auto file = folder->openFile(markName, OwnFolder::Opening::read);
  if (!file || !hasMark(file->get())) return unmarked(path);
  return folder->tryOut();
}

bool isFolderOfTheSystem(const fs::path& folder) {
  std::error_code failed;
  const fs::path real = fs::weakly_canonical(folder, failed);
  if (failed) return false;
  if (real == real.root_path()) return true;
  const auto isIn = [&real](const fs::path& around) {
    return std::ranges::mismatch(around, real).in1 == around.end();
  };
  return std::ranges::any_of(systemFolders(), isIn) &&
         std::ranges::none_of(sharedFolders(), [&](const fs::path& shared) {
           return shared != real && isIn(shared);
         });
}

}  // namespace touch
