#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "drawing/surface.h"
#include "measure/figures/line.h"
#include "measure/measurement.h"

namespace touch::measure {

/// What to think of a line after a stroke of it.
enum class StrokeVerdict : std::uint8_t {
  usable,
  tooFewSamples,  ///< it was hardly more than a touch
  farOff,         ///< it strayed so far that somebody must say who did that
  tooManyPoints,  ///< more than 3001 samples
};

/// The message that tells the user of such a stroke (22 or 24); nothing for the others.
std::optional<std::size_t> messageOf(StrokeVerdict verdict);

/// A sample of a pen, in twips of the screen.
struct PenSample {
  TwipsPoint at;
  Seconds time{};
};

/// The upright and the level lines that a measurement wants, one after the other, each drawn,
/// looked at, and kept or repeated. A line may be drawn in several strokes, because a dead strip
/// lifts the pen. Strokes that are drawn again stay in the measurement as the hand's.
class LineProcedure {
 public:
  /// Message 23 is its title.
  static constexpr std::size_t titleMessage = 23;

  /// `measurement` outlives it.
  LineProcedure(Measurement& measurement, TwipsSize screen);

  /// Where samples come from from now on; pointer events with their times unless said otherwise.
  void use(const std::optional<Source>& reports);

  TwipsSize screen() const { return screen_; }
  const std::vector<const Guide*>& guides() const { return guides_; }
  /// The line to draw; null when all are kept.
  const Guide* current() const { return current_ < guides_.size() ? guides_[current_] : nullptr; }

  bool penIsDown() const { return penIsDown_; }
  void penDown(const PenSample& sample);
  void penMove(const PenSample& sample);
  /// Too few samples and too many are forgotten at once.
  StrokeVerdict penUp();
  /// Who did what is drawn: strokes of the hand are kept apart, and the line is to be drawn again.
  void blame(Blame who);
  /// A drawn stroke went far off, and nobody has said yet who did that.
  bool wantsBlame() const;

  /// The samples of the drawn line; none while none is drawn.
  std::vector<TwipsPoint> drawn() const;
  /// Its figures.
  LineFigures drawnFigures() const;
  /// The samples of a line that is kept.
  std::vector<TwipsPoint> kept(const Guide& guide) const;
  LineFigures keptFigures(const Guide& guide) const;
  /// How many of the lines are.
  std::size_t countKept() const;

  /// "Next": keeps the drawn line and goes on to the next that is open, or passes over the current
  /// one while none is drawn. Does nothing while the pen is down, since the stroke under way
  /// belongs to its line, or a stroke waits for its blame.
  void next();
  /// "Back": gives up the drawn line and makes the one before it the current one.
  void back();
  /// "Repeat": the drawn line is to be drawn again.
  void repeat();
  /// Makes `guide` the current one, to draw it again. It stays kept until another takes its place.
  void goTo(const Guide& guide);
  /// Takes over samples that were kept earlier.
  void restore(const Guide& guide, const std::vector<TwipsPoint>& samples, const std::string& from);

 private:
  std::vector<TwipsPoint> samplesOf(const std::vector<Trace>& traces, const Guide& guide) const;
  std::size_t countDrawn() const;
  void giveUp();
  void keep();

  Measurement& measurement_;
  TwipsSize screen_;
  Source source_;
  std::vector<const Guide*> guides_;
  std::size_t current_ = 0;
  std::vector<Trace> drawn_;
  bool penIsDown_ = false;
  bool tooMany_ = false;
};

}  // namespace touch::measure
