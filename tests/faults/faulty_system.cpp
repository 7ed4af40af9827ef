#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include "tests/faults/fault_plan.h"

namespace touch::test {
namespace {

bool fails(int error) {
  if (planObeyed == nullptr || !planObeyed->next()) return false;
  errno = error;
  return true;
}

ssize_t noteSent(int file, ssize_t count) {
  if (count > 0 && planObeyed != nullptr && !planObeyed->paused && isatty(file) == 1) {
    sentBytes += static_cast<std::size_t>(count);
  }
  return count;
}

bool bytesAreOnDisk = true;

std::size_t noteWritten(std::size_t count) {
  bytesAreOnDisk = false;
  return count;
}

int noteNamed(int failed) {
  if (failed == 0) namesAreOnDisk = false;
  return failed;
}

int noteRenamed(int failed) {
  bytesCameFirst = bytesCameFirst && bytesAreOnDisk;
  return failed;
}

/// The call that this program's own one stands in front of.
template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// Declared as the C library does, whose headers some of these are macros or inline functions in.
#define TOUCH_STAND_IN extern "C" __attribute__((visibility("default")))

/// A call that gives `failure` and the error when it is to fail, else what `call` of the C
/// library's `real` one does.
#define TOUCH_FAILING(result, name, parameters, error, failure, call) \
  TOUCH_STAND_IN result name parameters {                             \
    static auto* const real = next<result parameters>(#name);         \
    return fails(error) ? failure : call;                             \
  }

TOUCH_FAILING(std::FILE*, fopen, (const char* path, const char* mode), EACCES, nullptr,
              real(path, mode))
TOUCH_FAILING(std::FILE*, fopen64, (const char* path, const char* mode), EACCES, nullptr,
              real(path, mode))
TOUCH_FAILING(std::size_t, fwrite,
              (const void* data, std::size_t size, std::size_t count, std::FILE* file), ENOSPC, 0,
              noteWritten(real(data, size, count, file)))
TOUCH_FAILING(int, fflush, (std::FILE * file), ENOSPC, EOF, real(file))
TOUCH_FAILING(int, rename, (const char* from, const char* to), EACCES, -1,
              noteRenamed(real(from, to)))
TOUCH_FAILING(int, renameat, (int from, const char* old, int to, const char* name), EACCES, -1,
              noteNamed(noteRenamed(real(from, old, to, name))))
TOUCH_FAILING(int, renameat2,
              (int from, const char* old, int to, const char* name, unsigned flags) noexcept,
              EACCES, -1, noteNamed(noteRenamed(real(from, old, to, name, flags))))
TOUCH_FAILING(int, mkdir, (const char* path, mode_t mode), EACCES, -1, noteNamed(real(path, mode)))
TOUCH_FAILING(ssize_t, read, (int file, void* data, std::size_t size), EIO, -1,
              real(file, data, size))
TOUCH_FAILING(ssize_t, readv, (int file, const iovec* parts, int count), EIO, -1,
              real(file, parts, count))
TOUCH_FAILING(ssize_t, write, (int file, const void* data, std::size_t size), ENOSPC, -1,
              noteSent(file, real(file, data, size)))
TOUCH_FAILING(ssize_t, writev, (int file, const iovec* parts, int count), ENOSPC, -1,
              noteSent(file, real(file, parts, count)))
TOUCH_FAILING(int, tcflush, (int file, int which) noexcept, EIO, -1, real(file, which))
TOUCH_FAILING(int, tcsetattr, (int file, int when, const termios* line) noexcept, EIO, -1,
              real(file, when, line))

// What the disk does then is not for a test to wait for.
TOUCH_STAND_IN int fsync(int file) {
  if (fails(EIO)) return -1;
  struct stat status {};
  if (fstat(file, &status) == 0) (S_ISDIR(status.st_mode) ? namesAreOnDisk : bytesAreOnDisk) = true;
  return 0;
}
TOUCH_STAND_IN int open(const char* path, int flags, ...) {
  static auto* const real = next<int(const char*, int, ...)>("open");
  std::va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return fails(EBUSY) ? -1 : real(path, flags, mode);
}
TOUCH_STAND_IN int openat(int folder, const char* path, int flags, ...) {
  static auto* const real = next<int(int, const char*, int, ...)>("openat");
  std::va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return fails(EACCES) ? -1 : real(folder, path, flags, mode);
}
TOUCH_STAND_IN int ioctl(int file, unsigned long request, ...) noexcept {
  static auto* const real = next<int(int, unsigned long, void*)>("ioctl");
  std::va_list rest;
  va_start(rest, request);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  const bool failing = fails(EIO);
  // A device forgets at its last close that it was had alone. This one's other end stays open.
  if (failing && request == TIOCNXCL) real(file, request, nullptr);
  return failing ? -1 : real(file, request, argument);
}

}  // namespace touch::test
