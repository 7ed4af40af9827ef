#include "linetest/working_files.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string>
#include <utility>

#include "core/language.h"
#include "core/whole_file.h"
#include "linetest/drawing_file.h"
#include "linetest/number_layout.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view nameStart = "tmp";
constexpr std::string_view extension = ".tmp";
constexpr const char* holdName = "in-use.lock";
constexpr const char* unfinishedName = "unfinished";
constexpr const char* damagedExtension = ".damaged";
constexpr int mostPrograms = 9;
// 3001 samples of two numbers take a tenth of it.
constexpr std::size_t longestWorkingFile = std::size_t{1} << 20U;

bool canBeWritten(const fs::path& folder) {
  std::error_code failed;
  fs::create_directories(folder, failed);
  const fs::path probe = folder / "probe.tmp";
  // A full disk makes files, and puts nothing into them.
  File file = openForAppending(probe);
  const bool written = file && std::fputs("\r\n", file.get()) >= 0 && std::fflush(file.get()) == 0;
  file.reset();
  fs::remove(probe, failed);
  return written;
}

/// "tmp007.tmp.new", "probe.tmp.new1": half of a write that a crash has cut off; see whole_file.h.
bool isCutOff(const fs::path& file) {
  const std::string name = file.filename().string();
  const std::string ending = std::string(extension) + std::string(unfinishedEnding);
  const auto at = name.rfind(ending);
  return at != name.npos && name.find_first_not_of("0123456789", at + ending.size()) == name.npos;
}

std::string nameOf(int number) {
  return std::string(nameStart) + threeDigits(number) + std::string(extension);
}

std::optional<int> numberOf(const fs::path& file) {
  const std::string name = file.filename().string();
  if (!name.starts_with(nameStart) || !name.ends_with(extension)) return std::nullopt;
  int number = 0;
  const char* begin = name.data() + nameStart.size();
  const char* end = name.data() + name.size() - extension.size();
  if (end < begin) return std::nullopt;
  const auto [stop, failed] = std::from_chars(begin, end, number);
  if (failed != std::errc() || number < 0 || name != nameOf(number)) return std::nullopt;
  return number;
}

bool isWorkingFile(const fs::path& file) {
  return file.extension() == extension;
}

std::vector<fs::path> filesIn(const fs::path& folder, bool (*wanted)(const fs::path&)) {
  std::vector<fs::path> files;
  std::error_code failed;
  for (fs::directory_iterator at(folder, failed), end; !failed && at != end; at.increment(failed))
    if (wanted(at->path())) files.push_back(at->path());
  return files;
}

/// Beginning and ending, with a number between them where there is a file of that name already.
fs::path freePath(const fs::path& beginning, std::string_view ending = {}) {
  fs::path free = beginning;
  free += ending;
  std::error_code unknown;
  for (int next = 2; fs::exists(fs::symlink_status(free, unknown)); ++next) {
    free = beginning;
    free += std::to_string(next) + std::string(ending);
  }
  return free;
}

std::optional<FileError> renameFile(const fs::path& from, const fs::path& to) {
  std::error_code failed;
  fs::rename(from, to, failed);
  if (!failed) return std::nullopt;
  return FileError{from.string(), 0, say("linetest", "a file that can be renamed"),
                   failed.message()};
}

}  // namespace

std::string workingText(const Stroke& stroke) {
  std::string text;
  for (const int value : {stroke.colour, stroke.width}) {
    appendNumber(text, value);
    text += recordEnd;
  }
  for (const TwipsPoint sample : stroke.samples) {
    appendNumber(text, sample.x);
    text += '\t';
    appendNumber(text, sample.y);
    text += recordEnd;
  }
  return text;
}

Result<Stroke, FileError> parseWorkingText(std::string_view text, std::string name) {
  NumberReader reader(text, std::move(name));
  Stroke stroke;
  stroke.colour = reader.integer(0, 15, marked("linetest", "a palette index from 0 to 15"));
  stroke.width = reader.integer(1, 2, marked("linetest", "a draw width of 1 or 2"));
  while (!reader.atEnd()) {
    if (stroke.samples.size() == Stroke::mostSamples) {
      reader.refuse(say("linetest", "the end of the file after 3001 samples"),
                    say("linetest", "more"));
      break;
    }
    const float x = reader.number(marked("linetest", "the x of a sample"));
    const float y = reader.number(marked("linetest", "the y of a sample"));
    stroke.samples.push_back({x, y});
  }
  if (stroke.samples.empty()) reader.refuse(say("linetest", "the x of a sample"), "");
  if (reader.failed()) return reader.error();
  return stroke;
}

WorkingFiles::WorkingFiles(const fs::path& workingFolder, const fs::path& fallBack)
    : folder_(workingFolder / "tmp") {
  const auto take = [this](fs::path folder) {
    if (canBeWritten(folder)) held_ = holdFile(folder / holdName);
    if (held_) folder_ = std::move(folder);
    return static_cast<bool>(held_);
  };
  bool taken = take(folder_) || take(fallBack / "tmp");
  for (int program = 2; !taken && program <= mostPrograms; ++program)
    taken = take(fallBack / ("tmp" + std::to_string(program)));
  if (!taken) return;
  std::error_code ignored;
  for (const fs::path& file : filesIn(folder_, isCutOff))
    fs::remove(file, ignored);
}

fs::path WorkingFiles::pathOf(int number) const {
  return folder_ / nameOf(number);
}

std::optional<FileError> WorkingFiles::write(int number, const Stroke& stroke) const {
  // First, so that there is no stroke that the next run would not offer.
  const fs::path mark = folder_ / unfinishedName;
  errno = 0;
  if (!createFile(mark) && errno != EEXIST)
    return FileError{mark.string(), 0, say("linetest", "a place that can be written"),
                     std::generic_category().message(errno)};
  return writeWholeFile(pathOf(number), workingText(stroke));
}

Result<Stroke, FileError> WorkingFiles::read(int number) const {
  const fs::path path = pathOf(number);
  const auto text = readWholeFile(path, longestWorkingFile);
  if (!text) return text.error();
  return parseWorkingText(*text, path.string());
}

Result<std::vector<Stroke>, FileError> WorkingFiles::readAll(int count) const {
  std::vector<Stroke> strokes;
  for (int number = 0; number < count; ++number) {
    auto stroke = read(number);
    if (!stroke) return stroke.error();
    strokes.push_back(std::move(*stroke));
  }
  return strokes;
}

void WorkingFiles::remove(int number) const {
  std::error_code ignored;
  fs::remove(pathOf(number), ignored);
}

bool WorkingFiles::isUnfinished() const {
  std::error_code unknown;
  return fs::exists(folder_ / unfinishedName, unknown);
}

void WorkingFiles::finish() const {
  std::error_code ignored;
  fs::remove(folder_ / unfinishedName, ignored);
}

std::optional<FileError> WorkingFiles::clear() const {
  for (const fs::path& file : filesIn(folder_, isWorkingFile)) {
    std::error_code failed;
    fs::remove(file, failed);
    if (failed)
      return FileError{file.string(), 0, say("linetest", "a file that can be deleted"),
                       failed.message()};
  }
  finish();
  return std::nullopt;
}

LeftStrokes WorkingFiles::left() const {
  std::vector<int> numbers;
  for (const fs::path& file : filesIn(folder_, isWorkingFile)) {
    const auto number = numberOf(file);
    if (number) numbers.push_back(*number);
  }
  std::sort(numbers.begin(), numbers.end());
  LeftStrokes left;
  for (const int number : numbers) {
    auto stroke = read(number);
    if (stroke) {
      left.strokes.push_back({number, std::move(*stroke)});
    } else {
      left.damaged.push_back(stroke.error());
      left.damagedNumbers.push_back(number);
    }
  }
  return left;
}

std::optional<FileError> WorkingFiles::setDamagedAside(const LeftStrokes& left) const {
  for (const int number : left.damagedNumbers) {
    const fs::path damaged = pathOf(number);
    if (auto error =
            renameFile(damaged, freePath(fs::path(damaged).replace_extension(damagedExtension))))
      return error;
  }
  return std::nullopt;
}

fs::path WorkingFiles::asidePath() const {
  return freePath(folder_ / "left", ".fdw");
}

std::optional<FileError> WorkingFiles::keepAside(const LeftStrokes& left) const {
  Drawing drawing;
  for (const auto& [number, stroke] : left.strokes)
    drawing.push_back(stroke);
  if (auto error = writeDrawing(asidePath(), drawing)) return error;
  return clear();
}

std::optional<FileError> WorkingFiles::makeConsecutive(const LeftStrokes& left) const {
  int next = 0;
  for (const auto& [number, stroke] : left.strokes) {
    if (number != next) {
      if (auto error = renameFile(pathOf(number), pathOf(next))) return error;
    }
    ++next;
  }
  return std::nullopt;
}

}  // namespace touch
