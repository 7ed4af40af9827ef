#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <cstdint>

#include "support/files/system_file.h"

namespace touch {

File createFile(const std::filesystem::path& path) {
  // The system's C library does not know fopen's "x".
  const int created =
      _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
             _S_IREAD | _S_IWRITE);
  if (created < 0) return nullptr;
  File file(_fdopen(created, "wb"));
  if (!file) _close(created);
  return file;
}

File openForReading(const std::filesystem::path& path) {
  return File(_wfopen(path.c_str(), L"rbN"));
}

File openForWriting(const std::filesystem::path& path) {
  return File(_wfopen(path.c_str(), L"wbN"));
}

bool isRegular(std::FILE* file) {
  struct _stat64 status {};
  return _fstat64(_fileno(file), &status) == 0 && (status.st_mode & _S_IFMT) == _S_IFREG;
}

std::uintmax_t sizeOf(std::FILE* file) {
  struct _stat64 status {};
  return _fstat64(_fileno(file), &status) == 0 ? static_cast<std::uintmax_t>(status.st_size) : 0;
}

void setMode(std::FILE*, std::filesystem::perms) {
  // Who may read a file is said by its folder here, and one that nobody may write is not replaced.
}

bool cutTo(std::FILE* file, std::uintmax_t size) {
  return _chsize_s(_fileno(file), static_cast<__int64>(size)) == 0;
}

bool lockAlone(std::FILE* file) {
  constexpr int mostTries = 15;  // a window stands still meanwhile
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
  for (int tries = 0; tries < mostTries; ++tries) {
    // What is locked cannot be read here: a byte far behind the end stands for the file.
    OVERLAPPED place{};
    place.OffsetHigh = 0x7FFFFFFF;
    if (LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) !=
            0 ||
        GetLastError() != ERROR_LOCK_VIOLATION)
      return true;
    Sleep(10);
  }
  return false;
}

std::error_code renameOpen(File& file, const std::filesystem::path& from,
                           const std::filesystem::path& to) {
  // While it is open nobody else can give its name to another file; the system renames none that is
  // open, though.
  file.reset();
  std::error_code failed;
  std::filesystem::rename(from, to, failed);
  return failed;
}

bool reachDisk(std::FILE* file) {
  return _commit(_fileno(file)) == 0;
}

}  // namespace touch
