#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/commands/panel_size.h"
#include "app/touchctl/commands/simulated_hand.h"
#include "app/touchctl/output.h"
#include "linetest/files/drawing_file.h"
#include "measure/figures/line_figures.h"
#include "measure/files/measurement_file.h"
#include "measure/judging/verdict.h"
#include "measure/lines/lines_page.h"
#include "measure/report/conditions.h"
#include "measure/report/map_page.h"
#include "measure/report/words.h"
#include "measure/sorting.h"
#include "serial/recording/recording.h"
#include "support/files/whole_file.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;
using namespace measure;

constexpr std::size_t columnWidth = 9;  // of the table of lines

/// What the command line says. What it does not say is as the files have it.
struct Asked {
  std::vector<std::string> files;
  std::string panelSize, limits, profile, lines, blame, reports = "tablet";
  int targets = 0;
  fs::path plot, map, save;
  std::string serialNumber, person;
};

void check(const Asked& asked) {
  checkPanelSize(asked.panelSize);
  if (!asked.plot.empty() && asked.plot.extension() != ".svg")
    refuseArgument("--plot", fmt::format("\"{}\" does not end in .svg; touchutility saves the page "
                                         "as PNG and PDF",
                                         asked.plot.string()));
  if (!asked.map.empty() && asked.map.extension() != ".svg" && asked.map.extension() != ".csv")
    refuseArgument("--map", fmt::format("\"{}\" does not end in .svg or .csv", asked.map.string()));
}

enum class FileKind : std::uint8_t { drawing, recording, measurement };

/// By how it begins; what is neither of the others is read as a drawing, whose reader says what is
/// wrong.
Result<FileKind> kindOf(const fs::path& file) {
  auto opened = FileInPieces::open(file, largestRecording);
  if (!opened) return tl::unexpected(opened.error());
  constexpr std::string_view recording = "touch recording";
  std::string start(recording.size(), '\0');
  start.resize(opened->read(start));
  if (opened->error()) return tl::unexpected(*opened->error());
  if (start.starts_with('{')) return FileKind::measurement;
  return start == recording ? FileKind::recording : FileKind::drawing;
}

Status addDrawing(Measurement& measurement, Test test, const fs::path& file,
                  const ShellOptions& options) {
  const auto drawing = readDrawing(file);
  if (!drawing) return tl::unexpected(drawing.error());
  constexpr auto twips = static_cast<double>(twipsPerPixel);
  addStrokes(measurement, test,
             {SourceKind::pointer, screenOf(options).width * twips,
              screenOf(options).height * twips, false, file.filename().string()},
             tracesOf(*drawing));
  return {};
}

Status addRecording(Measurement& measurement, Test test, const fs::path& file,
                    const ShellOptions& options, const Asked& asked) {
  auto recording = RecordingFile::open(file);
  if (!recording) return tl::unexpected(recording.error());
  const auto family = asked.reports == "e02" ? ReportFamily::e02 : ReportFamily::tablet;
  const auto added = rdformad(options.workFolder);
  if (const std::string problems = describeProblems(added); !problems.empty()) complain(problems);
  ReportDecoder decoder(family, added.formats);
  std::vector<Arrival> stream;
  RawCounts greatest{1};
  while (const auto transfer = (*recording)->next()) {
    if (transfer->direction != Direction::fromController) continue;
    Arrival arrival{std::chrono::duration<double>(transfer->time), {}};
    decoder.feed(transfer->bytes, arrival.reports);
    for (const TouchReport& report : arrival.reports)
      greatest = std::max(greatest, report.greatest);
    stream.push_back(std::move(arrival));
  }
  if (const auto error = (*recording)->error()) return tl::unexpected(*error);
  addStrokes(measurement, test,
             {SourceKind::reports, static_cast<double>(greatest.value),
              static_cast<double>(greatest.value), true, file.filename().string()},
             tracesOf(stream));
  return {};
}

/// Its samples; conditions, size, plan and limits are those of the first measurement.
Status addMeasurement(Measurement& measurement, const fs::path& file) {
  auto read = readMeasurement(file);
  if (!read) return tl::unexpected(read.error());
  if (measurement.sources.empty()) {
    measurement = std::move(*read);
    return {};
  }
  for (measure::Trace& trace : read->traces) {
    trace.source += measurement.sources.size();
    measurement.traces.push_back(std::move(trace));
  }
  std::ranges::move(read->sources, std::back_inserter(measurement.sources));
  return {};
}

Status addFile(Measurement& measurement, Test test, const fs::path& file,
               const ShellOptions& options, const Asked& asked) {
  const auto kind = kindOf(file);
  if (!kind) return tl::unexpected(kind.error());
  if (*kind == FileKind::measurement) return addMeasurement(measurement, file);
  if (*kind == FileKind::recording) return addRecording(measurement, test, file, options, asked);
  return addDrawing(measurement, test, file, options);
}

/// What the command line says holds rather than what a file says. False after saying why not.
bool applyOptions(Measurement& measurement, const Asked& asked) {
  if (const auto size = parsePanelSize(asked.panelSize)) measurement.size = *size;
  if (!asked.profile.empty()) measurement.limits = findProfile(asked.profile)->limits;
  if (!asked.limits.empty()) {
    const auto limits = readLimits(absolutePathNamed(asked.limits));
    if (!limits) {
      complain(limits.error().describe());
      return false;
    }
    measurement.limits = *limits;
  }
  if (!asked.serialNumber.empty()) measurement.conditions.serialNumber = asked.serialNumber;
  if (!asked.person.empty()) measurement.conditions.person = asked.person;
  if (asked.targets != 0) measurement.plan.tapTargets = asked.targets;
  if (!asked.lines.empty())
    measurement.plan.lineSet = asked.lines == "ten"    ? LineSet::ten
                               : asked.lines == "full" ? LineSet::full
                                                       : LineSet::eighteen;
  if (!asked.blame.empty())
    for (measure::Trace& trace : measurement.traces)
      if (trace.blame == Blame::undecided)
        trace.blame = asked.blame == "hand" ? Blame::hand : Blame::panel;
  return true;
}

void printLines(const Measurement& measurement, const Analysis& analysis) {
  const auto row = [](std::string_view name, const auto& cellOf) {
    std::string text = fmt::format("{:<{}}", name, columnWidth);
    for (const LineFigure& figure : lineFigureList())
      if (figure.heading != nullptr) text += fmt::format("{:>{}}", cellOf(figure), columnWidth);
    print("{}\n", text);
  };
  row("line", [](const LineFigure& figure) { return std::string(figure.heading); });
  row(measurement.size.source == SizeSource::nominal ? "nominal" : "",
      [](const LineFigure& figure) { return std::string(figure.unit); });
  for (const measure::LineFigures& line : analysis.lines) {
    if (line.samples == 0) continue;
    row(line.guide->name, [&](const LineFigure& figure) {
      const auto value = figure.value(line);
      return value ? fmt::format("{:.{}f}", *value, figure.decimals) : std::string("-");
    });
  }
}

void printSubject(const Measurement& measurement, const Subject& subject) {
  print("{}: {}\n", subject.name, wordOf(subject.outcome()));
  const bool good = subject.outcome() == Outcome::pass;
  const bool isLine = findGuide(subject.name) != nullptr;
  // The figures of a good line are in the table.
  for (const Check& check : subject.checks)
    if (good ? !isLine : check.outcome != Outcome::pass)
      print("  {:<10} {}\n", wordOf(check.outcome), textOf(check, measurement.size));
  for (const std::string& remark : subject.remarks)
    print("  {}\n", remark);
}

void printAdvice(const Measurement& measurement, const Advice& advice) {
  const std::string unit = unitText(measurement.size, "mm");
  print("Calibration: now {:.2f}{} at the worst place.\n", advice.now, unit);
  for (const Reach& reach : advice.reaches)
    print("  {} targets leave {:.2f}{}{}\n", reach.targets, reach.worst, unit,
          reach.targets == advice.take ? ": take these" : "");
  print("  below {:.2f}{} this panel cannot come\n", advice.floor, unit);
}

void printCauses(const Measurement& measurement, const Analysis& analysis, Outcome outcome) {
  if (analysis.causes.empty() && outcome == Outcome::fail) print("Cause: not clear\n");
  for (const Cause& cause : analysis.causes) {
    const CauseRow& row = rowOf(cause.id);
    print("Cause ({:.0f} %): {} {}\n", cause.confidence() * 100, row.words, row.nextStep);
    for (const Sign& sign : cause.signs)
      print("  {}: {:.2f}{}\n", sign.words, sign.value, unitText(measurement.size, sign.unit));
  }
}

void printAsText(const Measurement& measurement, const Analysis& analysis, const Verdict& verdict) {
  print("Panel {}\n", panelText(measurement.size));
  if (!analysis.lines.empty()) printLines(measurement, analysis);
  for (const Subject& subject : verdict.subjects)
    printSubject(measurement, subject);
  if (analysis.advice) printAdvice(measurement, *analysis.advice);
  printCauses(measurement, analysis, verdict.outcome());
  print("{}\n", wordOf(verdict.outcome()));
}

/// The files that were asked for; what is wrong with the first that cannot be written.
Status writeFiles(const Measurement& measurement, const Analysis& analysis, const Verdict& verdict,
                  const Asked& asked) {
  if (!asked.plot.empty())
    if (auto written = writeWholeFile(asked.plot, linesSvg(measurement, analysis, verdict));
        !written)
      return written;
  if (!asked.map.empty() && !analysis.field)
    return tl::unexpected(FileError{asked.map.string(), 0,
                                    "two lines of each direction, or taps, for a map", "fewer"});
  if (!asked.map.empty()) {
    const ErrorMap map = mapOf(*analysis.field);
    const std::string text =
        asked.map.extension() == ".csv" ? mapCsv(map) : mapSvg(map, measurement);
    if (auto written = writeWholeFile(asked.map, text); !written) return written;
  }
  if (asked.save.empty()) return {};
  return writeMeasurement(asked.save, measurement, measure::jsonOf(measurement, analysis, verdict));
}

ExitStatus judgeAndTell(const Measurement& measurement, const Asked& asked,
                        const ShellOptions& options) {
  const Analysis analysis = analyse(measurement);
  const Verdict verdict = measure::judge(measurement, analysis);
  if (options.json)
    printJson(measure::jsonOf(measurement, analysis, verdict));
  else
    printAsText(measurement, analysis, verdict);
  if (const auto written = writeFiles(measurement, analysis, verdict, asked); !written) {
    complain(written.error().describe());
    return ExitStatus::failed;
  }
  return statusOf(verdict.outcome());
}

/// Which tests a name stands for.
struct TestName {
  const char* name;
  Test test;
  bool Plan::*wanted;
  const char* description;
};
constexpr TestName testNames[] = {
    {"lines", Test::lines, &Plan::lines, "Judge lines that were drawn along the guides"},
    {"taps", Test::taps, &Plan::taps, "Judge taps on targets: accuracy and repeatability"},
    {"rest", Test::rest, &Plan::rest, "Judge a resting finger: noise and drift"},
    {"coverage", Test::coverage, &Plan::coverage, "Find dead spots of a panel that was rubbed"},
};

ExitStatus measureFiles(const Asked& asked, const TestName& test, const ShellOptions& options) {
  Measurement measurement;
  measurement.size = nominalSizeOf(options);
  measurement.plan.lineSet = LineSet::ten;
  measurement.conditions.program = programVersion();
  measurement.conditions.date = dateOf(std::chrono::system_clock::now());
  measurement.conditions.screen = screenText(options);
  // Strokes are sorted on a panel of the size and with the lines that were asked for.
  if (!applyOptions(measurement, asked)) return ExitStatus::failed;
  for (const std::string& name : asked.files) {
    const fs::path file = absolutePathNamed(name);
    if (const auto added = addFile(measurement, test.test, file, options, asked); !added) {
      complain(added.error().describe());
      return ExitStatus::failed;
    }
  }
  measurement.plan.lines = false;
  measurement.plan.taps = measurement.plan.rest = measurement.plan.coverage = false;
  measurement.plan.*test.wanted = true;
  if (!applyOptions(measurement, asked)) return ExitStatus::failed;
  return judgeAndTell(measurement, asked, options);
}

ExitStatus judgeFile(const Asked& asked, const ShellOptions& options) {
  auto measurement = readMeasurement(absolutePathNamed(asked.files.front()));
  if (!measurement) {
    complain(measurement.error().describe());
    return ExitStatus::failed;
  }
  if (!applyOptions(*measurement, asked)) return ExitStatus::failed;
  return judgeAndTell(*measurement, asked, options);
}

/// What a file is judged by, and what is written of it.
void addJudging(const CommandLine& line, CLI::App& command, const std::shared_ptr<Asked>& asked) {
  std::vector<std::string> names;
  std::string meanings;
  for (const Profile& profile : profiles()) {
    names.emplace_back(profile.name);
    meanings += fmt::format("{}{}: {}", meanings.empty() ? "" : "; ", profile.name, profile.words);
  }
  command
      .add_option("--panel-size", asked->panelSize,
                  "The panel's active area in mm (default: nominal, 96 pixels an inch). --screen "
                  "tells the size of the screen that was drawn on (default: 1024x768)")
      ->type_name("WxH");
  command.add_option("--limits", asked->limits, "A file of limits")->type_name("FILE");
  command
      .add_option("--profile", asked->profile,
                  "Limits for a use (default: industrial). " + meanings)
      ->check(CLI::IsMember(names))
      ->excludes("--limits");
  command.add_option("--lines", asked->lines, "The lines that must be there")
      ->check(CLI::IsMember({"ten", "eighteen", "full"}));
  command.add_option("--targets", asked->targets, "The targets that must be tapped")
      ->check(CLI::IsMember({9, 25}));
  command
      .add_option("--blame", asked->blame,
                  "Who did it where a stroke went far off: the panel fails, or the stroke does not "
                  "count")
      ->check(CLI::IsMember({"panel", "hand"}));
  const auto addOutput = [&](const std::string& name, fs::path Asked::*member,
                             const std::string& description) {
    command
        .add_option_function<std::string>(
            name,
            [asked, member](const std::string& file) {
              (*asked).*member = absolutePathNamed(file);
            },
            description)
        ->type_name("FILE");
  };
  addOutput("--plot", &Asked::plot, "Draw the deviations of the lines into this SVG file");
  addOutput("--map", &Asked::map, "Draw the map of errors into this SVG file, or its grid as CSV");
  addOutput("--save", &Asked::save, "Save the measurement with all samples (JSON)");
  command.add_option("--serial-number", asked->serialNumber, "The panel's, for the file");
  command.add_option("--operator", asked->person, "Who measures, for the file");
  addJson(line, command);
}

void addTest(const CommandLine& line, CLI::App& group, const TestName& test) {
  addCommand(line, group, test.name, test.description, [line, &test](CLI::App& command) {
    const auto asked = std::make_shared<Asked>();
    command
        .add_option("FILE", asked->files,
                    "Drawings (.fdw), recordings of the serial port, measurements (.json)")
        ->required();
    command.add_option("--reports", asked->reports, "How the controller of a recording reports")
        ->check(CLI::IsMember({"tablet", "e02"}))
        ->capture_default_str();
    addJudging(line, command, asked);
    command.callback([line, asked, &test] {
      check(*asked);
      line.fileCommand = [asked, &test, &options = line.options] {
        return measureFiles(*asked, test, options);
      };
    });
  });
}

void addJudge(const CommandLine& line, CLI::App& group) {
  addCommand(line, group, "judge", "Judge a saved measurement again", [line](CLI::App& command) {
    const auto asked = std::make_shared<Asked>();
    command.add_option("FILE", asked->files, "A measurement (.json)")->required()->expected(1);
    addJudging(line, command, asked);
    command.callback([line, asked] {
      check(*asked);
      line.fileCommand = [asked, &options = line.options] { return judgeFile(*asked, options); };
    });
  });
}

}  // namespace

ExitStatus statusOf(Outcome outcome) {
  return outcome == Outcome::pass   ? ExitStatus::done
         : outcome == Outcome::fail ? ExitStatus::failed
                                    : ExitStatus::incomplete;
}

ExitStatus measureSimulatedLines(Shell& shell) {
  Measurement measurement;
  measurement.size = simulatedSizeOf(shell.options());
  measurement.sources = {SimulatedHand::source()};
  SimulatedHand hand(shell.simulation(), shell.controller(), measurement.size);
  for (const std::string& task : tasksOf(measurement.plan)) {
    const auto traces = hand.carryOut(task, measurement.plan);
    measurement.traces.insert(measurement.traces.end(), traces.begin(), traces.end());
  }
  return judgeAndTell(measurement, {}, shell.options());
}

void addMeasureCommands(const CommandLine& line) {
  addGroup(line, "measure",
           "Prove how good a panel is: status 1 when it fails, 5 when something is missing",
           [line](CLI::App& group) {
             for (const TestName& test : testNames)
               addTest(line, group, test);
             addJudge(line, group);
           });
}

}  // namespace touch
