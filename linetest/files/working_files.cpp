#include "linetest/files/working_files.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <utility>

#include "support/files/marked_folder.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/number_layout.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view nameStart = "tmp";
constexpr std::string_view extension = ".tmp";
constexpr const char* unfinishedName = "unfinished";
constexpr const char* damagedExtension = ".damaged";
constexpr int mostPrograms = 9;
// 3001 samples of two numbers take a tenth of it.
constexpr std::size_t longestWorkingFile = std::size_t{1} << 20U;

std::string nameOf(int number) {
  return std::string(nameStart) + threeDigits(number) + std::string(extension);
}

std::optional<int> numberOf(std::string_view name) {
  if (!name.starts_with(nameStart) || !name.ends_with(extension)) return std::nullopt;
  int number = 0;
  const char* begin = name.data() + nameStart.size();
  const char* end = name.data() + name.size() - extension.size();
  if (end < begin) return std::nullopt;
  const auto [stop, failed] = std::from_chars(begin, end, number);
  if (failed != std::errc() || number < 0 || name != nameOf(number)) return std::nullopt;
  return number;
}

/// "tmp007.tmp.new", "tmp007.tmp.new1": half of a write that a crash has cut off.
bool isCutOff(std::string_view name) {
  const auto at = name.rfind(unfinishedEnding);
  return at != name.npos && numberOf(name.substr(0, at)) &&
         name.find_first_not_of("0123456789", at + unfinishedEnding.size()) == name.npos;
}

std::vector<int> numbersIn(const OwnFolder& folder) {
  std::vector<int> numbers;
  for (const std::string& name : folder.names())
    if (const auto number = numberOf(name)) numbers.push_back(*number);
  std::ranges::sort(numbers);
  return numbers;
}

/// Beginning and ending, with a number between them where there is a file of that name already.
std::string freeName(const std::vector<std::string>& names, const std::string& beginning,
                     const std::string& ending = {}) {
  std::string free = beginning + ending;
  for (int next = 2; std::ranges::find(names, free) != names.end(); ++next) {
    free = beginning;
    free.append(std::to_string(next)).append(ending);
  }
  return free;
}

Status renameIn(const OwnFolder& folder, const std::string& from, const std::string& to) {
  Status renamed = folder.rename(from, to);
  if (renamed) return renamed;
  return tl::unexpected(FileError{(folder.path() / from).string(), 0,
                                  say("drawings", "a file that can be renamed"),
                                  renamed.error().found});
}

/// As many strokes from `at` on as a drawing may hold, so that it can be opened again.
Drawing oneDrawing(const LeftStrokes& left, std::size_t at, const DrawingLimits& limits) {
  Drawing drawing;
  std::size_t samples = 0;
  for (; at < left.strokes.size() && drawing.size() < limits.strokes; ++at) {
    const Stroke& stroke = left.strokes[at].stroke;
    samples += stroke.samples.size();
    if (samples > limits.samples && !drawing.empty()) break;
    drawing.push_back(stroke);
  }
  return drawing;
}

bool mayBeMade(const fs::path& folder) {
  std::error_code unknown;
  return !fs::exists(fs::symlink_status(folder, unknown)) &&
         !isFolderOfTheSystem(folder.parent_path()) &&
         (!fs::exists(folder.parent_path(), unknown) ||
          SystemFolder::mayMakeIn(folder.parent_path()));
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

Result<Stroke> parseWorkingText(std::string_view text, std::string name) {
  NumberReader reader(text, std::move(name));
  Stroke stroke;
  stroke.colour = reader.integer(0, 15, marked("numbers", "a palette index from 0 to 15"));
  stroke.width = reader.integer(1, 2, marked("numbers", "a draw width of 1 or 2"));
  while (!reader.atEnd()) {
    if (stroke.samples.size() == Stroke::mostSamples) {
      reader.refuse(say("drawings", "the end of the file after 3001 samples"),
                    say("drawings", "more"));
      break;
    }
    const float x = reader.number(marked("numbers", "the x of a sample"));
    const float y = reader.number(marked("numbers", "the y of a sample"));
    stroke.samples.push_back({x, y});
  }
  if (stroke.samples.empty()) reader.refuse(say("drawings", "the x of a sample"), "");
  if (reader.failed()) return tl::unexpected(reader.error());
  return stroke;
}

/// Where the files are, or will be.
struct WorkingFiles::Place {
  std::vector<fs::path> candidates;
  fs::path path;                       ///< one of them
  std::optional<MarkedFolder> folder;  ///< once it is had
};

WorkingFiles::WorkingFiles(const fs::path& workingFolder, const fs::path& fallBack)
    : place_(std::make_unique<Place>()) {
  auto& candidates = place_->candidates;
  candidates = {workingFolder / nameStart};
  for (int program = 1; !fallBack.empty() && program <= mostPrograms; ++program)
    candidates.push_back(fallBack / (std::string(nameStart) +
                                     (program == 1 ? std::string() : std::to_string(program))));
  for (const fs::path& candidate : candidates) {
    place_->path = candidate;
    if (auto folder = MarkedFolder::take(candidate)) place_->folder = std::move(*folder);
    if (place_->folder || mayBeMade(candidate)) return;
  }
  place_->path = candidates.front();
}

WorkingFiles::WorkingFiles(WorkingFiles&&) noexcept = default;
WorkingFiles& WorkingFiles::operator=(WorkingFiles&&) noexcept = default;
WorkingFiles::~WorkingFiles() = default;

const fs::path& WorkingFiles::folder() const {
  return place_->path;
}

const OwnFolder* WorkingFiles::files() const {
  return place_->folder ? &place_->folder->files() : nullptr;
}

Status WorkingFiles::prepare() const {
  Status prepared;
  for (const fs::path& candidate : place_->candidates) {
    if (place_->folder) return {};
    auto folder = MarkedFolder::make(candidate);
    if (!folder && prepared) prepared = tl::unexpected(folder.error());
    if (!folder) folder = MarkedFolder::take(candidate);
    // Strokes that another program has left since this one was started are for one that offers
    // them.
    if (!folder || !numbersIn(folder->files()).empty()) continue;
    place_->path = candidate;
    place_->folder = std::move(*folder);
  }
  return place_->folder ? Status() : prepared;
}

fs::path WorkingFiles::pathOf(int number) const {
  return folder() / nameOf(number);
}

Status WorkingFiles::write(int number, const Stroke& stroke) const {
  // First, so that there is no stroke that the next run would not offer.
  if (Status marked = markUnfinished(); !marked) return marked;
  return files()->write(nameOf(number), workingText(stroke));
}

Result<Stroke> WorkingFiles::read(int number) const {
  const std::string path = pathOf(number).string();
  if (files() == nullptr)
    return tl::unexpected(
        FileError{path, 0, say("drawings", "a recorded stroke"), say("drawings", "none")});
  const auto text = files()->read(nameOf(number), longestWorkingFile);
  if (!text) return tl::unexpected(text.error());
  return parseWorkingText(*text, path);
}

Result<std::vector<Stroke>> WorkingFiles::readAll(int count) const {
  std::vector<Stroke> strokes;
  for (int number = 0; number < count; ++number) {
    auto stroke = read(number);
    if (!stroke) return tl::unexpected(stroke.error());
    strokes.push_back(std::move(*stroke));
  }
  return strokes;
}

void WorkingFiles::remove(int number) const {
  if (files() != nullptr) files()->remove(nameOf(number));
}

bool WorkingFiles::isUnfinished() const {
  return files() != nullptr && files()->openFile(unfinishedName, OwnFolder::Opening::read);
}

Status WorkingFiles::markUnfinished() const {
  if (Status prepared = prepare(); !prepared) return prepared;
  const auto mark = files()->openFile(unfinishedName, OwnFolder::Opening::append);
  if (!mark) return tl::unexpected(mark.error());
  return {};
}

void WorkingFiles::finish() const {
  if (files() != nullptr) files()->remove(unfinishedName);
}

Status WorkingFiles::clear() const {
  if (files() == nullptr) return {};
  Status cleared;
  for (const std::string& name : files()->names()) {
    if (!numberOf(name) && !isCutOff(name)) continue;
    const Status removed = files()->remove(name);
    if (cleared) cleared = removed;
  }
  finish();
  return cleared;
}

LeftStrokes WorkingFiles::left() const {
  LeftStrokes left;
  if (files() == nullptr) return left;
  for (const int number : numbersIn(*files())) {
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

Status WorkingFiles::setDamagedAside(const LeftStrokes& left) const {
  if (files() == nullptr) return {};
  for (const int number : left.damagedNumbers) {
    const std::string damaged = nameOf(number);
    const std::string aside =
        damaged.substr(0, damaged.size() - extension.size()) + damagedExtension;
    Status renamed = renameIn(*files(), damaged, freeName(files()->names(), aside));
    if (!renamed) return renamed;
  }
  return {};
}

fs::path WorkingFiles::asidePath() const {
  const auto names = files() == nullptr ? std::vector<std::string>() : files()->names();
  return folder() / freeName(names, "left", ".fdw");
}

Status WorkingFiles::keepAside(const LeftStrokes& left, const DrawingLimits& limits) const {
  if (Status prepared = prepare(); !prepared) return prepared;
  std::vector<std::string> kept;
  for (std::size_t at = 0; at < left.strokes.size();) {
    const Drawing drawing = oneDrawing(left, at, limits);
    at += drawing.size();
    const std::string name = asidePath().filename().string();
    if (Status written = files()->write(name, drawingText(drawing)); !written) {
      // The strokes stay where they are, and would be kept twice.
      for (const std::string& half : kept)
        files()->remove(half);
      return written;
    }
    kept.push_back(name);
  }
  return clear();
}

Status WorkingFiles::makeRoom() const {
  const LeftStrokes found = left();
  if (Status aside = setDamagedAside(found); !aside) return aside;
  return found.strokes.empty() ? Status() : keepAside(found);
}

Status WorkingFiles::makeConsecutive(const LeftStrokes& left) const {
  int next = 0;
  for (const auto& [number, stroke] : left.strokes) {
    if (number != next) {
      Status renamed = renameIn(*files(), nameOf(number), nameOf(next));
      if (!renamed) return renamed;
    }
    ++next;
  }
  return {};
}

}  // namespace touch
