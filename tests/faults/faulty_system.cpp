#include "tests/faults/faulty_system.h"

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
#include <utility>

namespace touch::test {

namespace {

struct Hooks {
  FaultPlan* plan = nullptr;
  std::size_t sent = 0;
};

// The calls below are the C library's for the whole program, so what they obey cannot be handed to them.
Hooks& hooks() {
  static Hooks only;
  return only;
}

bool fails(int error) {
  if (hooks().plan == nullptr || !hooks().plan->next()) return false;
  errno = error;
  return true;
}

ssize_t noteSent(int file, ssize_t count) {
  const auto* const plan = hooks().plan;
  if (count > 0 && plan != nullptr && !plan->isPaused() && isatty(file) == 1) {
    hooks().sent += static_cast<std::size_t>(count);
  }
  return count;
}

/// The call that this program's own one stands in front of.
template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

FaultySystem::FaultySystem(FaultPlan& plan) {
  hooks() = {&plan, 0};
}
FaultySystem::~FaultySystem() {
  hooks() = {};
}
std::size_t FaultySystem::takeSent() {
  return std::exchange(hooks().sent, 0);
}

}  // namespace touch::test

namespace {
using touch::test::fails;
using touch::test::next;
using touch::test::noteSent;
}  // namespace

// Declared as the C library does, whose headers some of these are macros or inline functions in.
#define TOUCH_STAND_IN extern "C" __attribute__((visibility("default")))

// NOLINTBEGIN(bugprone-macro-parentheses): a parameter list cannot stand in parentheses of its own
/// A call that gives `failure` and the error when it is to fail, else what the C library does.
#define TOUCH_FAILING(result, name, parameters, arguments, error, failure) \
  TOUCH_STAND_IN result name parameters {                                  \
    static auto* const real = next<result parameters>(#name);              \
    return fails(error) ? failure : real arguments;                        \
  }
// NOLINTEND(bugprone-macro-parentheses)

TOUCH_FAILING(std::FILE*, fopen, (const char* path, const char* mode), (path, mode), EACCES,
              nullptr)
TOUCH_FAILING(std::FILE*, fopen64, (const char* path, const char* mode), (path, mode), EACCES,
              nullptr)
TOUCH_FAILING(std::size_t, fwrite,
              (const void* data, std::size_t size, std::size_t count, std::FILE* file),
              (data, size, count, file), ENOSPC, 0)
TOUCH_FAILING(int, fflush, (std::FILE * file), (file), ENOSPC, EOF)
TOUCH_FAILING(int, rename, (const char* from, const char* to), (from, to), EACCES, -1)
TOUCH_FAILING(int, mkdir, (const char* path, mode_t mode), (path, mode), EACCES, -1)
TOUCH_FAILING(ssize_t, read, (int file, void* data, std::size_t size), (file, data, size), EIO, -1)
TOUCH_FAILING(ssize_t, readv, (int file, const iovec* parts, int count), (file, parts, count), EIO,
              -1)
TOUCH_FAILING(int, tcflush, (int file, int which) noexcept, (file, which), EIO, -1)
TOUCH_FAILING(int, tcsetattr, (int file, int when, const termios* line) noexcept,
              (file, when, line), EIO, -1)

// What the disk does then is not for a test to wait for.
TOUCH_STAND_IN int fsync(int) {
  return fails(EIO) ? -1 : 0;
}
TOUCH_STAND_IN int open(const char* path, int flags, ...) {
  static auto* const real = next<int(const char*, int, ...)>("open");
  std::va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return fails(EBUSY) ? -1 : real(path, flags, mode);
}
TOUCH_STAND_IN ssize_t write(int file, const void* data, std::size_t size) {
  static auto* const real = next<ssize_t(int, const void*, std::size_t)>("write");
  return fails(ENOSPC) ? -1 : noteSent(file, real(file, data, size));
}
TOUCH_STAND_IN ssize_t writev(int file, const iovec* parts, int count) {
  static auto* const real = next<ssize_t(int, const iovec*, int)>("writev");
  return fails(ENOSPC) ? -1 : noteSent(file, real(file, parts, count));
}
TOUCH_STAND_IN int ioctl(int file, unsigned long request, ...) noexcept {
  static auto* const real = next<int(int, unsigned long, void*)>("ioctl");
  std::va_list rest;
  va_start(rest, request);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  return fails(EIO) ? -1 : real(file, request, argument);
}
