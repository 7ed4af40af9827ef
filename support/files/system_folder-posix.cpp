#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>
#include <utility>

#include "support/files/system_folder.h"
#include "support/text/language.h"

namespace touch {

namespace {

using Refusal = SystemFolder::Refusal;

class OpenDescriptor {
 public:
  explicit OpenDescriptor(int number) : number_(number) {}
  OpenDescriptor(const OpenDescriptor&) = delete;
  OpenDescriptor& operator=(const OpenDescriptor&) = delete;
  ~OpenDescriptor() {
    if (number_ >= 0) close(number_);
  }
  int number() const { return number_; }
  int release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

tl::unexpected<Refusal> refusedBySystem() {
  const std::error_code why(errno, std::generic_category());
  return tl::unexpected(Refusal{why, why.message()});
}

tl::unexpected<Refusal> refusedByUs(std::string found) {
  return tl::unexpected(Refusal{{}, std::move(found)});
}

/// Whether a file is this program's.
Result<void, Refusal> judged(const struct stat& status) {
  if (S_ISLNK(status.st_mode)) return refusedByUs(say("files", "a link"));
  if (S_ISDIR(status.st_mode)) return refusedByUs(say("files", "a folder"));
  if (!S_ISREG(status.st_mode)) return refusedByUs(say("files", "a device or a pipe"));
  if (status.st_uid != geteuid()) return refusedByUs(say("files", "another user's file"));
  if (status.st_nlink > 1) return refusedByUs(say("files", "a file that has a second name"));
  return {};
}

bool isSame(const struct stat& one, const struct stat& other) {
  return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

struct AccessMode {
  int flags;
  const char* mode;
};

AccessMode accessFor(SystemFolder::Opening how) {
  using enum SystemFolder::Opening;
  switch (how) {
    case create:
      return {O_RDWR | O_CREAT | O_EXCL, "w+b"};
    case append:
      return {O_RDWR | O_APPEND | O_CREAT, "a+b"};
    case alone:
      return {O_RDWR, "r+b"};
    case read:
      break;
  }
  return {O_RDONLY, "rb"};
}

}  // namespace

struct SystemFolder::Native {
  explicit Native(int number) : folder(number) {}
  Native(const Native&) = delete;
  Native& operator=(const Native&) = delete;
  ~Native() { ::close(folder); }
  int number() const { return folder; }

  int folder;
};

Result<SystemFolder, Refusal> SystemFolder::open(const std::filesystem::path& path, bool own) {
  const int links = own ? O_NOFOLLOW : 0;
  const int opened = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | links);
  if (opened < 0) {
    const auto refused = refusedBySystem();
    struct stat status {};
    const bool isLink = own && lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
    return isLink ? refusedByUs(say("files", "a link")) : refused;
  }
  const auto native = std::make_shared<const Native>(opened);
  struct stat status {};
  if (fstat(opened, &status) != 0) return refusedBySystem();
  if (own && status.st_uid != geteuid()) return refusedByUs(say("files", "another user's folder"));
  return SystemFolder(native);
}

std::error_code SystemFolder::make(const std::filesystem::path& path) {
  if (mkdir(path.c_str(), S_IRWXU | S_IRWXG | S_IRWXO) != 0)
    return {errno, std::generic_category()};
  // Folders can be made in one that cannot be opened.
  const auto around = open(path.has_parent_path() ? path.parent_path() : ".", false);
  const auto kept = around ? around->reachDisk() : Result<void, Refusal>();
  if (kept) return {};
  removeEmpty(path);
  return kept.error().why;
}

bool SystemFolder::mayMakeIn(const std::filesystem::path& path) {
  return faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

void SystemFolder::removeEmpty(const std::filesystem::path& path) {
  rmdir(path.c_str());
}

Result<void, Refusal> SystemFolder::judge(const std::string& name) const {
  struct stat status {};
  if (fstatat(native_->number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
    return refusedBySystem();
  return judged(status);
}

Result<File, Refusal> SystemFolder::openFile(const std::string& name, Opening how) const {
  // To open a device can be to use it; so it is looked at first, and what was opened is looked at
  // again.
  const auto before = judge(name);
  if (!before && !before.error().missing() && how != Opening::create)
    return tl::unexpected(before.error());
  const auto [flags, mode] = accessFor(how);
  OpenDescriptor opened(openat(native_->number(), name.c_str(),
                               flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                               S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH));
  if (opened.number() < 0) return refusedBySystem();
  struct stat status {};
  if (fstat(opened.number(), &status) != 0) return refusedBySystem();
  if (const auto ours = judged(status); !ours) return tl::unexpected(ours.error());
  const bool alone = how == Opening::create || how == Opening::alone;
  // A file system that knows no locks is no reason to do without.
  if (alone && flock(opened.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
    return refusedByUs(say("files", "one that another program has"));
  File file(fdopen(opened.number(), mode));
  if (!file) return refusedBySystem();
  opened.release();
  return file;
}

Result<void, Refusal> SystemFolder::rename(File& file, const std::string& from,
                                           const std::string& to, bool replaces) const {
  struct stat opened {};
  struct stat named {};
  const int folder = native_->number();
  if (fstat(fileno(file.get()), &opened) != 0 ||
      fstatat(folder, from.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0)
    return refusedBySystem();
  if (!isSame(opened, named)) return refusedByUs(say("files", "another file in its place"));
  return rename(from, to, replaces);
}

Result<void, Refusal> SystemFolder::rename(const std::string& from, const std::string& to,
                                           bool replaces) const {
  const int folder = native_->number();
  if (auto ours = judge(from); !ours) return ours;
  if (replaces) {
    auto there = judge(to);
    if (!there && !there.error().missing()) return there;
    if (renameat(folder, from.c_str(), folder, to.c_str()) != 0) return refusedBySystem();
    return {};
  }
  if (renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0) return {};
  if (errno != EINVAL && errno != ENOSYS) return refusedBySystem();
  // Some file systems cannot do both in one step: the name is claimed first, by an empty file.
  const auto claimed = openFile(to, Opening::create);
  if (!claimed) return tl::unexpected(claimed.error());
  if (renameat(folder, from.c_str(), folder, to.c_str()) == 0) return {};
  auto refused = refusedBySystem();
  unlinkat(folder, to.c_str(), 0);
  return refused;
}

void SystemFolder::keepAsPrivate(File& file, const std::string& name) const {
  struct stat status {};
  if (fstatat(native_->number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && judged(status))
    fchmod(fileno(file.get()), status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO));
}

Result<void, Refusal> SystemFolder::remove(const std::string& name) const {
  if (auto ours = judge(name); !ours) return ours;
  if (unlinkat(native_->number(), name.c_str(), 0) != 0) return refusedBySystem();
  return {};
}

Result<void, Refusal> SystemFolder::reachDisk() const {
  // Some file systems write names at once and refuse to be asked.
  if (fsync(native_->number()) == 0 || errno == EINVAL || errno == ENOTSUP) return {};
  return refusedBySystem();
}

std::vector<std::string> SystemFolder::names() const {
  std::vector<std::string> all;
  const int again = openat(native_->number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (again < 0) return all;
  DIR* const listing = fdopendir(again);
  if (listing == nullptr) {
    close(again);
    return all;
  }
  while (const dirent* const entry = readdir(listing)) {
    const std::string_view name = static_cast<const char*>(entry->d_name);
    if (name != "." && name != "..") all.emplace_back(name);
  }
  closedir(listing);
  return all;
}

std::vector<std::filesystem::path> systemFolders() {
  return {"/bin",    "/boot", "/dev", "/etc",  "/lib", "/lib32", "/lib64",
          "/libx32", "/proc", "/run", "/sbin", "/sys", "/usr",   "/var"};
}

std::vector<std::filesystem::path> sharedFolders() {
  return {"/dev/shm", "/run/media", "/run/user", "/var/home", "/var/lib", "/var/tmp"};
}

}  // namespace touch
