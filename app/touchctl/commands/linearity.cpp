#include "linetest/linearity/linearity.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/output.h"
#include "linetest/linearity/linearity_files.h"
#include "linetest/linearity/linearity_plot.h"
#include "linetest/linearity/linearity_procedure.h"
#include "support/files/whole_file.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr ScreenSize usualScreen{1024, 768};

struct Measurement {
  std::vector<std::string> files;
  std::filesystem::path plot{};
  std::string panelSize;
  LinearityLimits limits;
  bool percent = false;
};

/// "WIDTHxHEIGHT" in mm.
std::optional<std::pair<double, double>> parsePanelSize(std::string_view text) {
  const auto number = [](std::string_view part) -> std::optional<double> {
    double value = 0;
    const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
    if (error != std::errc{} || end != part.data() + part.size() || !(value >= 1 && value <= 1e5)) {
      return std::nullopt;
    }
    return value;
  };
  const auto cross = text.find('x');
  if (cross == text.npos) return std::nullopt;
  const auto width = number(text.substr(0, cross));
  const auto height = number(text.substr(cross + 1));
  if (!width || !height) return std::nullopt;
  return std::pair(*width, *height);
}

void check(const Measurement& asked) {
  if (!asked.panelSize.empty() && !parsePanelSize(asked.panelSize)) {
    refuseArgument("--panel-size", fmt::format("\"{}\" is not WIDTHxHEIGHT in mm, e.g. 344.5x193.5",
                                               asked.panelSize));
  }
  if (!asked.plot.empty() && !asked.plot.string().ends_with(".svg")) {
    refuseArgument("--plot", fmt::format("\"{}\" does not end in .svg; touchutility saves the page "
                                         "as PNG and PDF",
                                         asked.plot.string()));
  }
}

MeasuredPanel panelOf(const Measurement& asked, const ShellOptions& options) {
  const ScreenSize screen = options.screen.value_or(usualScreen);
  MeasuredPanel panel =
      MeasuredPanel::ofNominalSize({static_cast<float>(screen.width) * twipsPerPixel,
                                    static_cast<float>(screen.height) * twipsPerPixel});
  if (const auto size = parsePanelSize(asked.panelSize)) {
    panel.widthMm = size->first;
    panel.heightMm = size->second;
  }
  return panel;
}

nlohmann::json jsonOf(const DeviationFigures& figures) {
  return {{"samples", figures.count},   {"average", figures.average},
          {"maximum", figures.maximum}, {"minimum", figures.minimum},
          {"rms", figures.rms},         {"absoluteMaximum", figures.absoluteMaximum}};
}

void printLinesAsJson(const std::vector<LineResult>& results, const MeasuredPanel& panel,
                      const LinearityLimits& limits, bool passed) {
  auto lines = nlohmann::json::array();
  for (const LineResult& result : results) {
    const LineFigures& figures = result.figures;
    const LineVerdict verdict = judge(figures, limits, panel, result.guide.orientation);
    lines.push_back({{"line", result.label},
                     {"all", jsonOf(figures.all)},
                     {"centre", jsonOf(figures.centre)},
                     {"edge", jsonOf(figures.edge)},
                     {"offset", figures.offset},
                     {"tilt", figures.tilt},
                     {"straightness", figures.straightness},
                     {"straightnessRms", figures.straightnessRms},
                     {"coverage", figures.coverage},
                     {"largestGap", figures.largestGap},
                     {"centrePassed", verdict.centre},
                     {"edgePassed", verdict.edge}});
  }
  const nlohmann::json report = {
      {"panelMm", {panel.widthMm, panel.heightMm}},
      {"limits",
       {{"centre", limits.centre},
        {"edge", limits.edge},
        {"unit", limits.unit == LimitUnit::millimetres ? "mm" : "percent"}}},
      {"lines", lines},
      {"passed", passed}};
  printJson(report);
}

void printLinesAsText(const std::vector<LineResult>& results, const MeasuredPanel& panel,
                      const LinearityLimits& limits, bool passed) {
  const char* const unit = limits.unit == LimitUnit::millimetres ? "mm" : "%";
  print("Panel {:.1f} x {:.1f} mm; limit {} {}, within {} mm of the edge {} {}\n", panel.widthMm,
        panel.heightMm, limits.centre, unit, edgeZoneMm, limits.edge, unit);
  print("line  samples  average  maximum  minimum      rms   offset straight      gap\n");
  for (const LineResult& result : results) {
    const LineFigures& figures = result.figures;
    const bool good = judge(figures, limits, panel, result.guide.orientation).passed();
    print("{:<4}  {:>7} {:>8.2f} {:>8.2f} {:>8.2f} {:>8.2f} {:>8.2f} {:>8.2f} {:>8.2f}  {}\n",
          result.label, figures.all.count, figures.all.average, figures.all.maximum,
          figures.all.minimum, figures.all.rms, figures.offset, figures.straightness,
          figures.largestGap, good ? "pass" : "FAIL");
  }
  print("{}\n", passed ? "PASS" : "FAIL");
}

/// All lines of the linearity tester, drawn on the simulated panel by a finger that follows each
/// guide exactly.
std::vector<LineResult> drawEachLine(Shell& shell, const MeasuredPanel& panel) {
  constexpr int samplesPerLine = 200;
  LinearityProcedure procedure(panel);
  while (const auto line = procedure.current()) {
    const GuidedLine guide = guideOf(*line, panel.screen);
    bool penIsDown = false;
    for (int sample = 0; sample < samplesPerLine; ++sample) {
      const double along = (sample + 0.5) / samplesPerLine;
      const bool vertical = guide.orientation == Orientation::vertical;
      const double x = vertical ? guide.position / panel.screen.width : along;
      const double y = vertical ? along : guide.position / panel.screen.height;
      const auto reported = shell.simulation().report(x, y, shell.controller());
      if (!reported) continue;
      const TwipsPoint at{static_cast<float>(reported->x) * panel.screen.width,
                          static_cast<float>(reported->y) * panel.screen.height};
      penIsDown ? procedure.penMove(at) : procedure.penDown(at);
      penIsDown = true;
    }
    procedure.penUp();
    procedure.next();
  }
  return procedure.results();
}

bool allPass(const std::vector<LineResult>& results, const MeasuredPanel& panel,
             const LinearityLimits& limits) {
  return std::ranges::all_of(results, [&](const LineResult& result) {
    return judge(result.figures, limits, panel, result.guide.orientation).passed();
  });
}

ExitStatus measure(const Measurement& asked, const ShellOptions& options) {
  const MeasuredPanel panel = panelOf(asked, options);
  LinearityLimits limits = asked.limits;
  if (asked.percent) limits.unit = LimitUnit::percent;

  std::vector<LineResult> results;
  for (const std::string& file : asked.files) {
    auto measured = measureDrawing(absolutePathNamed(file), panel);
    if (!measured) {
      complain(measured.error().describe());
      return ExitStatus::failed;
    }
    for (LineResult& result : *measured)
      results.push_back(std::move(result));
  }
  if (results.empty()) {
    complain("there is no stroke to measure");
    return ExitStatus::failed;
  }
  const bool passed = allPass(results, panel, limits);
  const auto printLines = options.json ? printLinesAsJson : printLinesAsText;
  printLines(results, panel, limits, passed);
  if (!asked.plot.empty()) {
    const auto written = writeWholeFile(asked.plot, linearitySvg(results, panel, limits));
    if (!written) {
      complain(written.error().describe());
      return ExitStatus::failed;
    }
  }
  return passed ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace

ExitStatus measureSimulatedLines(Shell& shell) {
  const MeasuredPanel panel = panelOf({}, shell.options());
  const auto results = drawEachLine(shell, panel);
  if (results.size() < LinearityProcedure::lines) {
    complain(fmt::format("of {} lines {} could not be drawn on the panel",
                         +LinearityProcedure::lines, LinearityProcedure::lines - results.size()));
    return ExitStatus::failed;
  }
  const LinearityLimits limits;
  const bool passed = allPass(results, panel, limits);
  printLinesAsText(results, panel, limits, passed);
  return passed ? ExitStatus::done : ExitStatus::failed;
}

void addLinearityCommand(const CommandLine& line) {
  addCommand(
      line, line.app, "linearity",
      "Measure how straight the lines of saved drawings are; status 1 when one fails",
      [line](CLI::App& command) {
        const auto asked = std::make_shared<Measurement>();
        command.add_option("FILE", asked->files, "Drawings, as touchutility saves them (.fdw)")
            ->required();
        command
            .add_option(
                "--panel-size", asked->panelSize,
                "The panel's active area in mm (default: 96 pixels an inch). --screen tells the "
                "size of the screen that was drawn on (default: 1024x768)")
            ->type_name("WxH");
        command.add_option("--limit", asked->limits.centre, "Greatest deviation that passes")
            ->check(CLI::PositiveNumber)
            ->capture_default_str();
        command
            .add_option("--edge-limit", asked->limits.edge,
                        "The same within 3.5 mm of the panel's edge")
            ->check(CLI::PositiveNumber)
            ->capture_default_str();
        command.add_flag("--percent", asked->percent,
                         "Limits are percent of the panel's width or height, not mm");
        command
            .add_option_function<std::string>(
                "--plot",
                [asked](const std::string& file) { asked->plot = absolutePathNamed(file); },
                "Draw the result page into this SVG file")
            ->type_name("FILE");
        addJson(line, command);
        command.callback([line, asked] {
          check(*asked);
          line.fileCommand = [asked, &options = line.options] { return measure(*asked, options); };
        });
      });
}

}  // namespace touch
