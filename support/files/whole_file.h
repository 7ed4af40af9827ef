#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/files/system_file.h"
#include "support/result.h"

namespace touch {

/// How the name of a file ends that is being written beside the one that it is to replace; a number
/// may follow. Only a crash leaves one behind.
inline constexpr std::string_view unfinishedEnding = ".new";

/// Writes `content` to `path` whole or not at all: into a new file beside it, which is flushed to
/// the disk and then takes the name. After an error, which is returned, the old file is as it was
/// and nothing else is left behind.
[[nodiscard]] Status writeWholeFile(const std::filesystem::path& path, std::string_view content);

/// Puts the next piece of a text in place of what is in `piece`; false when there is none.
using NextPiece = std::function<bool(std::string& piece)>;

/// The same for a content that should not be in memory as a whole.
[[nodiscard]] Status writeWholeFile(const std::filesystem::path& path, const NextPiece& next);

/// A file that is written piece by piece, into a new file beside it. When it is finished it is
/// flushed to the disk and takes the name. Until then, and for good if it goes or fails before, the
/// old file is as it was; nothing else is left behind.
class UnfinishedFile {
 public:
  [[nodiscard]] static Result<UnfinishedFile> begin(const std::filesystem::path& path);
  UnfinishedFile(UnfinishedFile&& other) noexcept;
  UnfinishedFile& operator=(UnfinishedFile&&) = delete;
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  ~UnfinishedFile();

  [[nodiscard]] Status add(std::string_view piece);
  /// Nothing can be added then.
  [[nodiscard]] Status finish();

 private:
  UnfinishedFile(std::filesystem::path path, std::filesystem::path target,
                 std::filesystem::path beside, File file);

  std::filesystem::path path_;    ///< what an error calls it
  std::filesystem::path target_;  ///< behind a link
  std::filesystem::path beside_;
  File file_;
};

/// Writes `content` into a file that is open and waits until it has reached the disk. Returns what
/// failed.
std::error_code writeOut(std::FILE* file, std::string_view content);

/// A regular file of at most `limit` bytes, read from its start piece by piece: little of it is in
/// memory at a time.
class FileInPieces {
 public:
  static Result<FileInPieces> open(const std::filesystem::path& path, std::size_t limit);
  /// The same for one that is open; `name` is what an error calls it.
  static Result<FileInPieces> of(File file, std::string name, std::size_t limit);

  /// As many of its next bytes as `piece` holds, and how many those were: 0 at the end, and when it
  /// failed.
  std::size_t read(std::span<char> piece);
  /// Of the whole file when it was opened, as far as there is one to tell.
  std::size_t size() const { return size_; }
  /// Why it failed.
  const std::optional<FileError>& error() const { return error_; }

 private:
  FileInPieces(File file, std::string name, std::size_t limit)
      : name_(std::move(name)),
        file_(std::move(file)),
        size_(static_cast<std::size_t>(sizeOf(file_.get()))),
        limit_(limit) {}

  std::string name_;
  File file_;
  std::size_t size_;
  std::size_t limit_;
  std::size_t count_ = 0;
  std::optional<FileError> error_;
};

/// The content of a regular file of at most `limit` bytes.
Result<std::string> readWholeFile(const std::filesystem::path& path, std::size_t limit);
/// The same for one that is open; `name` is what an error calls it.
Result<std::string> readWholeFile(File file, std::string name, std::size_t limit);

/// "STEMENDING", or "STEM-2ENDING" …: the first that is none of `names`.
std::string freeName(std::span<const std::string> names, std::string_view stem,
                     std::string_view ending);

/// The lines of `text` without their ends, LF or CR LF; the last one needs no end.
std::vector<std::string_view> linesOf(std::string_view text);

/// What was found in a file, fit for a message: in quotes, at most 24 characters, other bytes than
/// printable ASCII as "\x1B"; "an empty line" for nothing.
std::string foundText(std::string_view found);

}  // namespace touch
