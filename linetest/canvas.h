#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/clock.h"
#include "core/messages.h"
#include "core/prompt.h"
#include "core/surface.h"
#include "linetest/canvas_tables.h"
#include "linetest/drawing_switches.h"
#include "linetest/line_analysis.h"
#include "linetest/pen.h"
#include "linetest/picture.h"
#include "linetest/results_table.h"
#include "linetest/stroke.h"
#include "linetest/working_files.h"

namespace touch {

/// What lies over the drawing area and comes and goes.
enum class CanvasPanel : std::uint8_t { help, menu, banner, resultsList, resultsTable };
inline constexpr std::size_t canvasPanels = 5;

/// The window around the canvas.
class CanvasView {
 public:
  CanvasView() = default;
  CanvasView(const CanvasView&) = delete;
  CanvasView& operator=(const CanvasView&) = delete;
  virtual ~CanvasView() = default;

  /// The drawing area. Its background is black.
  virtual Surface& surface() = 0;

  virtual TwipsSize sizeOf(CanvasPanel panel) const = 0;
  virtual void place(CanvasPanel panel, TwipsPoint corner) = 0;
  virtual void show(CanvasPanel panel, bool shown) = 0;
  virtual void setHelp(std::span<const std::string> lines) = 0;
  virtual void setResultsList(std::span<const std::string> lines) = 0;
  virtual void setResultsTable(const ResultsSheet& sheet) = 0;
  /// The percent that the label beside the tolerance bar shows.
  virtual void setTolerance(float percent) = 0;

  /// File dialogs that start in `folder`; empty when the user cancelled.
  virtual std::filesystem::path askSaveName(const std::filesystem::path& folder,
                                            std::string_view filter) = 0;
  virtual std::filesystem::path askOpenName(const std::filesystem::path& folder,
                                            std::string_view filter) = 0;
  /// The main window is back, this one is gone.
  virtual void leave() = 0;
};

enum class PointerButton : std::uint8_t { left, right };

/// What a canvas lives on. All of it outlives the canvas.
struct CanvasParts {
  Clock& clock;
  Prompt& prompt;
  const MessageTable& messages;
  DrawingSwitches& switches;
  const WorkingFiles& files;
  std::filesystem::path workingFolder;  ///< where the file dialogs start
};

/// The full-screen drawing canvas: draws what the pointer traces, tints and measures strokes along the guide lines,
/// obeys keys and the menu. One is made each time that the screen is entered.
class Canvas {
 public:
  /// A pointer that rests this long, within `longPressSlack` twips of where it went down, opens the menu, for whoever
  /// has no right button. It is longer than the touch driver's own right-click time can be set to.
  static constexpr auto longPress = std::chrono::milliseconds(1500);
  static constexpr float longPressSlack = 150;
  /// The banner goes at the sixth tick.
  static constexpr auto bannerTick = std::chrono::milliseconds(500);

  Canvas(CanvasParts parts, CanvasView& view, TwipsSize screen);

  /// The screen is shown.
  void activate();
  /// Asks whether the strokes that a run has left in the working files because it did not end in order are to be drawn
  /// and kept; they are deleted if not. Does nothing when there are none.
  void offerLeftStrokes();

  void pointerDown(PointerButton button, TwipsPoint at);
  void pointerMove(TwipsPoint at);
  void pointerUp(TwipsPoint at);
  /// `code` as actionOfKey() has it; others do nothing.
  void keyDown(int code);
  /// An entry of the menu: the menu goes, the action is done.
  void choose(const CanvasMenuEntry& entry);
  void perform(CanvasAction action);

  /// A line of the help panel: does what its key does.
  void chooseHelp(std::size_t line);
  /// The user taps the results list away.
  void dismissResultsList() { show(CanvasPanel::resultsList, false); }

  /// The tolerance bar stands at `tenths` of a percent.
  void setTolerance(int tenths);
  /// The check box that shows the tolerance lines along the grid.
  void setToleranceView(bool on);

  /// Draws everything anew, for a surface that has lost it.
  void repaint(Surface& surface) const { picture_.drawOn(surface); }
  /// Draws a saved drawing over what is there. A file that cannot be read is told to the user and changes nothing.
  void viewsave(const std::filesystem::path& file);

  const Pen& pen() const { return pen_; }
  bool isVisible(CanvasPanel panel) const { return visible_[static_cast<std::size_t>(panel)]; }
  bool inFixedSequence() const { return fixedSequence_; }
  int strokeCounter() const { return strokeCounter_; }

 private:
  enum class StrokeTested : std::uint8_t { no = 0, vertical = 1, horizontal = 2 };

  void show(CanvasPanel panel, bool shown);
  void openMenu(TwipsPoint at);
  void tickBanner();
  void tickLongPress();
  void hideBanner();
  void watchLongPress(PointerButton button, TwipsPoint at);

  void testStart(TwipsPoint at);
  void setTested(const std::optional<LineMatch>& line);
  void tint(TwipsPoint at);
  void listStroke(TwipsPoint pen);
  void advanceFixedSequence();
  void keepStroke();

  void showgrid();
  void chgrid(int number);
  void showerrline();
  void showline();
  void renewToleranceLines();

  void escape();
  void leave();
  void clearDrawing();
  void startFixedSequence();
  void toggleGrid();
  void undo();
  void save();
  void view();
  void showResults();
  bool mayReplace(const std::filesystem::path& file);
  /// True when there was none.
  bool tell(const std::optional<FileError>& error);
  LineMatcher matcher() const { return {guides_, bandsOf(guides_.screen(), tolerancePercent_)}; }

  CanvasParts parts_;
  CanvasView& view_;
  GuideLines guides_;
  Picture picture_;
  std::unique_ptr<Timer> bannerTimer_;
  std::unique_ptr<Timer> longPressTimer_;

  Pen pen_;
  Colour foreground_ = paletteColour(Pen{}.colour);
  float tolerancePercent_ = 1;
  bool toleranceView_ = false;
  std::array<bool, canvasPanels> visible_{};
  int bannerTicks_ = 0;

  bool penDown_ = false;
  bool drawn_ = false;
  bool menuAllowed_ = true;
  TwipsPoint position_;          ///< where the pen is
  TwipsPoint start_;             ///< where it went down
  std::size_t strokeMarks_ = 0;  ///< marks of the stroke on its way
  StrokeBuffer stroke_;
  StrokeTested tested_ = StrokeTested::no;
  LineMatch line_;  ///< the matched line, or the current one of the fixed sequence
  bool fixedSequence_ = false;
  ResultsTable results_;

  int strokeCounter_ = 0;       ///< strokes in the working files
  bool unsaved_ = false;        ///< some of them are in no drawing file
  std::optional<Stroke> held_;  ///< the last recorded stroke, as long as it can be taken back
};

}  // namespace touch
