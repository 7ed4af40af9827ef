#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "measure/lines/line_procedure.h"
#include "support/result.h"

namespace touch::measure {

// Files of single lines, "Tvm-v1.txt" … "Tvm-v9.txt" for the vertical ones and "Tvm-h1.txt" …
// "Tvm-h9.txt" for the horizontal ones. Numbers are laid out as number_layout.h says; numbers of
// one record are in print zones. The records are
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

/// What such a file holds.
struct LineFile {
  const Guide* guide = nullptr;
  TwipsSize screen;
  double widthMm = 0;
  double heightMm = 0;
  float position = 0;  ///< of the guide
  std::vector<TwipsPoint> samples;
};
LineFile lineFileOf(const Guide& guide, TwipsSize screen, const PanelSize& size,
                    std::vector<TwipsPoint> samples);

/// Empty for a line that has none: a diagonal, or a way back.
std::string lineFileName(const Guide& guide);
/// Whether what was drawn is there again after the program has ended.
bool isKeptAsFile(const Trace& trace);

std::string lineFileText(const LineFile& line);
[[nodiscard]] Status writeLineFile(const std::filesystem::path& folder, const LineFile& line);

Result<LineFile> parseLineFile(std::string_view text, const Guide& guide, std::string name);
Result<LineFile> readLineFile(const std::filesystem::path& folder, const Guide& guide);

/// Renames the files of `guides` to "Tvm-v1.txt.old" and so on, all with the first of ".old",
/// ".old2", ".old3" … that none of them has yet. Those that cannot be renamed stay as they are; the
/// error is that of the first.
[[nodiscard]] Status setAside(const std::filesystem::path& folder,
                              std::span<const Guide* const> guides);

/// "Next": writes the drawn line's file and goes on. A file there that holds anything but what
/// `procedure` had of the line is set aside first. After an error the line goes on all the same,
/// and is kept in the measurement only.
[[nodiscard]] Status keepAndGoOn(const std::filesystem::path& folder, LineProcedure& procedure,
                                 const PanelSize& size);

/// The lines that an earlier run left in the folder. Those of another screen or panel are passed
/// over.
struct EarlierLines {
  std::vector<LineFile> lines;
  std::vector<FileError> damaged;  ///< files that cannot be read, and why

  std::vector<const Guide*> guides() const;
};
EarlierLines readLineFiles(const std::filesystem::path& folder, const LineProcedure& procedure,
                           const PanelSize& size);

}  // namespace touch::measure
