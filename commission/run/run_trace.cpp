#include "commission/run/run_trace.h"

#include "support/files/whole_file.h"

namespace touch::commission {

namespace {

// What tells of a fault is at its end, and the bundle is to be mailed.
constexpr std::size_t longest = std::size_t{16} << 20U;

}  // namespace

RunTrace::RunTrace(Trace& trace, const RunFolder& folder)
    : trace_(trace),
      folder_(folder),
      name_(freeName(folder.names(), RunFolder::traceName, ".jsonl")) {
  if (!trace_.isOn()) isOwn_ = trace_.start(folder.path() / name_).has_value();
}

RunTrace::~RunTrace() {
  if (isOwn_) trace_.stop();
}

Status RunTrace::keep() const {
  if (isOwn_ || !trace_.isOn()) return {};
  const auto text = trace_.end(longest);
  return text ? folder_.write(name_, *text) : Status();
}

}  // namespace touch::commission
