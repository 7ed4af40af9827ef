#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace touch {

/// Lengths on the full-screen windows are in twips: 15 twips are a logical pixel. X grows to the
/// right, Y downwards.
inline constexpr float twipsPerPixel = 15;

struct TwipsPoint {
  float x = 0;
  float y = 0;
  friend bool operator==(const TwipsPoint&, const TwipsPoint&) = default;
};

struct TwipsSize {
  float width = 0;
  float height = 0;
  friend bool operator==(const TwipsSize&, const TwipsSize&) = default;
};

struct TwipsRect {
  TwipsPoint corner;  ///< the upper left one
  TwipsSize size;
};

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Colour&, const Colour&) = default;
};

/// The standard palette of 16 colours, by index.
inline constexpr std::array<Colour, 16> palette = {{
    {0, 0, 0},
    {0, 0, 128},
    {0, 128, 0},
    {0, 128, 128},
    {128, 0, 0},
    {128, 0, 128},
    {128, 128, 0},
    {192, 192, 192},
    {128, 128, 128},
    {0, 0, 255},
    {0, 255, 0},
    {0, 255, 255},
    {255, 0, 0},
    {255, 0, 255},
    {255, 255, 0},
    {255, 255, 255},
}};
inline constexpr Colour lightGrey = palette[7];
inline constexpr Colour yellow = palette[14];
inline constexpr Colour white = palette[15];

/// What the full-screen windows are drawn with. Widths are in pixels.
class Surface {
 public:
  Surface() = default;
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;
  virtual ~Surface() = default;

  virtual void clear() = 0;
  virtual void line(TwipsPoint from, TwipsPoint to, Colour colour, int width) = 0;
  virtual void circle(TwipsPoint centre, float radius, Colour colour, int width) = 0;
  /// A dot of `width` pixels across.
  virtual void point(TwipsPoint at, Colour colour, int width) { line(at, at, colour, width); }
};

/// Where a text stands as seen from the place that it is given.
enum class TextAnchor : std::uint8_t { start, middle, end };

/// A surface for charts, on a screen or on paper.
class ChartSurface : public Surface {
 public:
  /// `at` is on the text's base line; `height` is the size of the letters in twips.
  virtual void text(TwipsPoint at, std::string_view text, Colour colour, float height,
                    TextAnchor anchor) = 0;
  /// A filled rectangle from its upper left corner on.
  virtual void area(TwipsPoint corner, TwipsSize size, Colour colour) = 0;
};

}  // namespace touch
