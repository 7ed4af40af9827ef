#include "measure/lines/line_files.h"

#include <algorithm>
#include <cmath>
#include <system_error>
#include <utility>

#include "drawing/stroke.h"
#include "support/files/own_folder.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/number_layout.h"

namespace touch::measure {

namespace {

namespace fs = std::filesystem;

// 3001 samples of three zones take a seventh of it.
constexpr std::size_t longestFile = std::size_t{1} << 20U;

float shown(double value) {
  return static_cast<float>(value);
}

void appendRecord(std::string& text, std::initializer_list<float> values) {
  appendZones(text, values);
  text += recordEnd;
}

/// A number above 0, for lengths that others are divided by.
float positive(NumberReader& reader, std::string_view what) {
  const float value = reader.number(what);
  if (!reader.failed() && value <= 0) reader.refuse(what, shortestText(value));
  return reader.failed() ? 1 : value;
}

/// Of whatever kind: also what cannot be read must not be replaced unseen.
bool isThere(const fs::path& file) {
  std::error_code failed;
  return fs::exists(fs::symlink_status(file, failed));
}

/// Whether more is lost than `kept` when the line's file is replaced.
bool holdsAnythingBut(const std::vector<TwipsPoint>& kept, const fs::path& folder,
                      const Guide& guide) {
  if (!isThere(folder / lineFileName(guide))) return false;
  const auto read = readLineFile(folder, guide);
  return !read || read->samples != kept;
}

bool isVertical(const Guide& guide) {
  return guide.from.x == guide.to.x;
}

/// In mm from the guide.
double deviationOf(const LineFile& line, TwipsPoint sample) {
  const bool vertical = isVertical(*line.guide);
  const double off =
      static_cast<double>(vertical ? sample.x : sample.y) - static_cast<double>(line.position);
  return vertical ? off * line.widthMm / static_cast<double>(line.screen.width)
                  : off * line.heightMm / static_cast<double>(line.screen.height);
}

float positionOf(const Guide& guide, TwipsSize screen) {
  return isVertical(guide) ? shown(guide.from.x) * screen.width
                           : shown(guide.from.y) * screen.height;
}

}  // namespace

std::string lineFileName(const Guide& guide) {
  constexpr std::size_t straightName = 3;  // "V-1"
  if (guide.name.size() != straightName || guide.name.front() == 'D') return {};
  const char letter = isVertical(guide) ? 'v' : 'h';
  return std::string("Tvm-") + letter + guide.name.back() + ".txt";
}

bool isKeptAsFile(const Trace& trace) {
  const Guide* const guide = findGuide(trace.task);
  return guide != nullptr && !lineFileName(*guide).empty();
}

LineFile lineFileOf(const Guide& guide, TwipsSize screen, const PanelSize& size,
                    std::vector<TwipsPoint> samples) {
  return {&guide,
          screen,
          size.width.value,
          size.height.value,
          positionOf(guide, screen),
          std::move(samples)};
}

std::string lineFileText(const LineFile& line) {
  std::string text(line.guide->name);
  text += recordEnd;
  appendRecord(text, {line.screen.width, line.screen.height});
  appendRecord(text, {shown(line.widthMm), shown(line.heightMm)});
  appendRecord(text, {line.position});
  appendNumber(text, static_cast<int>(line.samples.size()));
  text += recordEnd;
  double sum = 0;
  double squares = 0;
  double most = -HUGE_VAL;
  double least = HUGE_VAL;
  for (const TwipsPoint& sample : line.samples) {
    const double deviation = deviationOf(line, sample);
    appendRecord(text, {sample.x, sample.y, shown(deviation)});
    sum += deviation;
    squares += deviation * deviation;
    most = std::max(most, deviation);
    least = std::min(least, deviation);
  }
  const auto count = static_cast<double>(line.samples.size());
  appendRecord(text,
               {shown(sum / count), shown(most), shown(least), shown(std::sqrt(squares / count))});
  return text;
}

Status writeLineFile(const fs::path& folder, const LineFile& line) {
  const auto files = OwnFolder::openAnybodys(folder);
  if (!files) return tl::unexpected(files.error());
  return files->write(lineFileName(*line.guide), lineFileText(line));
}

Status setAside(const fs::path& folder, std::span<const Guide* const> guides) {
  const auto files = OwnFolder::openAnybodys(folder);
  if (!files) return tl::unexpected(files.error());
  const auto isTaken = [&](const std::string& ending) {
    return std::ranges::any_of(guides, [&](const Guide* guide) {
      return isThere(folder / (lineFileName(*guide) + ending));
    });
  };
  const std::string first = ".old";
  std::string ending = first;
  for (int next = 2; isTaken(ending); ++next)
    ending = first + std::to_string(next);

  Status all;
  for (const Guide* guide : guides) {
    const std::string name = lineFileName(*guide);
    const Status renamed = files->rename(name, name + ending, false);
    if (!renamed && all)
      all = tl::unexpected(FileError{(folder / name).string(), 0,
                                     say("measure", "a file that can be renamed"),
                                     renamed.error().found});
  }
  return all;
}

Status keepAndGoOn(const fs::path& folder, LineProcedure& procedure, const PanelSize& size) {
  const Guide* const guide = procedure.current();
  const auto drawn = procedure.drawn();
  if (drawn.empty() || procedure.wantsBlame() || lineFileName(*guide).empty()) {
    procedure.next();
    return {};
  }
  const bool loses = holdsAnythingBut(procedure.kept(*guide), folder, *guide);
  procedure.next();
  if (loses) {
    if (Status aside = setAside(folder, std::span(&guide, 1)); !aside) return aside;
  }
  return writeLineFile(folder, lineFileOf(*guide, procedure.screen(), size, drawn));
}

Result<LineFile> parseLineFile(std::string_view text, const Guide& guide, std::string name) {
  NumberReader reader(text, std::move(name));
  LineFile read;
  read.guide = &guide;
  if (const auto label = reader.label(); label != guide.name) {
    reader.refuse(filled(say("measure", "the line's name \"%1\""), {std::string(guide.name)}),
                  label);
  }
  read.screen.width = positive(reader, marked("numbers", "the screen's width in twips"));
  read.screen.height = positive(reader, marked("numbers", "the screen's height in twips"));
  read.widthMm =
      static_cast<double>(positive(reader, marked("numbers", "the panel's width in mm")));
  read.heightMm =
      static_cast<double>(positive(reader, marked("numbers", "the panel's height in mm")));
  read.position = reader.number(marked("numbers", "the guide's position"));
  const int count = reader.integer(1, static_cast<int>(Stroke::mostSamples),
                                   marked("numbers", "a count of samples from 1 to 3001"));
  for (int i = 0; i < count && !reader.failed(); ++i) {
    const float x = reader.number(marked("numbers", "the x of a sample"));
    const float y = reader.number(marked("numbers", "the y of a sample"));
    reader.number(marked("numbers", "the deviation of a sample"));
    read.samples.push_back({x, y});
  }
  for (const auto* figure : {marked("numbers", "the average"), marked("numbers", "the maximum"),
                             marked("numbers", "the minimum"), marked("numbers", "the RMS")})
    reader.number(figure);
  if (!reader.failed() && !reader.atEnd())
    reader.refuse(say("measure", "the end of the file"), reader.label());
  if (reader.failed()) return tl::unexpected(reader.error());
  return read;
}

Result<LineFile> readLineFile(const fs::path& folder, const Guide& guide) {
  const auto path = folder / lineFileName(guide);
  const auto text = readWholeFile(path, longestFile);
  if (!text) return tl::unexpected(text.error());
  return parseLineFile(*text, guide, path.string());
}

std::vector<const Guide*> EarlierLines::guides() const {
  std::vector<const Guide*> guides;
  for (const LineFile& line : lines)
    guides.push_back(line.guide);
  return guides;
}

EarlierLines readLineFiles(const fs::path& folder, const LineProcedure& procedure,
                           const PanelSize& size) {
  const auto near = [](double a, double b) { return std::abs(a - b) < 0.01; };
  EarlierLines earlier;
  for (const Guide* guide : procedure.guides()) {
    const std::string name = lineFileName(*guide);
    if (name.empty() || !isThere(folder / name)) continue;
    auto read = readLineFile(folder, *guide);
    if (!read) earlier.damaged.push_back(read.error());
    if (!read || read->screen != procedure.screen()) continue;
    if (!near(read->widthMm, size.width.value)) continue;
    if (!near(read->heightMm, size.height.value)) continue;
    // Its samples were drawn along another line.
    constexpr float twip = 1;
    if (std::abs(read->position - positionOf(*guide, read->screen)) > twip) continue;
    earlier.lines.push_back(std::move(*read));
  }
  return earlier;
}

}  // namespace touch::measure
