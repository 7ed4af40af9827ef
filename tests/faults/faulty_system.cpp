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

// Declared as the C library does, whose headers some of these are macros or inline functions in.
#define TOUCH_STAND_IN extern "C" __attribute__((visibility("default")))

namespace {
using touch::test::fails;
using touch::test::next;
using touch::test::noteSent;
}  // namespace

TOUCH_STAND_IN std::FILE* fopen(const char* path, const char* mode) {
  static auto* const real = next<std::FILE*(const char*, const char*)>("fopen");
  return fails(EACCES) ? nullptr : real(path, mode);
}
TOUCH_STAND_IN std::FILE* fopen64(const char* path, const char* mode) {
  static auto* const real = next<std::FILE*(const char*, const char*)>("fopen64");
  return fails(EACCES) ? nullptr : real(path, mode);
}
TOUCH_STAND_IN std::size_t fwrite(const void* data, std::size_t size, std::size_t count,
                                  std::FILE* file) {
  static auto* const real =
      next<std::size_t(const void*, std::size_t, std::size_t, std::FILE*)>("fwrite");
  return fails(ENOSPC) ? 0 : real(data, size, count, file);
}
TOUCH_STAND_IN int fflush(std::FILE* file) {
  static auto* const real = next<int(std::FILE*)>("fflush");
  return fails(ENOSPC) ? EOF : real(file);
}
// What the disk does then is not for a test to wait for.
TOUCH_STAND_IN int fsync(int) {
  return fails(EIO) ? -1 : 0;
}
TOUCH_STAND_IN int rename(const char* from, const char* to) {
  static auto* const real = next<int(const char*, const char*)>("rename");
  return fails(EACCES) ? -1 : real(from, to);
}
TOUCH_STAND_IN int mkdir(const char* path, mode_t mode) {
  static auto* const real = next<int(const char*, mode_t)>("mkdir");
  return fails(EACCES) ? -1 : real(path, mode);
}
TOUCH_STAND_IN int open(const char* path, int flags, ...) {
  static auto* const real = next<int(const char*, int, ...)>("open");
  std::va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return fails(EBUSY) ? -1 : real(path, flags, mode);
}
TOUCH_STAND_IN ssize_t read(int file, void* data, std::size_t size) {
  static auto* const real = next<ssize_t(int, void*, std::size_t)>("read");
  return fails(EIO) ? -1 : real(file, data, size);
}
TOUCH_STAND_IN ssize_t readv(int file, const iovec* parts, int count) {
  static auto* const real = next<ssize_t(int, const iovec*, int)>("readv");
  return fails(EIO) ? -1 : real(file, parts, count);
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
TOUCH_STAND_IN int tcflush(int file, int which) noexcept {
  static auto* const real = next<int(int, int)>("tcflush");
  return fails(EIO) ? -1 : real(file, which);
}
TOUCH_STAND_IN int tcsetattr(int file, int when, const termios* line) noexcept {
  static auto* const real = next<int(int, int, const termios*)>("tcsetattr");
  return fails(EIO) ? -1 : real(file, when, line);
}
