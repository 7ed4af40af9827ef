#include "support/files/own_folder.h"

#include <cerrno>
#include <utility>

#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr int mostNames = 1000;  // beside one file, or of one time and controller

tl::unexpected<FileError> folderError(const fs::path& path, std::string found) {
  return tl::unexpected(
      FileError{path.string(), 0, say("files", "a folder of this user's own"), std::move(found)});
}

tl::unexpected<FileError> ownFileError(const fs::path& path, const SystemFolder::Refusal& refusal,
                                       OwnFolder::Opening how = OwnFolder::Opening::create) {
  const std::string possible = how == OwnFolder::Opening::read
                                   ? say("files", "a file that can be read")
                                   : say("files", "a place that can be written");
  return tl::unexpected(
      FileError{path.string(), 0,
                refusal.why ? possible : say("files", "a file of this user's own"), refusal.found});
}

bool endsInALine(std::FILE* file) {
  return std::fseek(file, -1, SEEK_END) != 0 || std::fgetc(file) == '\n';
}

}  // namespace

Result<OwnFolder> OwnFolder::open(const fs::path& path) {
  auto folder = SystemFolder::open(path, true);
  if (!folder) return folderError(path, folder.error().found);
  return OwnFolder(path, std::move(*folder));
}

Result<OwnFolder> OwnFolder::openAnybodys(const fs::path& path) {
  auto folder = SystemFolder::open(path, false);
  if (!folder)
    return tl::unexpected(FileError{path.string(), 0, say("files", "a place that can be written"),
                                    folder.error().found});
  return OwnFolder(path, std::move(*folder));
}

Result<OwnFolder> OwnFolder::make(const fs::path& path) {
  std::error_code failed;
  fs::create_directories(path.parent_path(), failed);
  failed = SystemFolder::make(path);
  if (failed) return folderError(path, failed.message());
  auto made = open(path);
  if (!made) SystemFolder::removeEmpty(path);
  return made;
}

Result<OwnFolder> OwnFolder::openOrMake(const fs::path& path) {
  std::error_code ignored;
  fs::create_directories(path.parent_path(), ignored);
  const auto failed = SystemFolder::make(path);
  if (failed && failed != std::errc::file_exists) return folderError(path, failed.message());
  return open(path);
}

tl::unexpected<FileError> OwnFolder::refused(const std::string& name,
                                             const SystemFolder::Refusal& refusal) const {
  return ownFileError(path_ / name, refusal);
}

Status OwnFolder::namesReachDisk(const std::string& name) const {
  const auto kept = folder_.reachDisk();
  if (!kept) return refused(name, kept.error());
  return {};
}

Result<File> OwnFolder::openFile(const std::string& name, Opening how) const {
  auto file = folder_.openFile(name, how);
  if (!file) return ownFileError(path_ / name, file.error(), how);
  return std::move(*file);
}

Result<OwnFolder::Fresh> OwnFolder::writeBeside(const std::string& name,
                                                std::string_view content) const {
  for (int number = 0; number < mostNames; ++number) {
    Fresh fresh{nullptr, name + std::string(unfinishedEnding) +
                             (number == 0 ? std::string() : std::to_string(number))};
    auto file = folder_.openFile(fresh.name, Opening::create);
    // What a crash has left under such a name is not ours to judge.
    if (!file && file.error().exists()) continue;
    if (!file) return refused(fresh.name, file.error());
    fresh.file = std::move(*file);
    folder_.keepAsPrivate(fresh.file, name);
    const auto failed = writeOut(fresh.file.get(), content);
    if (!failed) return fresh;
    fresh.file.reset();
    folder_.remove(fresh.name);
    return refused(name, {failed, failed.message()});
  }
  return refused(name, {{}, say("files", "too many that were left unfinished")});
}

Status OwnFolder::write(const std::string& name, std::string_view content) const {
  auto fresh = writeBeside(name, content);
  if (!fresh) return tl::unexpected(fresh.error());
  const auto renamed = folder_.rename(fresh->file, fresh->name, name, true);
  if (renamed) return namesReachDisk(name);
  fresh->file.reset();
  folder_.remove(fresh->name);
  return refused(name, renamed.error());
}

Result<std::string> OwnFolder::add(const std::string& stem, const std::string& ending,
                                   std::string_view content) const {
  auto fresh = writeBeside(stem + ending, content);
  if (!fresh) return tl::unexpected(fresh.error());
  std::string name = stem + ending;
  auto renamed = folder_.rename(fresh->file, fresh->name, name, false);
  for (int number = 2; !renamed && renamed.error().exists() && number < mostNames; ++number) {
    name = stem;
    name.append("-").append(std::to_string(number)).append(ending);
    renamed = folder_.rename(fresh->file, fresh->name, name, false);
  }
  if (renamed) {
    if (const Status kept = namesReachDisk(name); !kept) return tl::unexpected(kept.error());
    return name;
  }
  fresh->file.reset();
  folder_.remove(fresh->name);
  return refused(name, renamed.error());
}

Status OwnFolder::appendLine(const std::string& name, std::string_view line) const {
  const auto file = openFile(name, Opening::append);
  if (!file) return tl::unexpected(file.error());
  std::FILE* const stream = file->get();
  const bool alone = lockAlone(stream);
  const std::uintmax_t size = sizeOf(stream);
  std::string text(endsInALine(stream) ? "" : "\n");
  text.append(line) += '\n';
  std::fseek(stream, 0, SEEK_END);
  const auto failed = writeOut(stream, text);
  if (!failed) return size == 0 ? namesReachDisk(name) : Status();
  // Another program's line may stand behind it by now; the next line ends this one.
  if (alone) cutTo(stream, size);
  return refused(name, {failed, failed.message()});
}

Result<std::string> OwnFolder::read(const std::string& name, std::size_t limit) const {
  auto file = openFile(name, Opening::read);
  if (!file) return tl::unexpected(file.error());
  return readWholeFile(std::move(*file), (path_ / name).string(), limit);
}

Status OwnFolder::remove(const std::string& name) const {
  const auto removed = folder_.remove(name);
  if (removed || removed.error().missing()) return {};
  return refused(name, removed.error());
}

Status OwnFolder::rename(const std::string& from, const std::string& to, bool replaces) const {
  const auto renamed = folder_.rename(from, to, replaces);
  if (renamed) return {};
  return refused(to, renamed.error());
}

Status OwnFolder::tryOut() const {
  auto fresh = writeBeside("probe", "can this be written?\n");
  if (!fresh) return tl::unexpected(fresh.error());
  fresh->file.reset();
  return remove(fresh->name);
}

Result<File> openOwnFile(const fs::path& path) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  const auto around = SystemFolder::open(folder, false);
  if (!around) return folderError(folder, around.error().found);
  auto file = around->openFile(utf8Of(path.filename()), SystemFolder::Opening::append);
  if (!file) return ownFileError(path, file.error());
  if (!cutTo(file->get(), 0)) {
    const std::error_code why(errno, std::generic_category());
    return ownFileError(path, {why, why.message()});
  }
  return std::move(*file);
}

}  // namespace touch
