#pragma once

#include <cstddef>

#include "tests/faults/fault_plan.h"

namespace touch::test {

/// As long as it lives, this program's calls of the operating system for files and serial ports count in the plan and
/// fail where it says so: a full disk for what writes files, an input/output error for the rest. One at a time.
class FaultySystem {
 public:
  explicit FaultySystem(FaultPlan& plan);
  ~FaultySystem();
  FaultySystem(const FaultySystem&) = delete;
  FaultySystem& operator=(const FaultySystem&) = delete;

  /// Bytes that have really gone to terminals since this was last asked.
  std::size_t takeSent();
};

}  // namespace touch::test
