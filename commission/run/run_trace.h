#pragma once

#include "commission/run/run_folder.h"
#include "core/driver/trace.h"

namespace touch::commission {

/// Traces a run into its folder: "trace.jsonl", and "trace-2.jsonl" … each time that it was taken
/// up again. A trace that the user has asked for goes on where it is. A run goes on without one.
class RunTrace {
 public:
  /// Both outlive it.
  RunTrace(Trace& trace, const RunFolder& folder);
  RunTrace(const RunTrace&) = delete;
  RunTrace& operator=(const RunTrace&) = delete;
  ~RunTrace();

  /// Has the folder hold the end of a trace that is written elsewhere.
  [[nodiscard]] Status keep() const;

 private:
  Trace& trace_;
  const RunFolder& folder_;
  std::string name_;
  bool isOwn_ = false;
};

}  // namespace touch::commission
