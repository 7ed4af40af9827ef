#include "linetest/analysis/results_table.h"

#include <charconv>
#include <cmath>

#include "support/text/number_layout.h"

namespace touch {

namespace {

constexpr std::array<std::string_view, ResultsSheet::columns> headings = {
    "Line #", "AVG", "MAX", "MIN", "Qty", "Start", "END"};
constexpr std::size_t judgedColumns = 3;
constexpr Colour withinTolerance = {0, 0, 255};

std::string lineName(std::size_t index) {
  constexpr std::size_t vertical = GuideLines::perOrientation;
  return index < vertical ? "V-" + std::to_string(index + 1)
                          : "H-" + std::to_string(index + 1 - vertical);
}

std::array<std::string, ResultsSheet::columns - 1> values(const std::optional<ResultsRow>& row) {
  if (!row) return {};
  return {row->average,
          row->maximum,
          row->minimum,
          std::to_string(row->quantity),
          shortestText(row->start),
          shortestText(row->end)};
}

// What is judged is what is shown: 1.004 is within a tolerance of 1.
Colour judge(const std::string& shown, Percent tolerance) {
  float value = 0;
  std::from_chars(shown.data(), shown.data() + shown.size(), value);
  return std::abs(value) > tolerance.value ? ResultsSheet::beyondTolerance : withinTolerance;
}

}  // namespace

void ResultsTable::store(std::span<const TwipsPoint> samples, const LineMatch& line,
                         TwipsSize screen) {
  const auto index = static_cast<std::size_t>(line.index);
  if (index >= rows || samples.empty()) return;
  const StrokeStatistics statistics = measureStroke(samples, line, screen);
  rows_[index] = ResultsRow{fixedText(statistics.average(), 2),
                            fixedText(static_cast<double>(statistics.maximum.value), 2),
                            fixedText(static_cast<double>(statistics.minimum.value), 2),
                            statistics.count,
                            samples.front().y,
                            samples.back().y};
}

ResultsSheet ResultsTable::sheet(Percent tolerance) const {
  ResultsSheet sheet;
  for (std::size_t column = 0; column < headings.size(); ++column)
    sheet.cells[0][column].text = headings[column];
  for (std::size_t line = 0; line < ResultsSheet::rows - 1; ++line) {
    auto& cells = sheet.cells[line + 1];
    cells[0].text = lineName(line);
    const auto texts = values(rows_[line]);
    for (std::size_t column = 0; column < texts.size(); ++column) {
      auto& cell = cells[column + 1];
      cell.text = texts[column];
      if (column < judgedColumns) cell.colour = judge(cell.text, tolerance);
    }
  }
  return sheet;
}

}  // namespace touch
