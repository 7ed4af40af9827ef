#include "linetest/files/drawing_file.h"

#include <algorithm>
#include <utility>

#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/number_layout.h"

namespace touch {

namespace {

constexpr std::string_view labelStart = "Line #";
// More than the most that a drawing may hold takes in the longest numbers.
constexpr std::size_t longestDrawing = std::size_t{192} << 20U;

bool isLabel(std::string_view text) {
  if (!text.starts_with(labelStart)) return false;
  text.remove_prefix(labelStart.size());
  return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

void appendStroke(std::string& text, int number, const Stroke& stroke) {
  text.append(labelStart).append(threeDigits(number)).append(recordEnd);
  for (const int value : {stroke.colour, stroke.width, static_cast<int>(stroke.samples.size())}) {
    appendNumber(text, value);
    text += recordEnd;
  }
  for (const TwipsPoint sample : stroke.samples) {
    appendZones(text, {sample.x, sample.y});
    text += recordEnd;
  }
}

Stroke readStroke(NumberReader& reader) {
  const std::string_view label = reader.label();
  if (!isLabel(label)) reader.refuse(say("drawings", "\"Line #\" and a stroke's number"), label);
  Stroke stroke;
  stroke.colour = reader.integer(0, 15, marked("numbers", "a palette index from 0 to 15"));
  stroke.width = reader.integer(1, 2, marked("numbers", "a draw width of 1 or 2"));
  const int count = reader.integer(1, static_cast<int>(Stroke::mostSamples),
                                   marked("numbers", "a count of samples from 1 to 3001"));
  stroke.samples.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count && !reader.failed(); ++i) {
    const float x = reader.number(marked("numbers", "the x of a sample"));
    const float y = reader.number(marked("numbers", "the y of a sample"));
    stroke.samples.push_back({x, y});
  }
  return stroke;
}

/// Refuses a drawing that holds more than it may.
Status checkExtent(const std::string& name, const DrawingLimits& holds,
                   const DrawingLimits& limits) {
  std::string expected;
  if (holds.strokes > limits.strokes) {
    expected = filled(say("drawings", "at most %1 strokes in a drawing"),
                      {std::to_string(limits.strokes)});
  } else if (holds.samples > limits.samples) {
    expected = filled(say("drawings", "at most %1 samples in a drawing"),
                      {std::to_string(limits.samples)});
  } else {
    return {};
  }
  return tl::unexpected(FileError{name, 0, std::move(expected), say("drawings", "more")});
}

}  // namespace

struct DrawingReader::Source {
  Source(std::string_view text, std::string name, const DrawingLimits& most)
      : fileName(std::move(name)), reader(text, fileName), limits(most) {}
  Source(FileInPieces opened, const std::filesystem::path& path)
      : fileName(path.string()),
        file(std::move(opened)),
        reader([this](std::span<char> piece) { return read(piece); }, fileName) {
    std::error_code unknown;
    size = std::filesystem::file_size(path, unknown);
  }

  std::size_t read(std::span<char> piece) {
    const std::size_t count = file->read(piece);
    done += count;
    return count;
  }

  std::string fileName;
  std::optional<FileInPieces> file;
  NumberReader reader;
  DrawingLimits limits;
  DrawingLimits taken{0, 0};
  std::uintmax_t size = 0;
  std::uintmax_t done = 0;
};

std::string drawingText(std::span<const Stroke> strokes) {
  std::string text;
  int number = 0;
  for (const Stroke& stroke : strokes)
    appendStroke(text, number++, stroke);
  return text;
}

DrawingReader::DrawingReader(std::unique_ptr<Source> source) : source_(std::move(source)) {}
DrawingReader::DrawingReader(DrawingReader&& other) noexcept = default;
DrawingReader::~DrawingReader() = default;

Result<DrawingReader> DrawingReader::open(const std::filesystem::path& path) {
  auto file = FileInPieces::open(path, longestDrawing);
  if (!file) return tl::unexpected(file.error());
  return DrawingReader(std::make_unique<Source>(std::move(*file), path));
}

DrawingReader DrawingReader::of(std::string_view text, std::string name,
                                const DrawingLimits& limits) {
  return DrawingReader(std::make_unique<Source>(text, std::move(name), limits));
}

Result<std::optional<Stroke>> DrawingReader::next() {
  auto& [name, file, reader, limits, taken, size, done] = *source_;
  std::optional<Stroke> stroke;
  if (!reader.atEnd()) stroke = readStroke(reader);
  // The text is wrong, too, where the file could not be read on.
  if (file && file->error()) return tl::unexpected(*file->error());
  if (reader.failed()) return tl::unexpected(reader.error());
  if (!stroke) return stroke;
  ++taken.strokes;
  taken.samples += stroke->samples.size();
  if (const Status fits = checkExtent(name, taken, limits); !fits)
    return tl::unexpected(fits.error());
  return stroke;
}

int DrawingReader::percent() const {
  if (source_->size == 0) return 100;
  return static_cast<int>(std::min<std::uintmax_t>(source_->done * 100 / source_->size, 100));
}

Result<Drawing> DrawingReader::readAll() {
  Drawing drawing;
  for (;;) {
    auto stroke = next();
    if (!stroke) return tl::unexpected(stroke.error());
    if (!*stroke) return drawing;
    drawing.push_back(std::move(**stroke));
  }
}

Result<Drawing> parseDrawing(std::string_view text, std::string name, const DrawingLimits& limits) {
  return DrawingReader::of(text, std::move(name), limits).readAll();
}

Result<Drawing> readDrawing(const std::filesystem::path& path) {
  auto reader = DrawingReader::open(path);
  if (!reader) return tl::unexpected(reader.error());
  return reader->readAll();
}

Status writeDrawing(const std::filesystem::path& path, std::span<const Stroke> strokes,
                    const DrawingLimits& limits) {
  DrawingLimits holds{strokes.size(), 0};
  for (const Stroke& stroke : strokes)
    holds.samples += stroke.samples.size();
  // Nothing is written that could not be read again.
  if (Status fits = checkExtent(path.string(), holds, limits); !fits) return fits;
  return writeWholeFile(path, [strokes, number = 0](std::string& piece) mutable {
    if (static_cast<std::size_t>(number) == strokes.size()) return false;
    piece.clear();
    appendStroke(piece, number, strokes[static_cast<std::size_t>(number)]);
    ++number;
    return true;
  });
}

std::filesystem::path withDrawingExtension(const std::filesystem::path& name) {
  constexpr std::string_view upper = ".FDW";
  constexpr std::string_view lower = ".fdw";
  const auto& text = name.native();
  bool ends = text.size() >= upper.size();
  for (std::size_t i = 0; ends && i < upper.size(); ++i) {
    const auto character = text[text.size() - upper.size() + i];
    ends = character == upper[i] || character == lower[i];
  }
  auto extended = name;
  if (!ends) extended += lower;
  return extended;
}

}  // namespace touch
