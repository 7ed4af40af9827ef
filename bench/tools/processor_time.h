#pragma once

#include <ctime>

namespace touch::bench {

/// What a processor clock of this program has counted, in seconds: CLOCK_THREAD_CPUTIME_ID,
/// CLOCK_PROCESS_CPUTIME_ID.
inline double processorSeconds(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

}  // namespace touch::bench
