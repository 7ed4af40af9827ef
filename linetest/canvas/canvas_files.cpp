#include <chrono>
#include <utility>

#include "linetest/canvas/canvas.h"
#include "linetest/files/damaged_files.h"
#include "support/text/language.h"

// The canvas's strokes in files: what is recorded, left by an earlier run, saved and viewed.

namespace touch {

namespace {

constexpr std::size_t fewestSamplesKept = 4;
constexpr std::string_view saveFilter = "Text (*.fdw) |*.fdw";
constexpr std::string_view openFilter = "(*.fdw)|*.fdw";
constexpr std::size_t shortestSaveName = 2;
constexpr std::size_t shortestOpenName = 4;
/// Of a drawing that is viewed. So many take some hundredths of a second; then the screen is shown
/// and the user heard.
constexpr std::size_t samplesAtATime = 10'000;
constexpr auto betweenPieces = std::chrono::milliseconds(1);

std::string savedText(std::size_t strokes, const std::filesystem::path& file) {
  const std::string text = strokes == 0   ? say("canvas", "Saved an empty drawing in %2")
                           : strokes == 1 ? say("canvas", "Saved 1 stroke in %2")
                                          : say("canvas", "Saved %1 strokes in %2");
  return filled(text, {std::to_string(strokes), file.string()});
}

}  // namespace

bool Canvas::tell(const Status& status) {
  if (!status) parts_.prompt.message(status.error().describe());
  return status.has_value();
}

void Canvas::takeUpStrokes() {
  int& strokes = parts_.switches.recorded.strokes;
  const LeftStrokes left = parts_.files.left();
  if (!left.damaged.empty()) {
    // Under its name it would be written over.
    if (!tell(parts_.files.setDamagedAside(left))) return goAtOnce();
    parts_.prompt.message(damagedFilesText(left.damaged) + "\n\n" +
                          say("canvas",
                              "Each is kept in its folder, with \".damaged\" at the "
                              "end of its name."));
  }
  if (strokes == 0) {
    if (left.strokes.empty() || !parts_.files.isUnfinished()) return;
    const auto restored = offer(left);
    if (!restored) return goAtOnce();
    if (!*restored) return;
    // The strokes come back into the state in which they were drawn, so that they can be saved and
    // others be added.
    parts_.switches.toleranceTest = true;
    parts_.switches.recorded.unsaved = true;
  }
  // Where they cannot be numbered anew they stay as they are, for another start.
  if (!tell(parts_.files.makeConsecutive(left))) return goAtOnce();
  strokes = static_cast<int>(left.strokes.size());
  if (parts_.switches.recorded.unsaved) tell(parts_.files.markUnfinished());
  showRecorded(left);
  renewEscape();
}

std::optional<bool> Canvas::offer(const LeftStrokes& left) {
  const auto count = left.strokes.size();
  const std::string found =
      count == 1 ? say("canvas", "An unsaved drawing (1 stroke) was found.")
                 : filled(say("canvas", "An unsaved drawing (%1 strokes) was found."),
                          {std::to_string(count)});
  const auto aside = parts_.files.asidePath();
  const std::string otherwise =
      filled(say("canvas", "If you do not restore it, it is kept as %1."), {aside.string()});
  switch (parts_.prompt.choose(found + "\n" + otherwise, say("canvas", "Restore"),
                               say("canvas", "Keep as file"))) {
    case Answer::yes:
      return true;
    case Answer::no:
      // Strokes that are drawn now would take the places of those that could not be kept.
      if (!tell(parts_.files.keepAside(left))) return std::nullopt;
      announce(savedText(count, aside));
      return false;
    case Answer::none:
      break;
  }
  return std::nullopt;
}

// As they were drawn, whatever the pen is now.
void Canvas::showRecorded(const LeftStrokes& recorded) {
  for (const auto& [number, stroke] : recorded.strokes) {
    const Colour colour = paletteColour(stroke.colour);
    TwipsPoint from = stroke.samples.front();
    picture_.point(from, colour, stroke.width);
    for (const TwipsPoint sample : stroke.samples)
      picture_.line(std::exchange(from, sample), sample, colour, stroke.width);
    if (ink_ == Ink::none) ink_ = Ink::dry;
    ++shownStrokes_;
  }
}

void Canvas::keepStroke() {
  const auto samples = stroke_.samples();
  if (samples.size() < fewestSamplesKept) return;
  int& strokes = parts_.switches.recorded.strokes;
  if (strokes == 0 && !tell(parts_.files.makeRoom())) return;
  Stroke stroke{pen_.colour, pen_.width, {samples.begin(), samples.end()}};
  if (!tell(parts_.files.write(strokes, stroke))) return;
  ++strokes;
  parts_.switches.recorded.unsaved = true;
  held_ = std::move(stroke);
}

void Canvas::save() {
  if (!parts_.switches.toleranceTest) {
    return announce(say("canvas",
                        "There is nothing to save: strokes are recorded once F has begun the test "
                        "of the lines."));
  }
  endStroke();
  const auto name = view_.askSaveName(parts_.workingFolder, saveFilter);
  if (name.native().size() < shortestSaveName) return;
  const auto file = withDrawingExtension(name);
  // The dialog has asked about the name that was typed, not about the one that this becomes.
  if (file != name && !mayReplace(file)) return;
  const auto strokes = parts_.files.readAll(parts_.switches.recorded.strokes);
  if (!strokes) {
    parts_.prompt.message(strokes.error().describe());
    return;
  }
  if (tell(writeDrawing(file, *strokes))) {
    parts_.switches.recorded.unsaved = false;
    parts_.files.finish();
    announce(savedText(strokes->size(), file));
  }
  if (!strokes->empty()) stroke_.assign(strokes->back().samples);
}

bool Canvas::mayReplace(const std::filesystem::path& file) {
  std::error_code unknown;
  return !std::filesystem::exists(file, unknown) ||
         parts_.prompt.confirm(
             filled(say("canvas", "%1 is there already. Replace it?"), {file.string()}));
}

void Canvas::view() {
  endStroke();
  const auto name = view_.askOpenName(parts_.workingFolder, openFilter);
  if (name.native().size() >= shortestOpenName) viewsave(name);
}

void Canvas::viewsave(const std::filesystem::path& file) {
  if (viewing_) return;
  endStroke();
  auto reader = DrawingReader::open(file);
  if (!reader) {
    parts_.prompt.message(reader.error().describe());
    return;
  }
  viewing_.emplace(Viewing{std::move(*reader), file, picture_.marks(), pen_, ink_, shownStrokes_});
  ink_ = Ink::none;
  pen_.width = 1;
  viewTimer_->start(betweenPieces);
  viewOn();
}

void Canvas::viewOn() {
  for (std::size_t samples = 0; samples < samplesAtATime;) {
    const auto stroke = viewing_->reader.next();
    if (!stroke) {
      endViewing(true);
      parts_.prompt.message(stroke.error().describe());
      return;
    }
    if (!*stroke) return endOfDrawing();
    pen_.colour = (*stroke)->colour;
    pen_.width = (*stroke)->width;
    stroke_.assign((*stroke)->samples);
    showline();
    ++viewing_->strokes;
    ++shownStrokes_;
    samples += (*stroke)->samples.size();
  }
  renewEscape();
}

void Canvas::endOfDrawing() {
  const bool isEmpty = viewing_->strokes == 0;
  const std::string file = viewing_->file.string();
  endViewing(isEmpty);
  if (isEmpty)
    parts_.prompt.message(filled(say("canvas", "%1 is a drawing without strokes."), {file}));
}

void Canvas::endViewing(bool takeBack) {
  viewTimer_->stop();
  Viewing viewed = *std::exchange(viewing_, std::nullopt);
  if (takeBack) {
    if (viewed.strokes > 0) picture_.show(std::move(viewed.marks));
    pen_ = viewed.pen;
    ink_ = viewed.ink;
    shownStrokes_ = viewed.shownStrokes;
    foreground_ = paletteColour(pen_.colour);
  }
  renewEscape();
}

}  // namespace touch
