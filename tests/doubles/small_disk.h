#pragma once

#if !defined(_WIN32)
#include <sys/resource.h>
#include "tests/doubles/test.h"
#endif

namespace touch::test {

/// As long as it lives, no file of this process can grow beyond `bytes`: what a full disk does to
/// whoever writes.
class SmallDisk {
 public:
#if defined(_WIN32)
  explicit SmallDisk(std::uint64_t) {}
#else
  explicit SmallDisk(std::uint64_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  void (*handler_)(int);
  rlimit before_{};
#endif
};

}  // namespace touch::test
