#include "linetest/linearity/linearity_files.h"

#include <algorithm>
#include <cmath>
#include <system_error>
#include <utility>

#include "drawing/stroke.h"
#include "support/files/own_folder.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/number_layout.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

// 3001 samples of three zones take a seventh of it.
constexpr std::size_t longestResult = std::size_t{1} << 20U;
constexpr int csvDecimals = 3;

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

std::string verdictText(bool passed) {
  return passed ? "pass" : "fail";
}

/// Of whatever kind: also what cannot be read must not be replaced unseen.
bool isThere(const fs::path& file) {
  std::error_code failed;
  return fs::exists(fs::symlink_status(file, failed));
}

/// Whether more is lost than `kept` when the line's file is replaced.
bool holdsAnythingBut(const std::optional<LineResult>& kept, const fs::path& folder,
                      const TestLine& line) {
  if (!isThere(folder / resultFileName(line))) return false;
  const auto read = readResult(folder, line);
  return !read || !kept || read->result.samples != kept->samples;
}

struct CsvColumn {
  std::string_view heading;
  double (*value)(const LineFigures&);
};

constexpr CsvColumn csvColumns[] = {
    {"average", [](const LineFigures& f) { return f.all.average; }},
    {"maximum", [](const LineFigures& f) { return f.all.maximum; }},
    {"minimum", [](const LineFigures& f) { return f.all.minimum; }},
    {"rms", [](const LineFigures& f) { return f.all.rms; }},
    {"absolute maximum", [](const LineFigures& f) { return f.all.absoluteMaximum; }},
    {"centre absolute maximum", [](const LineFigures& f) { return f.centre.absoluteMaximum; }},
    {"edge absolute maximum", [](const LineFigures& f) { return f.edge.absoluteMaximum; }},
    {"offset", [](const LineFigures& f) { return f.offset; }},
    {"tilt per 100 mm", [](const LineFigures& f) { return f.tilt; }},
    {"straightness", [](const LineFigures& f) { return f.straightness; }},
    {"straightness rms", [](const LineFigures& f) { return f.straightnessRms; }},
    {"largest gap", [](const LineFigures& f) { return f.largestGap; }},
    {"coverage", [](const LineFigures& f) { return f.coverage; }},
};

}  // namespace

std::string resultFileName(const TestLine& line) {
  const char letter = line.orientation == Orientation::vertical ? 'v' : 'h';
  return std::string("Tvm-") + letter + std::to_string(line.number) + ".txt";
}

std::string resultText(const LineResult& result, const MeasuredPanel& panel) {
  std::string text = result.label;
  text += recordEnd;
  appendRecord(text, {panel.screen.width, panel.screen.height});
  appendRecord(text, {shown(panel.widthMm), shown(panel.heightMm)});
  appendRecord(text, {result.guide.position});
  appendNumber(text, static_cast<int>(result.samples.size()));
  text += recordEnd;
  for (const TwipsPoint& sample : result.samples) {
    const double deviation = measureLine(result.guide, std::span(&sample, 1), panel).all.average;
    appendRecord(text, {sample.x, sample.y, shown(deviation)});
  }
  const DeviationFigures& all = result.figures.all;
  appendRecord(text, {shown(all.average), shown(all.maximum), shown(all.minimum), shown(all.rms)});
  return text;
}

Status writeResult(const fs::path& folder, const TestLine& line, const LineResult& result,
                   const MeasuredPanel& panel) {
  const auto files = OwnFolder::openAnybodys(folder);
  if (!files) return tl::unexpected(files.error());
  return files->write(resultFileName(line), resultText(result, panel));
}

Status setAside(const fs::path& folder, std::span<const TestLine> lines) {
  const auto files = OwnFolder::openAnybodys(folder);
  if (!files) return tl::unexpected(files.error());
  const auto isTaken = [&](const std::string& ending) {
    return std::any_of(lines.begin(), lines.end(), [&](const TestLine& line) {
      return isThere(folder / (resultFileName(line) + ending));
    });
  };
  const std::string first = ".old";
  std::string ending = first;
  for (int next = 2; isTaken(ending); ++next)
    ending = first + std::to_string(next);

  Status all;
  for (const TestLine& line : lines) {
    const std::string name = resultFileName(line);
    const Status renamed = files->rename(name, name + ending, false);
    if (!renamed && all)
      all = tl::unexpected(FileError{(folder / name).string(), 0,
                                     say("linearity", "a file that can be renamed"),
                                     renamed.error().found});
  }
  return all;
}

Status keepAndGoOn(const fs::path& folder, LinearityProcedure& procedure) {
  const auto line = procedure.current();
  const auto drawn = procedure.drawn();
  if (!line || !drawn) {
    procedure.next();
    return {};
  }
  const bool loses = holdsAnythingBut(procedure.result(*line), folder, *line);
  procedure.next();
  if (loses) {
    if (Status aside = setAside(folder, std::span(&*line, 1)); !aside) return aside;
  }
  return writeResult(folder, *line, *drawn, procedure.panel());
}

Result<ReadResult> parseResult(std::string_view text, const TestLine& line, std::string name) {
  NumberReader reader(text, std::move(name));
  ReadResult read;
  read.result.label = labelOf(line);
  if (const auto label = reader.label(); label != read.result.label) {
    reader.refuse(filled(say("linearity", "the line's name \"%1\""), {read.result.label}), label);
  }
  read.panel.screen.width = positive(reader, marked("numbers", "the screen's width in twips"));
  read.panel.screen.height = positive(reader, marked("numbers", "the screen's height in twips"));
  read.panel.widthMm =
      static_cast<double>(positive(reader, marked("numbers", "the panel's width in mm")));
  read.panel.heightMm =
      static_cast<double>(positive(reader, marked("numbers", "the panel's height in mm")));
  read.result.guide = {line.orientation, reader.number(marked("numbers", "the guide's position"))};
  const int count = reader.integer(1, static_cast<int>(Stroke::mostSamples),
                                   marked("numbers", "a count of samples from 1 to 3001"));
  for (int i = 0; i < count && !reader.failed(); ++i) {
    const float x = reader.number(marked("numbers", "the x of a sample"));
    const float y = reader.number(marked("numbers", "the y of a sample"));
    reader.number(marked("numbers", "the deviation of a sample"));
    read.result.samples.push_back({x, y});
  }
  for (const auto* figure : {marked("numbers", "the average"), marked("numbers", "the maximum"),
                             marked("numbers", "the minimum"), marked("numbers", "the RMS")})
    reader.number(figure);
  if (!reader.failed() && !reader.atEnd())
    reader.refuse(say("linearity", "the end of the file"), reader.label());
  if (reader.failed()) return tl::unexpected(reader.error());
  read.result.figures = measureLine(read.result.guide, read.result.samples, read.panel);
  return read;
}

Result<ReadResult> readResult(const fs::path& folder, const TestLine& line) {
  const auto path = folder / resultFileName(line);
  const auto text = readWholeFile(path, longestResult);
  if (!text) return tl::unexpected(text.error());
  return parseResult(*text, line, path.string());
}

std::vector<TestLine> EarlierResults::lines() const {
  std::vector<TestLine> lines;
  for (const auto& [line, result] : results)
    lines.push_back(line);
  return lines;
}

EarlierResults readResults(const fs::path& folder, const MeasuredPanel& panel) {
  const auto near = [](double a, double b) { return std::abs(a - b) < 0.01; };
  EarlierResults earlier;
  for (const Orientation orientation : {Orientation::vertical, Orientation::horizontal}) {
    for (int number = 1; number <= TestLine::perOrientation; ++number) {
      const TestLine line{orientation, number};
      if (!isThere(folder / resultFileName(line))) continue;
      auto read = readResult(folder, line);
      if (!read) earlier.damaged.push_back(read.error());
      if (!read || read->panel.screen != panel.screen) continue;
      if (!near(read->panel.widthMm, panel.widthMm)) continue;
      if (!near(read->panel.heightMm, panel.heightMm)) continue;
      earlier.results.emplace_back(line, std::move(read->result));
    }
  }
  return earlier;
}

std::string csvText(std::span<const LineResult> results, const MeasuredPanel& panel,
                    const LinearityLimits& limits) {
  std::string text = "line,samples";
  for (const CsvColumn& column : csvColumns)
    text.append(",").append(column.heading);
  text.append(",absolute maximum in percent,centre,edge").append(recordEnd);
  for (const LineResult& result : results) {
    const LineFigures& figures = result.figures;
    const Orientation orientation = result.guide.orientation;
    text += result.label + ',' + std::to_string(figures.all.count);
    for (const CsvColumn& column : csvColumns)
      text += ',' + fixedText(column.value(figures), csvDecimals);
    const LineVerdict verdict = judge(figures, limits, panel, orientation);
    text += ',' + fixedText(panel.percentOf(figures.all.absoluteMaximum, orientation), csvDecimals);
    text += ',' + verdictText(verdict.centre) + ',' + verdictText(verdict.edge);
    text += recordEnd;
  }
  return text;
}

}  // namespace touch
