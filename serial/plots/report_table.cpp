#include "serial/plots/report_table.h"

#include <fmt/format.h>

#include <chrono>
#include <utility>

namespace touch {

std::string tableLine(const TimedReport& report) {
  const std::string interval =
      report.interval
          ? fmt::format("{:.3f}",
                        std::chrono::duration<double, std::milli>(*report.interval).count())
          : std::string();
  return fmt::format("{:.6f},{},{},{},{},{}\n", std::chrono::duration<double>(report.time).count(),
                     report.touching ? 1 : 0, report.x.value, report.y.value, interval,
                     report.reckoned ? 1 : 0);
}

Result<ReportTableFile> ReportTableFile::begin(const std::filesystem::path& path,
                                               RecordedReports reports) {
  auto file = UnfinishedFile::begin(path);
  if (!file) return tl::unexpected(file.error());
  if (const auto written = file->add(reportTableHeading); !written)
    return tl::unexpected(written.error());
  return ReportTableFile(std::move(*file), std::move(reports));
}

Result<bool> ReportTableFile::writeOn(std::size_t transfers) {
  std::string lines;
  auto more =
      reports_.takeSome(transfers, [&lines](const TimedReport& r) { lines += tableLine(r); });
  if (const auto written = file_.add(lines); !written) return tl::unexpected(written.error());
  if (more && *more) return true;
  if (const auto whole = file_.finish(); !whole) return tl::unexpected(whole.error());
  return more;
}

}  // namespace touch
