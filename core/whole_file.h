#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/result.h"

namespace touch {

/// How the name of a file ends that is being written beside the one that it is to replace; a number may follow. Only a
/// crash leaves one behind.
inline constexpr std::string_view unfinishedEnding = ".new";

/// Writes `content` to `path` whole or not at all: into a new file beside it, which is flushed to
/// the disk and then takes the name. After an error, which is returned, the old file is as it was
/// and nothing else is left behind.
std::optional<FileError> writeWholeFile(const std::filesystem::path& path,
                                        std::string_view content);

/// Puts the next piece of a text in place of what is in `piece`; false when there is none.
using NextPiece = std::function<bool(std::string& piece)>;

/// The same for a content that should not be in memory as a whole.
std::optional<FileError> writeWholeFile(const std::filesystem::path& path, const NextPiece& next);

/// Appends `line` and LF to `path`, made when missing, and flushes to the disk. After an error,
/// which is returned, the file ends where it ended before. A last line that was cut off by a crash
/// is ended first.
std::optional<FileError> appendLine(const std::filesystem::path& path, std::string_view line);

/// A regular file of at most `limit` bytes, read from its start piece by piece: little of it is in memory at a time.
class FileInPieces {
 public:
  static Result<FileInPieces, FileError> open(const std::filesystem::path& path, std::size_t limit);

  /// As many of its next bytes as `piece` holds, and how many those were: 0 at the end, and when it failed.
  std::size_t read(std::span<char> piece);
  /// Why it failed.
  const std::optional<FileError>& error() const { return error_; }

 private:
  FileInPieces(const std::filesystem::path& path, std::size_t limit);

  std::string name_;
  std::ifstream file_;
  std::size_t limit_;
  std::size_t count_ = 0;
  std::optional<FileError> error_;
};

/// The content of a regular file of at most `limit` bytes.
Result<std::string, FileError> readWholeFile(const std::filesystem::path& path, std::size_t limit);

/// The lines of `text` without their ends, LF or CR LF; the last one needs no end.
std::vector<std::string_view> linesOf(std::string_view text);

/// What was found in a file, fit for a message: in quotes, at most 24 characters, other bytes than
/// printable ASCII as "\x1B"; "an empty line" for nothing.
std::string foundText(std::string_view found);

}  // namespace touch
