#include "core/whole_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <system_error>
#include <utility>

#include "core/hex.h"
#include "core/language.h"
#include "core/system_file.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestQuote = 24;
constexpr int mostLeftovers = 100;
constexpr std::size_t readPiece = std::size_t{64} << 10U;

FileError writeError(const fs::path& path, const std::error_code& why) {
  return {path.string(), 0, say("core", "a place that can be written"), why.message()};
}

std::error_code lastError() {
  return {errno, std::generic_category()};
}

std::error_code writeOut(std::FILE* file, const NextPiece& next) {
  errno = 0;
  bool written = true;
  for (std::string piece; written && next(piece);)
    written = std::fwrite(piece.data(), 1, piece.size(), file) == piece.size();
  if (!written || std::fflush(file) != 0 || !reachDisk(file)) return lastError();
  return {};
}

NextPiece allOf(std::string_view content) {
  return [content, given = false](std::string& piece) mutable {
    piece = content;
    return !std::exchange(given, true);
  };
}

/// A new file beside `path`. What a crash left behind under such a name is not ours to judge: the
/// next name is taken.
std::pair<File, fs::path> newFileBeside(const fs::path& path) {
  fs::path beside;
  for (int i = 0; i < mostLeftovers; ++i) {
    beside = path;
    beside += std::string(unfinishedEnding) + (i == 0 ? std::string() : std::to_string(i));
    errno = 0;
    File file = createFile(beside);
    if (file || errno != EEXIST) return {std::move(file), beside};
  }
  return {nullptr, beside};
}

bool endsWithinALine(const fs::path& path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  if (!file || file.tellg() <= 0) return false;
  file.seekg(-1, std::ios::end);
  return file.get() != '\n';
}

}  // namespace

std::optional<FileError> writeWholeFile(const fs::path& path, std::string_view content) {
  return writeWholeFile(path, allOf(content));
}

std::optional<FileError> writeWholeFile(const fs::path& path, const NextPiece& next) {
  std::error_code failed;
  // The file behind a link is replaced, not the link.
  const fs::path target = fs::is_symlink(path, failed) ? fs::canonical(path, failed) : path;
  if (target.empty()) return writeError(path, failed);
  const auto there = fs::status(target, failed);
  if (fs::is_directory(there)) {
    return writeError(path, std::make_error_code(std::errc::is_a_directory));
  }
  if (fs::exists(there) && !fs::is_regular_file(there)) {
    return FileError{path.string(), 0, say("core", "a file"),
                     say("core", "a device or a pipe, which is not to be replaced")};
  }
  auto [file, beside] = newFileBeside(target);
  if (!file) return writeError(path, lastError());

  // Who may not read the old file may not read the new one either, not even while it is written.
  if (fs::is_regular_file(there)) {
    std::error_code ignored;
    fs::permissions(beside, there.permissions() & fs::perms::all, ignored);
  }
  failed = writeOut(file.get(), next);
  file.reset();
  if (!failed) fs::rename(beside, target, failed);
  if (!failed) return std::nullopt;
  std::error_code ignored;
  fs::remove(beside, ignored);
  return writeError(path, failed);
}

std::optional<FileError> appendLine(const fs::path& path, std::string_view line) {
  std::error_code failed;
  const std::uintmax_t size = fs::exists(path, failed) ? fs::file_size(path, failed) : 0;
  std::string text;
  if (endsWithinALine(path)) text += '\n';
  text.append(line) += '\n';
  errno = 0;
  File file = openForAppending(path);
  if (!file) return writeError(path, lastError());
  failed = writeOut(file.get(), allOf(text));
  file.reset();
  if (!failed) return std::nullopt;
  std::error_code ignored;
  fs::resize_file(path, size, ignored);
  return writeError(path, failed);
}

FileInPieces::FileInPieces(const fs::path& path, std::size_t limit)
    : name_(path.string()), file_(path, std::ios::binary), limit_(limit) {}

Result<FileInPieces, FileError> FileInPieces::open(const fs::path& path, std::size_t limit) {
  const auto failure = [&path](std::string expected, std::string found) {
    return FileError{path.string(), 0, std::move(expected), std::move(found)};
  };
  std::error_code why;
  const auto status = fs::status(path, why);
  if (!fs::exists(status)) return failure(say("core", "a file"), say("core", "none"));
  if (!fs::is_regular_file(status))
    return failure(say("core", "a file"), say("core", "something else of this name"));
  FileInPieces file(path, limit);
  if (!file.file_)
    return failure(say("core", "a file that can be read"),
                   say("core", "none that this user may open"));
  return file;
}

std::size_t FileInPieces::read(std::span<char> piece) {
  if (error_ || !file_) return 0;
  file_.read(piece.data(), static_cast<std::streamsize>(piece.size()));
  const auto count = static_cast<std::size_t>(file_.gcount());
  count_ += count;
  if (file_.bad()) {
    error_ =
        FileError{name_, 0, say("core", "a file that can be read"), say("core", "a read error")};
  } else if (count_ > limit_) {
    error_ = FileError{name_, 0, filled(say("core", "at most %1 bytes"), {std::to_string(limit_)}),
                       say("core", "more")};
  }
  return error_ ? 0 : count;
}

Result<std::string, FileError> readWholeFile(const fs::path& path, std::size_t limit) {
  auto file = FileInPieces::open(path, limit);
  if (!file) return file.error();
  // Memory follows what is there and not what might be.
  std::string content;
  std::error_code why;
  if (const auto size = fs::file_size(path, why); !why)
    content.reserve(static_cast<std::size_t>(std::min<std::uintmax_t>(size, limit)) + readPiece);
  for (;;) {
    const std::size_t before = content.size();
    content.resize(before + readPiece);
    const std::size_t count = file->read(std::span(content).subspan(before));
    content.resize(before + count);
    if (count == 0) break;
  }
  if (file->error()) return *file->error();
  return content;
}

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

std::string foundText(std::string_view found) {
  if (found.empty()) return say("core", "an empty line");
  std::string text = "\"";
  for (const char character : found.substr(0, longestQuote)) {
    const bool printable = character >= 0x20 && character < 0x7F;
    if (printable) {
      text += character;
    } else {
      text += "\\x" + hexByte(static_cast<std::uint8_t>(character));
    }
  }
  return text + (found.size() > longestQuote ? "...\"" : "\"");
}

}  // namespace touch
