#include "measure/report/report_pages.h"

#include <fmt/core.h>

#include "measure/lines/lines_page.h"
#include "measure/report/conditions.h"
#include "measure/report/words.h"
#include "support/text/language.h"

namespace touch::measure {

namespace {

constexpr float pageMargin = 1000;  // twips
constexpr float letterHeight = 240;
constexpr float rowHeight = 340;
constexpr std::size_t rowsPerPage = 26;
constexpr std::size_t lettersPerRow = 115;
// Where the columns of numbers end, and that of verdicts begins.
constexpr float measuredEnd = 9400;
constexpr float limitEnd = 12000;
constexpr float shareEnd = 13500;
constexpr float outcomeStart = 13900;

constexpr Colour inkColour{32, 32, 32};

Colour colourOf(Outcome outcome) {
  constexpr Colour colours[] = {{0, 100, 0}, {150, 80, 0}, {200, 0, 0}};
  return colours[static_cast<std::size_t>(outcome)];
}

using Rows = std::vector<ReportPages::Row>;

/// A long text takes more rows.
void addText(Rows& rows, std::string_view text) {
  while (text.size() > lettersPerRow) {
    const std::size_t blank = text.rfind(' ', lettersPerRow);
    std::size_t end = blank == std::string_view::npos || blank == 0 ? lettersPerRow : blank;
    // Never within a letter of several bytes.
    while (end > 1 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
      --end;
    rows.push_back({std::string(text.substr(0, end))});
    text.remove_prefix(text[end] == ' ' ? end + 1 : end);
  }
  rows.push_back({std::string(text)});
}

void addHeading(Rows& rows, const std::string& text, Outcome outcome = Outcome::pass) {
  rows.push_back({.text = text, .is = outcome, .isHeading = true});
}

void addConditions(Rows& rows, const Measurement& measurement) {
  for (const Condition& condition : conditionsOf(measurement))
    addText(rows, filled("%1: %2", {condition.caption, condition.text}));
}

Rows summaryOf(const Report& report) {
  const Outcome outcome = report.verdict.outcome();
  const PanelSize& size = report.measurement.size;
  Rows rows;
  addHeading(rows, filled(say("measure", "Verdict: %1"), {wordOf(outcome)}), outcome);
  for (const CauseText& cause : causeTexts(report.analysis, outcome, size)) {
    addText(rows, cause.heading);
    for (const std::string& sign : cause.signs)
      addText(rows, "    " + sign);
    addText(rows, "    " + cause.nextStep);
  }
  if (report.analysis.advice) {
    addHeading(rows, say("measure", "Calibration"));
    for (const std::string& sentence : adviceTexts(*report.analysis.advice, size))
      addText(rows, sentence);
  }
  addHeading(rows, say("measure", "Measured on"));
  addConditions(rows, report.measurement);
  return rows;
}

Rows figuresOf(const Report& report) {
  const PanelSize& size = report.measurement.size;
  Rows rows;
  for (const Subject& subject : report.verdict.subjects) {
    rows.push_back({.text = subjectName(subject.name),
                    .outcome = wordOf(subject.outcome()),
                    .is = subject.outcome(),
                    .isHeading = true});
    for (const Check& check : subject.checks)
      rows.push_back(
          {.text = say("measure", check.words),
           .measured = valueText(check.value, check.unit, size),
           .limit = (check.atLeast ? "≥ " : "≤ ") + valueText(check.limit, check.unit, size),
           .share = check.share ? fmt::format("{:.2f} %", check.share->value) : std::string(),
           .outcome = wordOf(check.outcome),
           .is = check.outcome});
    for (const std::string& remark : subject.remarks)
      addText(rows, remark);
  }
  return rows;
}

void drawRow(ChartSurface& surface, float y, const ReportPages::Row& row) {
  const float height = row.isHeading ? letterHeight * 1.15F : letterHeight;
  const Colour colour = row.isHeading || row.is != Outcome::pass ? colourOf(row.is) : inkColour;
  const float indent = row.isHeading ? 0 : letterHeight;
  const bool isVerdict = row.isHeading && row.is == Outcome::pass && row.outcome.empty();
  surface.text({pageMargin + indent, y}, row.text, isVerdict ? inkColour : colour, height,
               TextAnchor::start);
  surface.text({measuredEnd, y}, row.measured, colour, height, TextAnchor::end);
  surface.text({limitEnd, y}, row.limit, inkColour, height, TextAnchor::end);
  surface.text({shareEnd, y}, row.share, inkColour, height, TextAnchor::end);
  surface.text({outcomeStart, y}, row.outcome, colour, height, TextAnchor::start);
}

}  // namespace

Report reportOf(Measurement measurement) {
  Report report{std::move(measurement), {}, {}, {}};
  report.analysis = analyse(report.measurement);
  if (report.analysis.field) report.map = mapOf(*report.analysis.field);
  report.verdict = judge(report.measurement, report.analysis);
  return report;
}

ReportPages::ReportPages(const Report& report) : report_(report) {
  const auto add = [this](Rows rows) {
    for (std::size_t first = 0; first < rows.size(); first += rowsPerPage) {
      const std::size_t last = std::min(first + rowsPerPage, rows.size());
      pages_.emplace_back(rows.begin() + static_cast<std::ptrdiff_t>(first),
                          rows.begin() + static_cast<std::ptrdiff_t>(last));
    }
  };
  add(summaryOf(report));
  if (!report.analysis.lines.empty()) {
    linesAt_ = pages_.size();
    pages_.emplace_back();
  }
  if (report.map) pages_.emplace_back();
  add(figuresOf(report));
}

void ReportPages::draw(ChartSurface& surface, std::size_t page) const {
  const Measurement& measurement = report_.measurement;
  if (page == linesAt_)
    return drawLinesPage(surface, measurement, report_.analysis, report_.verdict);
  if (pages_[page].empty()) {
    drawMap(surface, *report_.map, measurement);
  } else {
    surface.clear();
    surface.area({0, 0}, mapPage, white);
    float y = pageMargin + rowHeight;
    for (const Row& row : pages_[page]) {
      drawRow(surface, y, row);
      y += rowHeight;
    }
  }
  const std::string& serial = measurement.conditions.serialNumber;
  const float below = mapPage.height - pageMargin / 2;
  surface.text({pageMargin, below},
               measurement.size.source == SizeSource::nominal
                   ? say("measure", "All lengths are nominal: 96 pixels are taken as an inch.")
                   : panelText(measurement.size),
               inkColour, letterHeight, TextAnchor::start);
  surface.text({mapPage.width - pageMargin, below},
               filled(say("measure", "%1 %2   page %3 of %4"),
                      {serial, wordOf(report_.verdict.outcome()), std::to_string(page + 1),
                       std::to_string(count())}),
               inkColour, letterHeight, TextAnchor::end);
}

}  // namespace touch::measure
