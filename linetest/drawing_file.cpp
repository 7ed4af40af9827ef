#include "linetest/drawing_file.h"

#include <algorithm>
#include <utility>

#include "core/language.h"
#include "core/whole_file.h"
#include "linetest/number_layout.h"

namespace touch {

namespace {

constexpr std::string_view labelStart = "Line #";
// Some thousand strokes of the greatest length.
constexpr std::size_t longestDrawing = std::size_t{256} << 20U;

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
  if (!isLabel(label)) reader.refuse(say("linetest", "\"Line #\" and a stroke's number"), label);
  Stroke stroke;
  stroke.colour = reader.integer(0, 15, marked("linetest", "a palette index from 0 to 15"));
  stroke.width = reader.integer(1, 2, marked("linetest", "a draw width of 1 or 2"));
  const int count = reader.integer(1, static_cast<int>(Stroke::mostSamples),
                                   marked("linetest", "a count of samples from 1 to 3001"));
  stroke.samples.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count && !reader.failed(); ++i) {
    const float x = reader.number(marked("linetest", "the x of a sample"));
    const float y = reader.number(marked("linetest", "the y of a sample"));
    stroke.samples.push_back({x, y});
  }
  return stroke;
}

}  // namespace

std::string drawingText(std::span<const Stroke> strokes) {
  std::string text;
  int number = 0;
  for (const Stroke& stroke : strokes)
    appendStroke(text, number++, stroke);
  return text;
}

Result<Drawing, FileError> parseDrawing(std::string_view text, std::string name) {
  NumberReader reader(text, std::move(name));
  Drawing drawing;
  while (!reader.atEnd())
    drawing.push_back(readStroke(reader));
  if (reader.failed()) return reader.error();
  return drawing;
}

struct DrawingReader::Source {
  Source(FileInPieces opened, const std::filesystem::path& path)
      : file(std::move(opened)),
        reader([this](std::span<char> piece) { return read(piece); }, path.string()) {
    std::error_code unknown;
    size = std::filesystem::file_size(path, unknown);
  }

  std::size_t read(std::span<char> piece) {
    const std::size_t count = file.read(piece);
    done += count;
    return count;
  }

  FileInPieces file;
  NumberReader reader;
  std::uintmax_t size = 0;
  std::uintmax_t done = 0;
};

DrawingReader::DrawingReader(std::unique_ptr<Source> source) : source_(std::move(source)) {}
DrawingReader::DrawingReader(DrawingReader&& other) noexcept = default;
DrawingReader::~DrawingReader() = default;

Result<DrawingReader, FileError> DrawingReader::open(const std::filesystem::path& path) {
  auto file = FileInPieces::open(path, longestDrawing);
  if (!file) return file.error();
  return DrawingReader(std::make_unique<Source>(std::move(*file), path));
}

Result<std::optional<Stroke>, FileError> DrawingReader::next() {
  NumberReader& reader = source_->reader;
  std::optional<Stroke> stroke;
  if (!reader.atEnd()) stroke = readStroke(reader);
  // The text is wrong, too, where the file could not be read on.
  if (source_->file.error()) return *source_->file.error();
  if (reader.failed()) return reader.error();
  return stroke;
}

int DrawingReader::percent() const {
  if (source_->size == 0) return 100;
  return static_cast<int>(std::min<std::uintmax_t>(source_->done * 100 / source_->size, 100));
}

Result<Drawing, FileError> readDrawing(const std::filesystem::path& path) {
  auto reader = DrawingReader::open(path);
  if (!reader) return reader.error();
  Drawing drawing;
  for (;;) {
    auto stroke = reader->next();
    if (!stroke) return stroke.error();
    if (!*stroke) return drawing;
    drawing.push_back(std::move(**stroke));
  }
}

std::optional<FileError> writeDrawing(const std::filesystem::path& path,
                                      std::span<const Stroke> strokes) {
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
