#include "measure/lines/lines_csv.h"

#include "measure/figures/line_figures.h"
#include "measure/report/conditions.h"
#include "support/text/number_layout.h"

namespace touch::measure {

namespace {

constexpr int csvDecimals = 3;

/// In every language the same.
std::string headingOf(const LineFigure& figure, const PanelSize& size) {
  std::string heading(figure.name);
  if (figure.unit[0] != '\0') heading.append(" ").append(figure.unit);
  const bool isGuess =
      size.source == SizeSource::nominal && std::string_view(figure.unit).starts_with("mm");
  return isGuess ? heading + " nominal" : heading;
}

void appendField(std::string& text, std::string_view field) {
  if (!text.empty() && !text.ends_with(recordEnd)) text += ',';
  if (field.find_first_of(",\"\r\n") == field.npos) {
    text += field;
    return;
  }
  text += '"';
  for (const char character : field)
    text.append(character == '"' ? 2 : 1, character);
  text += '"';
}

}  // namespace

std::string linesCsv(const Measurement& measurement, const Analysis& analysis,
                     const Verdict& verdict) {
  const auto conditions = conditionsOf(measurement);
  std::string text;
  appendField(text, "line");
  appendField(text, "verdict");
  for (const LineFigure& figure : lineFigureList())
    appendField(text, headingOf(figure, measurement.size));
  for (const Condition& condition : conditions)
    appendField(text, condition.name);
  text += recordEnd;
  for (const LineFigures& line : analysis.lines) {
    appendField(text, line.guide->name);
    const Subject* const subject = verdict.find(line.guide->name);
    appendField(text, subject != nullptr ? wordOf(subject->outcome()) : "");
    for (const LineFigure& figure : lineFigureList()) {
      const auto value = figure.value(line);
      appendField(text, value ? fixedText(*value, csvDecimals) : std::string());
    }
    for (const Condition& condition : conditions)
      appendField(text, condition.text);
    text += recordEnd;
  }
  return text;
}

}  // namespace touch::measure
