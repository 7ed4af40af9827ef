#include <fmt/core.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/output.h"
#include "commission/bundle/bundle.h"
#include "commission/bundle/fleet.h"
#include "measure/judging/causes.h"
#include "support/text/markup.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;
using namespace commission;
using nlohmann::ordered_json;

ExitStatus failedFor(const FileError& error) {
  complain(error.describe());
  return ExitStatus::failed;
}

ExitStatus pack(const std::string& named) {
  const auto folder = RunFolder::open(absolutePathNamed(named));
  if (!folder) return failedFor(folder.error());
  const auto run = folder->run();
  if (!run) return failedFor(run.error());
  const auto written = writeBundle(*folder, *run);
  if (!written) return failedFor(written.error());
  print("{}\n", printable(utf8Of(*written)));
  return ExitStatus::done;
}

ExitStatus verify(const std::string& named, bool asJson) {
  const auto bundle = Bundle::open(absolutePathNamed(named));
  if (!bundle) return failedFor(bundle.error());
  const auto check = verifyBundle(*bundle, programVersion());
  if (!check) return failedFor(check.error());
  const bool isSame = check->problems.empty();
  const char* const outcome = measure::wordOf(check->judged.outcome);
  if (asJson) {
    printJson({{"unchanged", isSame},
               {"outcome", outcome},
               {"problems", check->problems},
               {"notes", check->notes}});
  } else {
    for (const std::string& problem : check->problems)
      print("{}\n", printable(problem));
    for (const std::string& note : check->notes)
      print("note: {}\n", printable(note));
    print("{}: panel {}, judged anew: {}\n", isSame ? "unchanged" : "CHANGED",
          printable(check->run.panel.serialNumber), outcome);
  }
  return isSame ? ExitStatus::done : ExitStatus::failed;
}

/// "0.42 of 0.60 mm"
std::string textOf(const FleetFigure& figure) {
  return fmt::format("{:.2f} of {}{:.2f}{}{}", figure.value, figure.atLeast ? "at least " : "",
                     figure.limit, figure.unit.empty() ? "" : " ", figure.unit);
}

/// "worst miss" of the name "worstMiss".
std::string spoken(std::string_view name) {
  std::string words;
  for (const char letter : name) {
    const bool isCapital = letter >= 'A' && letter <= 'Z';
    if (isCapital) words += ' ';
    words += isCapital ? static_cast<char>(letter - 'A' + 'a') : letter;
  }
  return words;
}

/// Figures in the order of how much of their limit they use.
std::vector<std::pair<std::string, FleetFigure>> worstFirst(const Visit& visit) {
  std::vector<std::pair<std::string, FleetFigure>> figures(visit.worst.begin(), visit.worst.end());
  std::ranges::stable_sort(figures, std::greater{},
                           [](const auto& figure) { return figure.second.used(); });
  return figures;
}

std::string worstText(const Visit& visit) {
  constexpr std::size_t shown = 2;
  std::string text;
  std::size_t told = 0;
  for (const auto& [name, figure] : worstFirst(visit)) {
    // What there has to be, and is, is nobody's worst.
    if (figure.atLeast && figure.used() <= 1) continue;
    text += fmt::format("{}{} {}", told == 0 ? "" : ", ", spoken(name), textOf(figure));
    if (++told == shown) break;
  }
  return text;
}

std::string driftText(const FleetPanel& panel) {
  std::string text;
  for (const Drift& drift : panel.drifts)
    text += fmt::format("{}{} {:.2f} to {:.2f} {}", text.empty() ? "" : ", ", spoken(drift.figure),
                        drift.first.value, drift.last.value, drift.last.unit);
  return text;
}

std::string causesText(const Visit& visit) {
  std::string text;
  for (const std::string& cause : visit.causes)
    text += (text.empty() ? "" : ", ") + cause;
  return text;
}

struct Column {
  const char* caption;
  std::string (*text)(const FleetPanel& panel);
};
constexpr Column columns[] = {
    {"Serial number", [](const FleetPanel& panel) { return panel.last.serialNumber; }},
    {"Outcome",
     [](const FleetPanel& panel) -> std::string { return measure::wordOf(panel.last.outcome); }},
    {"Visits", [](const FleetPanel& panel) { return std::to_string(panel.visits); }},
    {"Last visit", [](const FleetPanel& panel) { return panel.last.began; }},
    {"Place", [](const FleetPanel& panel) { return panel.last.place; }},
    {"Order", [](const FleetPanel& panel) { return panel.last.order; }},
    {"Operator", [](const FleetPanel& panel) { return panel.last.person; }},
    {"Controller", [](const FleetPanel& panel) { return panel.last.controller; }},
    {"Firmware", [](const FleetPanel& panel) { return panel.last.firmware; }},
    {"Worst figures", [](const FleetPanel& panel) { return worstText(panel.last); }},
    {"Likely causes", [](const FleetPanel& panel) { return causesText(panel.last); }},
    {"Worse since the first visit", driftText},
};

/// A field of CSV, in one line. One that a spreadsheet would take for a formula begins with an
/// apostrophe.
std::string csvField(const std::string& content) {
  std::string text = printable(content);
  if (!text.empty() && std::string_view("=+-@").find(text.front()) != std::string_view::npos)
    text.insert(0, "'");
  if (text.find_first_of("\",") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text)
    quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + '"';
}

std::string asCsv(const std::vector<FleetPanel>& panels) {
  std::string text;
  const auto addLine = [&text](const auto& field) {
    for (const Column& column : columns)
      text += (&column == columns ? "" : ",") + csvField(field(column));
    text += '\n';
  };
  addLine([](const Column& column) { return std::string(column.caption); });
  for (const FleetPanel& panel : panels)
    addLine([&panel](const Column& column) { return column.text(panel); });
  return text;
}

std::string asHtml(const std::vector<FleetPanel>& panels) {
  constexpr const char* head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Touch panels</title>
<style>
body{margin:24px;background:#fff;color:#1c232b;font:14px/20px "Noto Sans","DejaVu Sans",sans-serif}
table{border-collapse:collapse}
th,td{text-align:left;vertical-align:top;padding:4px 12px 4px 0;border-bottom:1px solid #e3e6ea}
th{color:#5a6572;font-weight:400}
.PASS{color:#1e7d3c}.INCOMPLETE{color:#8a5a00}.FAIL{color:#b3261e}
</style>
</head>
<body>
<h1>Touch panels</h1>
<table>
<tr>)";
  std::string html = head;
  for (const Column& column : columns)
    html += fmt::format("<th>{}</th>", column.caption);
  html += "</tr>\n";
  for (const FleetPanel& panel : panels) {
    html += "<tr>";
    for (const Column& column : columns) {
      const std::string text = markupText(column.text(panel));
      html += std::string_view(column.caption) == "Outcome"
                  ? fmt::format("<td class=\"{}\"><b>{}</b></td>", text, text)
                  : fmt::format("<td>{}</td>", text);
    }
    html += "</tr>\n";
  }
  return html + "</table>\n</body>\n</html>\n";
}

ordered_json jsonOf(const FleetFigure& figure) {
  return {{"value", figure.value},
          {figure.atLeast ? "atLeast" : "atMost", figure.limit},
          {"unit", figure.unit}};
}

ordered_json asJson(const std::vector<FleetPanel>& panels) {
  ordered_json rows = ordered_json::array();
  for (const FleetPanel& panel : panels) {
    const Visit& last = panel.last;
    ordered_json figures = ordered_json::object();
    for (const auto& [name, figure] : worstFirst(last))
      figures[name] = jsonOf(figure);
    ordered_json drifts = ordered_json::array();
    for (const Drift& drift : panel.drifts)
      drifts.push_back({{"figure", drift.figure},
                        {"first", drift.first.value},
                        {"last", drift.last.value},
                        {"unit", drift.last.unit}});
    rows.push_back({{"serialNumber", last.serialNumber},
                    {"outcome", measure::wordOf(last.outcome)},
                    {"visits", panel.visits},
                    {"lastVisit", last.began},
                    {"place", last.place},
                    {"order", last.order},
                    {"operator", last.person},
                    {"controller", last.controller},
                    {"firmware", last.firmware},
                    {"file", utf8Of(last.file)},
                    {"worst", figures},
                    {"causes", last.causes},
                    {"drifts", drifts}});
  }
  return rows;
}

std::string asText(const std::vector<FleetPanel>& panels) {
  std::string text;
  for (const FleetPanel& panel : panels) {
    const Visit& last = panel.last;
    text += fmt::format("{:10}  {}  {}{}\n", measure::wordOf(last.outcome),
                        printable(last.serialNumber), printable(last.began),
                        panel.visits > 1 ? fmt::format(", {} visits", panel.visits) : "");
    const auto addLine = [&text](const char* caption, const std::string& line) {
      if (!line.empty()) text += fmt::format("            {}: {}\n", caption, printable(line));
    };
    addLine("place", last.place);
    addLine("worst", worstText(last));
    addLine("likely", causesText(last));
    addLine("worse since the first visit", driftText(panel));
  }
  return text;
}

enum class Form : std::uint8_t { text, csv, html };

/// The bundles of that name: one, or those in a folder.
Result<std::vector<fs::path>> bundlesOf(const std::string& named) {
  const fs::path path = absolutePathNamed(named);
  std::error_code unknown;
  if (!fs::is_directory(path, unknown)) return std::vector{path};
  auto bundles = bundlesIn(path);
  if (bundles && bundles->empty())
    return tl::unexpected(FileError{
        utf8Of(path), 0, fmt::format("bundles, *{}, in this folder", bundleEnding), "none"});
  return bundles;
}

ExitStatus summarise(const std::vector<std::string>& named, Form form, bool json) {
  std::vector<Visit> visits;
  auto status = ExitStatus::done;
  for (const std::string& name : named) {
    const auto bundles = bundlesOf(name);
    if (!bundles) {
      status = failedFor(bundles.error());
      continue;
    }
    for (const fs::path& bundle : *bundles) {
      auto visit = readVisit(bundle);
      if (visit)
        visits.push_back(std::move(*visit));
      else
        status = failedFor(visit.error());
    }
  }
  const auto panels = panelsOf(std::move(visits));
  if (json)
    printJson(asJson(panels));
  else if (form == Form::csv)
    print("{}", asCsv(panels));
  else if (form == Form::html)
    print("{}", asHtml(panels));
  else
    print("{}", asText(panels));
  return status;
}

void addPack(const CommandLine& line, CLI::App& group) {
  addCommand(
      line, group, "pack", "Pack a run's folder into its bundle anew", [line](CLI::App& command) {
        const auto folder = std::make_shared<std::string>();
        command.add_option("FOLDER", *folder, "The run's folder")->required();
        command.callback([line, folder] { line.fileCommand = [folder] { return pack(*folder); }; });
      });
}

void addVerify(const CommandLine& line, CLI::App& group) {
  addCommand(line, group, "verify",
             "Say whether a bundle is as it was made: hashes, samples judged anew",
             [line](CLI::App& command) {
               const auto file = std::make_shared<std::string>();
               command.add_option("FILE", *file, "A bundle, SERIAL-DATE.tub.zip")->required();
               addJson(line, command);
               command.footer("Exit status: 0 nothing was changed, 1 something was.");
               command.callback([line, file] {
                 line.fileCommand = [file, &options = line.options] {
                   return verify(*file, options.json);
                 };
               });
             });
}

void addSummary(const CommandLine& line, CLI::App& group) {
  addCommand(
      line, group, "summary", "Many bundles side by side: one row a panel",
      [line](CLI::App& command) {
        const auto files = std::make_shared<std::vector<std::string>>();
        const auto csv = std::make_shared<bool>();
        const auto html = std::make_shared<bool>();
        command.add_option("FILE", *files, "Bundles, or folders with bundles in them and below")
            ->required();
        addJson(line, command);
        auto* const asCsv = command.add_flag("--csv", *csv, "Print a table for spreadsheets");
        asCsv->excludes("--json");
        command.add_flag("--html", *html, "Print a page for browsers")
            ->excludes(asCsv)
            ->excludes("--json");
        command.footer(
            "Sheets are taken as they are; \"sheet verify\" judges anew. Exit status: 1 when "
            "one of the bundles cannot be read.");
        command.callback([line, files, csv, html] {
          const Form form = *csv ? Form::csv : *html ? Form::html : Form::text;
          line.fileCommand = [files, form, &options = line.options] {
            return summarise(*files, form, options.json);
          };
        });
      });
}

}  // namespace

void addSheetCommands(const CommandLine& line) {
  addGroup(line, "sheet", "Check and compare what commissionings have handed over",
           [line](CLI::App& group) {
             addPack(line, group);
             addVerify(line, group);
             addSummary(line, group);
           });
}

}  // namespace touch
