#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "linetest/linearity/linearity.h"

namespace touch {

/// One of the eighteen lines of the linearity tester.
struct TestLine {
  static constexpr int perOrientation = 9;
  Orientation orientation = Orientation::vertical;
  int number = 1;  ///< 1 to 9, from the left or from the top
  friend bool operator==(const TestLine&, const TestLine&) = default;
};

/// The guides lie at equal distances, the outer ones a thirty-second of the screen from its edge.
GuidedLine guideOf(const TestLine& line, TwipsSize screen);
std::string labelOf(const TestLine& line);
/// The line of that label; nothing for other texts.
std::optional<TestLine> testLineOf(std::string_view label);

/// Whether a stroke measures its line. The bad ones are to be drawn again.
enum class StrokeVerdict : std::uint8_t {
  usable,
  tooFewSamples,  ///< it was hardly more than a touch
  outsideLimit,   ///< it strayed so far that it belongs to another line
  tooManyPoints,  ///< more than 3001 samples
};

/// The message that tells the user of a bad stroke (22 or 24); nothing for the others.
std::optional<std::size_t> messageOf(StrokeVerdict verdict);

/// The procedure: the vertical lines 1 to 9, then the horizontal ones, each drawn, looked at, and
/// accepted or repeated. A line may be drawn in several strokes, because a dead strip lifts the
/// pen.
class LinearityProcedure {
 public:
  static constexpr std::size_t lines = std::size_t{2} * TestLine::perOrientation;
  /// Message 23 is its title.
  static constexpr std::size_t titleMessage = 23;

  explicit LinearityProcedure(const MeasuredPanel& panel) : panel_(panel) {}

  const MeasuredPanel& panel() const { return panel_; }
  /// The line to draw; nothing when all are accepted.
  std::optional<TestLine> current() const;

  bool penIsDown() const { return penIsDown_; }
  void penDown(TwipsPoint at);
  void penMove(TwipsPoint at);
  /// What to think of the line as drawn so far. A bad one is forgotten at once.
  StrokeVerdict penUp();

  /// The drawn line, measured, for the user to look at; nothing while none is drawn.
  std::optional<LineResult> drawn() const;
  /// Keeps the drawn line and goes on to the next that has no result. Does nothing while none is
  /// drawn.
  void accept();
  /// Forgets the drawn line.
  void repeat();
  /// "Next": keeps the drawn line, or passes over the current one while none is drawn. Does nothing
  /// while the pen is down, since the stroke under way belongs to its line; nor does "Back".
  void next();
  /// "Back": forgets the drawn line and makes the one before it the current one, if there is one.
  void back();
  /// Makes `line` the current one, to draw it again. Its result stays until another is accepted.
  void goTo(const TestLine& line);

  const std::optional<LineResult>& result(const TestLine& line) const;
  /// Takes over a result that was read from its file.
  void restore(const TestLine& line, LineResult result);
  /// Those accepted so far, vertical lines first.
  std::vector<LineResult> results() const;

 private:
  StrokeVerdict verdict() const;

  MeasuredPanel panel_;
  std::array<std::optional<LineResult>, lines> results_;
  std::size_t current_ = 0;
  std::vector<TwipsPoint> samples_;
  bool penIsDown_ = false;
  bool tooMany_ = false;
};

}  // namespace touch
