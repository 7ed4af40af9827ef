#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

#include "support/files/system_folder.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

using Refusal = SystemFolder::Refusal;
namespace fs = std::filesystem;

class OpenHandle {
 public:
  explicit OpenHandle(HANDLE handle) : handle_(handle) {}
  OpenHandle(const OpenHandle&) = delete;
  OpenHandle& operator=(const OpenHandle&) = delete;
  ~OpenHandle() {
    if (isOpen()) CloseHandle(handle_);
  }
  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }
  HANDLE release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

 private:
  HANDLE handle_;
};

std::error_code lastFailure() {
  const DWORD number = GetLastError();
  switch (number) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return std::make_error_code(std::errc::no_such_file_or_directory);
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return std::make_error_code(std::errc::file_exists);
    default:
      return {static_cast<int>(number), std::system_category()};
  }
}

tl::unexpected<Refusal> refusedByUs(std::string found) {
  return tl::unexpected(Refusal{{}, std::move(found)});
}

tl::unexpected<Refusal> refusedBySystem() {
  if (GetLastError() == ERROR_SHARING_VIOLATION)
    return refusedByUs(say("files", "one that another program has"));
  const auto why = lastFailure();
  return tl::unexpected(Refusal{why, why.message()});
}

/// A symbolic link or a junction; files that a cloud service keeps are reparse points too, and no
/// links.
bool isLink(HANDLE handle) {
  FILE_ATTRIBUTE_TAG_INFO info{};
  return GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &info, sizeof info) != 0 &&
         (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         IsReparseTagNameSurrogate(info.ReparseTag);
}

/// Whether what is open is a file of this program's.
Result<void, Refusal> judged(HANDLE handle) {
  if (GetFileType(handle) != FILE_TYPE_DISK) return refusedByUs(say("files", "a device or a pipe"));
  if (isLink(handle)) return refusedByUs(say("files", "a link"));
  BY_HANDLE_FILE_INFORMATION info{};
  if (GetFileInformationByHandle(handle, &info) == 0) return refusedBySystem();
  if ((info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
    return refusedByUs(say("files", "a folder"));
  if (info.nNumberOfLinks > 1) return refusedByUs(say("files", "a file that has a second name"));
  return {};
}

struct AccessMode {
  DWORD access;
  DWORD share;
  DWORD disposition;
  int flags;
  const char* mode;
};

// Nobody else may write, rename or delete a file that is created or had alone: so the name and the
// handle stay the same file.
AccessMode accessFor(SystemFolder::Opening how) {
  using enum SystemFolder::Opening;
  constexpr DWORD readAndWrite = GENERIC_READ | GENERIC_WRITE;
  constexpr DWORD others = FILE_SHARE_READ | FILE_SHARE_WRITE;
  switch (how) {
    case create:
      return {readAndWrite | DELETE, FILE_SHARE_READ, CREATE_NEW, _O_RDWR | _O_BINARY, "w+b"};
    case append:
      return {readAndWrite, others, OPEN_ALWAYS, _O_RDWR | _O_APPEND | _O_BINARY, "a+b"};
    case alone:
      return {readAndWrite, FILE_SHARE_READ, OPEN_EXISTING, _O_RDWR | _O_BINARY, "r+b"};
    case read:
      break;
  }
  return {GENERIC_READ, others | FILE_SHARE_DELETE, OPEN_EXISTING, _O_RDONLY | _O_BINARY, "rb"};
}

/// Opens what has the name itself, and not what it may lead to.
HANDLE openItself(const fs::path& path, DWORD access, DWORD share, DWORD disposition) {
  return CreateFileW(path.c_str(), access, share, nullptr, disposition,
                     FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

Result<void, Refusal> renamedTo(HANDLE handle, const fs::path& path, bool replaces) {
  const std::wstring& name = path.native();
  std::vector<char> memory(sizeof(FILE_RENAME_INFO) + name.size() * sizeof(wchar_t));
  FILE_RENAME_INFO info{};
  info.ReplaceIfExists = replaces ? TRUE : FALSE;
  info.FileNameLength = static_cast<DWORD>(name.size() * sizeof(wchar_t));
  std::memcpy(memory.data(), &info, sizeof info);
  std::memcpy(memory.data() + offsetof(FILE_RENAME_INFO, FileName), name.data(),
              name.size() * sizeof(wchar_t));
  const BOOL done = SetFileInformationByHandle(handle, FileRenameInfo, memory.data(),
                                               static_cast<DWORD>(memory.size()));
  if (done == 0) return refusedBySystem();
  return {};
}

HANDLE handleOf(std::FILE* file) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
}

}  // namespace

/// The folder is open without leave for others to rename or delete it: so its path stays its own.
struct SystemFolder::Native {
  Native(HANDLE handle, fs::path where) : folder(handle), path(std::move(where)) {}

  OpenHandle folder;
  fs::path path;
};

Result<SystemFolder, Refusal> SystemFolder::open(const fs::path& path, bool own) {
  std::error_code failed;
  const fs::path whole = fs::absolute(path, failed).make_preferred();
  const DWORD itself = own ? FILE_FLAG_OPEN_REPARSE_POINT : 0;
  const HANDLE opened = CreateFileW(whole.c_str(), FILE_READ_ATTRIBUTES | FILE_LIST_DIRECTORY,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS | itself, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return refusedBySystem();
  const auto native = std::make_shared<const Native>(opened, whole);
  BY_HANDLE_FILE_INFORMATION info{};
  if (GetFileInformationByHandle(opened, &info) == 0) return refusedBySystem();
  if (own && isLink(opened)) return refusedByUs(say("files", "a link"));
  if ((info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
    return refusedByUs(say("files", "a file"));
  return SystemFolder(native);
}

std::error_code SystemFolder::make(const fs::path& path) {
  return CreateDirectoryW(path.c_str(), nullptr) != 0 ? std::error_code() : lastFailure();
}

bool SystemFolder::mayMakeIn(const fs::path& path) {
  const OpenHandle folder(openItself(path, FILE_ADD_SUBDIRECTORY,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     OPEN_EXISTING));
  return folder.isOpen();
}

void SystemFolder::removeEmpty(const fs::path& path) {
  RemoveDirectoryW(path.c_str());
}

Result<void, Refusal> SystemFolder::judge(const std::string& name) const {
  const OpenHandle opened(openItself(native_->path / pathNamed(name), FILE_READ_ATTRIBUTES,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     OPEN_EXISTING));
  if (!opened.isOpen()) return refusedBySystem();
  return judged(opened.get());
}

Result<File, Refusal> SystemFolder::openFile(const std::string& name, Opening how) const {
  const auto [access, share, disposition, flags, mode] = accessFor(how);
  OpenHandle opened(openItself(native_->path / pathNamed(name), access, share, disposition));
  if (!opened.isOpen()) return refusedBySystem();
  if (const auto ours = judged(opened.get()); !ours) return tl::unexpected(ours.error());
  const int number = _open_osfhandle(reinterpret_cast<std::intptr_t>(opened.get()), flags);
  if (number < 0) return refusedBySystem();
  opened.release();
  File file(_fdopen(number, mode));
  if (!file) {
    _close(number);
    return refusedBySystem();
  }
  return file;
}

Result<void, Refusal> SystemFolder::rename(File& file, const std::string&, const std::string& to,
                                           bool replaces) const {
  if (replaces) {
    auto there = judge(to);
    if (!there && !there.error().missing()) return there;
  }
  return renamedTo(handleOf(file.get()), native_->path / pathNamed(to), replaces);
}

Result<void, Refusal> SystemFolder::rename(const std::string& from, const std::string& to,
                                           bool replaces) const {
  const OpenHandle opened(openItself(native_->path / pathNamed(from), DELETE | FILE_READ_ATTRIBUTES,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     OPEN_EXISTING));
  if (!opened.isOpen()) return refusedBySystem();
  if (auto ours = judged(opened.get()); !ours) return ours;
  auto there = judge(to);
  if (replaces && !there && !there.error().missing()) return there;
  return renamedTo(opened.get(), native_->path / pathNamed(to), replaces);
}

void SystemFolder::keepAsPrivate(File&, const std::string&) const {
  // Who may read a file is said by its folder here.
}

Result<void, Refusal> SystemFolder::remove(const std::string& name) const {
  const OpenHandle opened(openItself(native_->path / pathNamed(name), DELETE | FILE_READ_ATTRIBUTES,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     OPEN_EXISTING));
  if (!opened.isOpen()) return refusedBySystem();
  if (auto ours = judged(opened.get()); !ours) return ours;
  FILE_DISPOSITION_INFO gone{TRUE};
  if (SetFileInformationByHandle(opened.get(), FileDispositionInfo, &gone, sizeof gone) == 0)
    return refusedBySystem();
  return {};
}

Result<void, Refusal> SystemFolder::reachDisk() const {
  return {};  // the system keeps a journal of names itself
}

std::vector<std::string> SystemFolder::names() const {
  std::vector<std::string> all;
  std::error_code failed;
  for (fs::directory_iterator at(native_->path, failed), end; !failed && at != end;
       at.increment(failed))
    all.push_back(utf8Of(at->path().filename()));
  return all;
}

std::vector<fs::path> systemFolders() {
  std::vector<fs::path> all;
  for (const wchar_t* const variable : {L"SystemRoot", L"ProgramFiles", L"ProgramFiles(x86)"}) {
    std::array<wchar_t, MAX_PATH> folder{};
    const DWORD length = GetEnvironmentVariableW(variable, folder.data(), MAX_PATH);
    if (length > 0 && length < MAX_PATH) all.emplace_back(std::wstring(folder.data(), length));
  }
  return all;
}

std::vector<fs::path> sharedFolders() {
  return {};
}

}  // namespace touch
