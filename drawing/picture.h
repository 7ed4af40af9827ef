#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "drawing/surface.h"
#include "support/clock.h"

namespace touch {

/// A surface that remembers what was drawn on it since it was last cleared, so that it can be drawn
/// anew, whole or without a part. A mark goes straight to the shown surface: drawing costs the same
/// however much there is. Many marks are drawn anew in pieces, so that nobody waits for all of
/// them.
class Picture final : public Surface {
 public:
  /// Beyond this the oldest half is forgotten; what is shown stays.
  static constexpr std::size_t mostMarks = 1'000'000;

  /// What a mark is part of. All but the drawing are taken away again without the ink around them.
  enum class Layer : std::uint8_t { drawing, grid, toleranceLines, nextLine };

  /// So many take some hundredths of a second to draw anew.
  static constexpr std::size_t marksAtATime = 10'000;

  Picture(Surface& shown, Clock& clock)
      : shown_(shown), timer_(clock.makeTimer([this] { showOn(); })) {}

  void clear() override;
  void line(TwipsPoint from, TwipsPoint to, Colour colour, int width) override;
  void circle(TwipsPoint centre, float radius, Colour colour, int width) override;
  void point(TwipsPoint at, Colour colour, int width) override;

  /// The layer of the marks to come.
  void setLayer(Layer layer) { layer_ = layer; }
  /// Takes the layer's marks away and shows the rest anew. Nothing happens when there is none.
  void removeLayer(Layer layer);
  /// Takes them away for the next time that all is shown anew; false when there is none.
  bool forgetLayer(Layer layer);

  void drawOn(Surface& surface) const;

 private:
  enum class Shape : std::uint8_t { line, circle, point };
  struct Mark {
    TwipsPoint from;
    TwipsPoint to;  ///< of a circle: x is the radius
    Colour colour;
    std::int8_t width = 0;
    Shape shape{};
    Layer layer{};
  };

 public:
  using Marks = std::vector<Mark>;
  /// All that is remembered, for `show`.
  const Marks& marks() const { return marks_; }
  /// Shows what there was when these were taken.
  void show(Marks marks);
  /// Shows all marks on a surface that has lost them, in pieces. What is drawn meanwhile is seen at
  /// once.
  void showAnew();

 private:
  void add(Shape shape, TwipsPoint from, TwipsPoint to, Colour colour, int width);
  static void draw(const Mark& mark, Surface& surface);
  void showOn();

  Surface& shown_;
  std::unique_ptr<Timer> timer_;  ///< runs until all is shown
  std::size_t next_ = 0;          ///< the mark that is to be shown next
  Marks marks_;
  Layer layer_ = Layer::drawing;
};

}  // namespace touch
