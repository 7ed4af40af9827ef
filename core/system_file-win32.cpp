#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

#include "core/system_file.h"

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

File openForAppending(const std::filesystem::path& path) {
  return File(_wfopen(path.c_str(), L"abN"));
}

File holdFile(const std::filesystem::path& path) {
  return File(_wfsopen(path.c_str(), L"abN", _SH_DENYRW));
}

bool reachDisk(std::FILE* file) {
  return _commit(_fileno(file)) == 0;
}

}  // namespace touch
