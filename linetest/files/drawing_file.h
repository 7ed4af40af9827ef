#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/stroke.h"
#include "support/result.h"

namespace touch {

// Drawing files, ".fdw": the strokes one after the other, without a header or an end mark. Numbers
// are laid out as number_layout.h says. Each stroke has the records
//
//   Line #000            the stroke's number, at least three digits
//   palette index        0 to 15
//   width                1 or 2
//   n                    count of samples, 1 to 3001
//   x y                  n times: twips, in two print zones

using Drawing = std::vector<Stroke>;

/// What a drawing may hold: hours of drawing without a rest, and little enough to be read at once.
/// More is neither read nor written.
struct DrawingLimits {
  std::size_t strokes = 50'000;
  std::size_t samples = 4'000'000;
};

std::string drawingText(std::span<const Stroke> strokes);

/// `name` is what an error calls the file.
Result<Drawing> parseDrawing(std::string_view text, std::string name,
                             const DrawingLimits& limits = {});

Result<Drawing> readDrawing(const std::filesystem::path& path);

/// A drawing file that is read stroke by stroke, for one that takes its time.
class DrawingReader {
 public:
  static Result<DrawingReader> open(const std::filesystem::path& path);
  /// A text; `name` is what an error calls it.
  static DrawingReader of(std::string_view text, std::string name,
                          const DrawingLimits& limits = {});
  DrawingReader(DrawingReader&& other) noexcept;
  ~DrawingReader();

  /// The next stroke; nothing at the end.
  Result<std::optional<Stroke>> next();
  /// All strokes that follow.
  Result<Drawing> readAll();
  /// How much of the file has been read, 0 to 100.
  int percent() const;

 private:
  struct Source;
  explicit DrawingReader(std::unique_ptr<Source> source);

  std::unique_ptr<Source> source_;
};

/// Whole or not at all: after an error an old file of that name is as it was.
[[nodiscard]] Status writeDrawing(const std::filesystem::path& path,
                                  std::span<const Stroke> strokes,
                                  const DrawingLimits& limits = {});

/// `name` with ".fdw" behind it unless it ends so, in any case.
std::filesystem::path withDrawingExtension(const std::filesystem::path& name);

}  // namespace touch
