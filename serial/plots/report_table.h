#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "serial/plots/timed_reports.h"
#include "support/files/whole_file.h"

namespace touch {

// Reports as a table: a heading, and a line for each.

inline constexpr std::string_view reportTableHeading = "time_s,touching,x,y,interval_ms,reckoned\n";
std::string tableLine(const TimedReport& report);

/// The table of a recording, written while that is read: however long it is, little of it is in
/// memory.
class ReportTableFile {
 public:
  static Result<ReportTableFile> begin(const std::filesystem::path& path, RecordedReports reports);
  /// Goes on by so many transfers. Whether there are more; when there are none the file is whole.
  /// When the recording cannot be read on, the file has what stands before.
  Result<bool> writeOn(std::size_t transfers);
  double progress() const { return reports_.progress(); }

 private:
  ReportTableFile(UnfinishedFile file, RecordedReports reports)
      : file_(std::move(file)), reports_(std::move(reports)) {}

  UnfinishedFile file_;
  RecordedReports reports_;
};

}  // namespace touch
