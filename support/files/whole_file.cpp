#include "support/files/whole_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <system_error>
#include <utility>

#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestQuote = 24;
constexpr int mostLeftovers = 100;
constexpr std::size_t readPiece = std::size_t{64} << 10U;

tl::unexpected<FileError> writeError(const fs::path& path, const std::error_code& why) {
  return tl::unexpected(
      FileError{path.string(), 0, say("files", "a place that can be written"), why.message()});
}

std::error_code lastError() {
  return {errno, std::generic_category()};
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

Result<std::string> contentOf(FileInPieces& file) {
  // Memory follows what is there and not what might be.
  std::string content;
  content.reserve(file.size() + readPiece);
  for (;;) {
    const std::size_t before = content.size();
    content.resize(before + readPiece);
    const std::size_t count = file.read(std::span(content).subspan(before));
    content.resize(before + count);
    if (count == 0) break;
  }
  if (file.error()) return tl::unexpected(*file.error());
  return content;
}

FileError moreThan(std::size_t limit, std::string name) {
  return {std::move(name), 0, filled(say("files", "at most %1 bytes"), {std::to_string(limit)}),
          say("files", "more")};
}

}  // namespace

std::error_code writeOut(std::FILE* file, std::string_view content) {
  errno = 0;
  const bool written = std::fwrite(content.data(), 1, content.size(), file) == content.size();
  if (!written || std::fflush(file) != 0 || !reachDisk(file)) return lastError();
  return {};
}

Status writeWholeFile(const fs::path& path, std::string_view content) {
  return writeWholeFile(path, allOf(content));
}

Status writeWholeFile(const fs::path& path, const NextPiece& next) {
  auto file = UnfinishedFile::begin(path);
  if (!file) return tl::unexpected(file.error());
  for (std::string piece; next(piece);)
    if (auto written = file->add(piece); !written) return written;
  return file->finish();
}

UnfinishedFile::UnfinishedFile(fs::path path, fs::path target, fs::path beside, File file)
    : path_(std::move(path)),
      target_(std::move(target)),
      beside_(std::move(beside)),
      file_(std::move(file)) {}

UnfinishedFile::UnfinishedFile(UnfinishedFile&& other) noexcept
    : path_(std::move(other.path_)),
      target_(std::move(other.target_)),
      beside_(std::exchange(other.beside_, {})),
      file_(std::move(other.file_)) {}

UnfinishedFile::~UnfinishedFile() {
  // Nothing is left to remove of one that has its name or was moved from.
  if (beside_.empty()) return;
  file_.reset();
  std::error_code ignored;
  fs::remove(beside_, ignored);
}

Result<UnfinishedFile> UnfinishedFile::begin(const fs::path& path) {
  std::error_code failed;
  // The file behind a link is replaced, not the link.
  fs::path target = fs::is_symlink(path, failed) ? fs::canonical(path, failed) : path;
  if (target.empty()) return writeError(path, failed);
  const auto there = fs::status(target, failed);
  if (fs::is_directory(there)) {
    return writeError(path, std::make_error_code(std::errc::is_a_directory));
  }
  if (fs::exists(there) && !fs::is_regular_file(there)) {
    return tl::unexpected(
        FileError{path.string(), 0, say("files", "a file"),
                  say("files", "a device or a pipe, which is not to be replaced")});
  }
  auto [file, beside] = newFileBeside(target);
  if (!file) return writeError(path, lastError());

  // Who may not read the old file may not read the new one either, not even while it is written.
  if (fs::is_regular_file(there)) setMode(file.get(), there.permissions());
  return UnfinishedFile(path, std::move(target), std::move(beside), std::move(file));
}

Status UnfinishedFile::add(std::string_view piece) {
  errno = 0;
  if (std::fwrite(piece.data(), 1, piece.size(), file_.get()) == piece.size()) return {};
  return writeError(path_, lastError());
}

Status UnfinishedFile::finish() {
  errno = 0;
  std::error_code failed;
  if (std::fflush(file_.get()) != 0 || !reachDisk(file_.get())) failed = lastError();
  if (!failed) failed = renameOpen(file_, beside_, target_);
  if (failed) return writeError(path_, failed);
  beside_.clear();
  return {};
}

Result<FileInPieces> FileInPieces::open(const fs::path& path, std::size_t limit) {
  const auto failure = [&path](std::string expected, std::string found) {
    return tl::unexpected(FileError{path.string(), 0, std::move(expected), std::move(found)});
  };
  std::error_code why;
  const auto status = fs::status(path, why);
  if (!fs::exists(status)) return failure(say("files", "a file"), say("files", "none"));
  File file = fs::is_regular_file(status) ? openForReading(path) : nullptr;
  // Another may have taken its place meanwhile.
  if (!fs::is_regular_file(status) || (file && !isRegular(file.get())))
    return failure(say("files", "a file"), say("files", "something else of this name"));
  if (!file)
    return failure(say("files", "a file that can be read"),
                   say("files", "none that this user may open"));
  return of(std::move(file), path.string(), limit);
}

Result<FileInPieces> FileInPieces::of(File file, std::string name, std::size_t limit) {
  if (sizeOf(file.get()) > limit) return tl::unexpected(moreThan(limit, std::move(name)));
  return FileInPieces(std::move(file), std::move(name), limit);
}

std::size_t FileInPieces::read(std::span<char> piece) {
  if (error_) return 0;
  // One byte more tells that there is more; no others of it are read.
  const std::size_t wanted = std::min(piece.size(), limit_ - count_ + 1);
  const std::size_t count = std::fread(piece.data(), 1, wanted, file_.get());
  count_ += count;
  if (std::ferror(file_.get()) != 0) {
    error_ =
        FileError{name_, 0, say("files", "a file that can be read"), say("files", "a read error")};
  } else if (count_ > limit_) {
    error_ = moreThan(limit_, name_);
  }
  return error_ ? 0 : count;
}

Result<std::string> readWholeFile(const fs::path& path, std::size_t limit) {
  auto file = FileInPieces::open(path, limit);
  if (!file) return tl::unexpected(file.error());
  return contentOf(*file);
}

Result<std::string> readWholeFile(File file, std::string name, std::size_t limit) {
  auto pieces = FileInPieces::of(std::move(file), std::move(name), limit);
  if (!pieces) return tl::unexpected(pieces.error());
  return contentOf(*pieces);
}

std::string freeName(std::span<const std::string> names, std::string_view stem,
                     std::string_view ending) {
  std::string name = std::string(stem).append(ending);
  for (int number = 2; std::find(names.begin(), names.end(), name) != names.end(); ++number)
    name = std::string(stem).append("-").append(std::to_string(number)).append(ending);
  return name;
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
  if (found.empty()) return say("files", "an empty line");
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
