#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/messages/messages.h"
#include "drawing/canvas_tables.h"
#include "drawing/drawing_switches.h"
#include "drawing/pen.h"
#include "drawing/picture.h"
#include "drawing/stroke.h"
#include "drawing/surface.h"
#include "linetest/analysis/line_analysis.h"
#include "linetest/analysis/results_table.h"
#include "linetest/files/drawing_file.h"
#include "linetest/files/working_files.h"
#include "support/clock.h"
#include "support/prompt.h"

namespace touch {

/// What lies over the drawing area and comes and goes.
enum class CanvasPanel : std::uint8_t { help, menu, banner, caption, resultsList, resultsTable };
inline constexpr std::size_t canvasPanels = 6;

/// The window around the canvas.
class CanvasView {
 public:
  CanvasView() = default;
  CanvasView(const CanvasView&) = delete;
  CanvasView& operator=(const CanvasView&) = delete;
  virtual ~CanvasView() = default;

  /// The drawing area. Its background is `canvasPaper`.
  virtual Surface& surface() = 0;

  virtual TwipsSize sizeOf(CanvasPanel panel) const = 0;
  virtual void place(CanvasPanel panel, TwipsPoint corner) = 0;
  /// Where the tools lie on the drawing area.
  virtual std::vector<TwipsRect> tools() const = 0;
  virtual void show(CanvasPanel panel, bool shown) = 0;
  virtual void setHelp(std::span<const std::string> lines) = 0;
  /// What the banner says from now on, in place of how to begin.
  virtual void setBanner(std::string_view text) = 0;
  /// The line to draw next, in large letters, within one field of the grid.
  virtual void setCaption(std::string_view caption) = 0;
  /// What Esc will do next, beside the tools.
  virtual void setEscape(std::string_view hint) = 0;
  virtual void setResultsList(std::span<const std::string> lines) = 0;
  virtual void setResultsTable(const ResultsSheet& sheet) = 0;
  /// What the label beside the tolerance bar shows.
  virtual void showTolerance(Percent tolerance) = 0;

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

/// The full-screen drawing canvas: draws what the pointer traces, tints and measures strokes along
/// the guide lines, obeys keys and the menu. One is made each time that the screen is entered.
class Canvas {
 public:
  /// The banner goes at the sixth tick.
  static constexpr auto bannerTick = std::chrono::milliseconds(500);

  Canvas(CanvasParts parts, CanvasView& view, TwipsSize screen);

  /// The screen is shown.
  void activate();
  /// Shows what this run has recorded since the last clear. Strokes of a run that died are offered,
  /// once: they are drawn and recorded anew, or kept as a drawing file. Unanswered they stay as
  /// they are, and the screen is left.
  void takeUpStrokes();
  /// The screen has another size now; the ink stays where it is.
  void resize(TwipsSize screen);

  void pointerDown(PointerButton button, TwipsPoint at);
  void pointerMove(TwipsPoint at);
  void pointerUp(TwipsPoint at);
  /// `code` as actionOfKey() has it; others do nothing.
  void keyDown(int code);
  /// Opens the menu for who has no right button, or puts it away; `at` is as of a click.
  void toggleMenu(TwipsPoint at);
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
  /// Draws a saved drawing over what is there. A long one comes in pieces, and Esc takes it back;
  /// until it is there, nothing else is done. A file that cannot be read is told to the user and
  /// changes nothing.
  void viewsave(const std::filesystem::path& file);

  const Pen& pen() const { return pen_; }
  bool isVisible(CanvasPanel panel) const { return visible_[static_cast<std::size_t>(panel)]; }
  bool inFixedSequence() const { return fixedSequence_; }
  int strokeCounter() const { return parts_.switches.recorded.strokes; }

 private:
  enum class StrokeTested : std::uint8_t { no = 0, vertical = 1, horizontal = 2 };

  void show(CanvasPanel panel, bool shown);
  void openMenu(TwipsPoint at);
  void tickBanner();
  void raiseBanner();
  void hideBanner();
  void placeBanner();
  void announce(std::string_view text);
  void renewEscape();
  std::string escapeHint() const;

  void testStart(TwipsPoint at);
  void setTested(const std::optional<LineMatch>& line);
  void tint(TwipsPoint at);
  void listStroke(TwipsPoint pen);
  void placeResultsList(TwipsPoint pen);
  void advanceFixedSequence();
  void markNextLine();
  TwipsPoint captionCorner() const;
  void endFixedSequence();
  void keepStroke();
  /// A box comes up, and may swallow the pen's going up.
  void endStroke();

  void showgrid();
  void chgrid(int number);
  void showerrline();
  void showline();
  void showRecorded(const LeftStrokes& recorded);
  void renewToleranceLines();

  void carryOut(CanvasAction action);
  void escape();
  void leave();
  void clearDrawing();
  void clearPicture();
  void startFixedSequence();
  void toggleGrid();
  void undo();
  void save();
  void view();
  void showResults();
  bool mayReplace(const std::filesystem::path& file);
  /// Whether they are to be restored; false when they were kept aside, nothing when they stay where
  /// they are.
  std::optional<bool> offer(const LeftStrokes& left);
  void goAtOnce();
  void viewOn();
  void endOfDrawing();
  void endViewing(bool takeBack);
  void liftPen();
  /// Tells the user why something failed. True when it went well.
  bool tell(const Status& status);
  LineMatcher matcher() const { return {guides_, bandsOf(guides_.screen(), tolerance_.percent)}; }

  CanvasParts parts_;
  CanvasView& view_;
  GuideLines guides_;
  Picture picture_;
  std::unique_ptr<Timer> bannerTimer_;
  std::unique_ptr<Timer> viewTimer_;

  Pen pen_;
  Colour foreground_ = paletteColour(Pen{}.colour);
  struct {
    Percent percent{1};
    bool isShown = false;  ///< as lines on both sides of the guide lines
  } tolerance_;
  std::array<bool, canvasPanels> visible_{};
  int bannerTicks_ = 0;

  /// Dry ink is of strokes that have ended; it flows while the pen is down.
  enum class Ink : std::uint8_t { none, dry, flowing } ink_ = Ink::none;
  bool menuAllowed_ = true;
  int shownStrokes_ = 0;  ///< recorded or not
  TwipsPoint position_;   ///< where the pen is
  StrokeBuffer stroke_;
  StrokeTested tested_ = StrokeTested::no;
  LineMatch line_;  ///< the matched line, or the current one of the fixed sequence
  bool fixedSequence_ = false;
  ResultsTable results_;

  std::optional<Stroke> held_;  ///< the last recorded stroke, as long as it can be taken back

  /// A drawing on its way from its file, and what there was before.
  struct Viewing {
    DrawingReader reader;
    std::filesystem::path file;
    Picture::Marks marks;
    Pen pen;
    Ink ink = Ink::none;
    int shownStrokes = 0;
    int strokes = 0;
  };
  std::optional<Viewing> viewing_;
};

}  // namespace touch
