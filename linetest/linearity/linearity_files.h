#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "linetest/linearity/linearity.h"
#include "linetest/linearity/linearity_procedure.h"
#include "support/result.h"

namespace touch {

// Result files of the linearity tester, "Tvm-v1.txt" … "Tvm-v9.txt" for the vertical lines and
// "Tvm-h1.txt" … "Tvm-h9.txt" for the horizontal ones. Numbers are laid out as number_layout.h
// says; numbers of one record are in print zones. The records are
//
//   V-1                            the line: V or H and its number
//   screen width, height           twips
//   panel width, height            mm
//   guide position                 twips
//   n                              count of samples, 1 to 3001
//   x, y, deviation                n times: twips, twips, mm from the guide, positive to the right
//   or downwards average, maximum, minimum, RMS of the deviations, mm
//
// Deviations and figures are there for readers; the system takes the samples and measures them
// again.

std::string resultFileName(const TestLine& line);

std::string resultText(const LineResult& result, const MeasuredPanel& panel);
[[nodiscard]] Status writeResult(const std::filesystem::path& folder, const TestLine& line,
                                 const LineResult& result, const MeasuredPanel& panel);

/// Renames the files of `lines` to "Tvm-v1.txt.old" and so on, all with the first of ".old",
/// ".old2", ".old3" … that none of them has yet. Those that cannot be renamed stay as they are; the
/// error is that of the first.
[[nodiscard]] Status setAside(const std::filesystem::path& folder, std::span<const TestLine> lines);

/// "Next": writes the drawn line's result file and goes on. A file there that holds anything but
/// the result that `procedure` had of the line is set aside first. After an error the line
/// goes on all the same, with its result kept in `procedure` only.
[[nodiscard]] Status keepAndGoOn(const std::filesystem::path& folder,
                                 LinearityProcedure& procedure);

/// A result with the panel that it was measured on.
struct ReadResult {
  LineResult result;
  MeasuredPanel panel;
};
Result<ReadResult> parseResult(std::string_view text, const TestLine& line, std::string name);
Result<ReadResult> readResult(const std::filesystem::path& folder, const TestLine& line);

/// The results that an earlier run left in the folder. Those of another screen or panel are passed
/// over.
struct EarlierResults {
  std::vector<std::pair<TestLine, LineResult>> results;
  std::vector<FileError> damaged;  ///< files that cannot be read, and why

  std::vector<TestLine> lines() const;
};
EarlierResults readResults(const std::filesystem::path& folder, const MeasuredPanel& panel);

/// One record for each line, with a heading: RFC 4180, points in numbers, lengths in mm.
std::string csvText(std::span<const LineResult> results, const MeasuredPanel& panel,
                    const LinearityLimits& limits);

}  // namespace touch
