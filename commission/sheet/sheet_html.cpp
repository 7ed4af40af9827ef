#include <array>
#include <cstddef>

#include "commission/sheet/sheet.h"
#include "measure/lines/lines_page.h"
#include "measure/report/map_page.h"
#include "support/text/language.h"
#include "support/text/markup.h"

namespace touch::commission {

namespace {

constexpr const char* style = R"(
body{margin:0;background:#fff;color:#1c232b;font:14px/20px "Noto Sans","DejaVu Sans",sans-serif}
main{max-width:820px;margin:0 auto;padding:40px 24px}
h1{font-size:26px;line-height:32px;margin:0}
h2{font-size:16px;line-height:22px;margin:26px 0 6px;border-bottom:2px solid #1c232b}
p{margin:6px 0}
.soft{color:#5a6572}
.row{display:flex;flex-wrap:wrap;gap:0 24px;align-items:flex-start}
.row>*{flex:1 1 340px}
.verdict{flex:0 0 auto;min-width:150px;padding:12px 20px;border-radius:8px;text-align:center}
.verdict b{display:block;font-size:30px;line-height:38px}
table{border-collapse:collapse;width:100%}
th,td{text-align:left;vertical-align:top;padding:4px 10px 4px 0;border-bottom:1px solid #e3e6ea;font-weight:400}
th{color:#5a6572}
td:first-child{min-width:8em}
.n{text-align:right;white-space:nowrap}
.pass{color:#1e7d3c}.incomplete{color:#8a5a00}.fail{color:#b3261e}
td.pass,td.incomplete,td.fail{font-weight:600;white-space:nowrap}
.verdict.pass{background:#e4f4e8}.verdict.incomplete{background:#fff2d6}.verdict.fail{background:#fbe4e2}
.remarks{background:#fff2d6;border-radius:6px;padding:8px 12px;margin-top:12px;color:#6b4600}
svg{width:100%;height:auto}
.signatures{display:flex;gap:40px;margin-top:64px}
.signatures div{flex:1;border-top:1px solid #1c232b;padding-top:4px}
@media print{main{padding:0;max-width:none}h2,tr,svg,.signatures{break-inside:avoid}h2{break-after:avoid}}
)";

/// In the names of classes.
const char* classOf(measure::Outcome outcome) {
  constexpr std::array names{"pass", "incomplete", "fail"};
  return names[static_cast<std::size_t>(outcome)];
}

std::string tag(const std::string& name, std::string_view text) {
  return '<' + name + '>' + markupText(text) + "</" + name.substr(0, name.find(' ')) + '>';
}

std::string heading(const char* words) {
  return tag("h2", say("commission", words)) + '\n';
}

std::string factTable(const std::vector<Fact>& facts) {
  std::string html = "<table>\n";
  for (const Fact& fact : facts)
    html += "<tr>" + tag("td", fact.caption) + tag("td", fact.text) + "</tr>\n";
  return html + "</table>\n";
}

std::string figureTable(const std::vector<SheetFigure>& figures, bool deciding) {
  std::string html = "<table>\n<tr>" + tag("th", say("commission", "What")) +
                     tag("th class=\"n\"", say("commission", "Found")) +
                     tag("th class=\"n\"", say("commission", "Limit")) + "<th></th>" +
                     tag("th", say("commission", "Where")) + "</tr>\n";
  for (const SheetFigure& figure : figures) {
    if (figure.deciding != deciding) continue;
    const std::string outcome = std::string("td class=\"") + classOf(figure.outcome) + '"';
    html += "<tr>" + tag("td", figure.what) + tag("td class=\"n\"", figure.found) +
            tag("td class=\"n\"", figure.limit) + tag(outcome, measure::wordOf(figure.outcome)) +
            tag("td class=\"soft\"", figure.how) + "</tr>\n";
  }
  return html + "</table>\n";
}

std::string verdictBox(const Sheet& sheet) {
  return std::string("<div class=\"verdict ") +
         classOf(outcomeLook(sheet.outcome, sheet.simulated)) + "\">" +
         tag("b", measure::wordOf(sheet.outcome)) + markupText(outcomeNote(sheet)) + "</div>";
}

std::string remarkBox(const Sheet& sheet) {
  std::string html = "<div class=\"remarks\">";
  for (const Fact& remark : sheet.remarks)
    html += tag("b", remark.caption + ": ") + markupText(remark.text) + ". ";
  return html + "</div>\n";
}

std::string stepTable(const std::vector<SheetStep>& steps) {
  std::string html = "<table>\n";
  for (const SheetStep& step : steps) {
    html += "<tr>" + tag("td", step.caption) + tag("td", step.state) + "<td class=\"soft\">";
    for (const std::string& text : step.found)
      html += markupText(text) + "<br>";
    html += "</td></tr>\n";
  }
  return html + "</table>\n";
}

}  // namespace

std::string sheetHtml(const Sheet& sheet, const measure::Report* report) {
  const std::string title = say("commission", "Touch panel commissioning");
  std::string html = "<!DOCTYPE html>\n<html lang=\"" + say("commission", "en") +
                     "\">\n<head>\n<meta charset=\"utf-8\">\n" +
                     tag("title", title + ", " + sheet.subtitle) + "\n<style>" + style +
                     "</style>\n</head>\n<body>\n<main>\n";
  html += "<div class=\"row\"><div>" + tag("h1", title) + tag("p class=\"soft\"", sheet.subtitle) +
          "</div>" + verdictBox(sheet) + "</div>\n";
  if (!sheet.reason.empty())
    html += tag(std::string("p class=\"") + classOf(sheet.outcome) + '"', sheet.reason) + '\n';
  html += "<div class=\"row\"><div>" + heading(marked("commission", "Panel and controller")) +
          factTable(sheet.panel) + "</div><div>" + heading(marked("commission", "Run")) +
          factTable(sheet.conduct) + "</div></div>\n";
  if (!sheet.figures.empty())
    html +=
        heading(marked("commission", "Figures against limits")) + figureTable(sheet.figures, true);
  html += remarkBox(sheet);
  if (!sheet.calibration.empty())
    html += heading(marked("commission", "Calibration and cause")) + factTable(sheet.calibration);
  html += "<div class=\"signatures\">" + tag("div", say("commission", "Installed by")) +
          tag("div", say("commission", "Accepted by")) + "</div>\n";
  if (report != nullptr && report->map)
    html += heading(marked("commission", "Error map")) +
            measure::mapSvg(*report->map, report->measurement);
  if (report != nullptr && !report->analysis.lines.empty())
    html += heading(marked("commission", "Lines")) +
            measure::linesSvg(report->measurement, report->analysis, report->verdict);
  html += heading(marked("commission", "Steps")) + stepTable(sheet.steps);
  if (!sheet.figures.empty())
    html += heading(marked("commission", "Other figures")) + figureTable(sheet.figures, false);
  return html + "</main>\n</body>\n</html>\n";
}

}  // namespace touch::commission
