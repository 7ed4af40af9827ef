#include "measure/report/words.h"

#include <fmt/core.h>

#include "measure/report/conditions.h"
#include "support/text/language.h"

namespace touch::measure {

namespace {

struct SubjectRow {
  std::string_view name;
  const char* words;
};
constexpr SubjectRow subjectRows[] = {
    {"panel", marked("measure", "Panel as a whole")},
    {"rest", marked("measure", "Resting finger")},
    {"taps", marked("measure", "Taps")},
    {"coverage", marked("measure", "Coverage")},
};

}  // namespace

std::string valueText(double value, std::string_view unit, const PanelSize& size) {
  if (unit.empty()) return fmt::format("{:.0f}", value);
  return fmt::format("{:.2f}{}", value, unitText(size, unit));
}

std::string lengthText(double mm, const PanelSize& size) {
  return valueText(mm, "mm", size);
}

std::string panelText(const PanelSize& size) {
  const std::string source =
      size.source == SizeSource::screenData ? say("measure", "from the screen")
      : size.source == SizeSource::user     ? say("measure", "as entered")
                                            : say("measure", "nominal: 96 pixels an inch");
  return fmt::format("{:.1f} × {:.1f} mm, {}", size.width.value, size.height.value, source);
}

std::string lineName(const Guide& guide) {
  if (!guide.back) return std::string(guide.name);
  return filled(say("measure", "%1, way back"), {guide.name.substr(0, guide.name.find(' '))});
}

std::string subjectName(std::string_view name) {
  for (const auto& [subject, words] : subjectRows)
    if (subject == name) return say("measure", words);
  if (const Guide* const guide = findGuide(name))
    return filled(say("measure", "Line %1"), {lineName(*guide)});
  constexpr std::string_view rest = "rest ";
  if (name.starts_with(rest))
    return filled(say("measure", "Resting finger, place %1"), {name.substr(rest.size())});
  return std::string(name);
}

std::vector<std::string> adviceTexts(const Advice& advice, const PanelSize& size) {
  std::vector<std::string> texts{
      filled(say("measure", "Touches now miss by up to %1."), {lengthText(advice.now, size)})};
  double best = advice.now;
  for (const Reach& reach : advice.reaches) {
    if (reach.targets == advice.take) best = reach.worst;
    texts.push_back(filled(say("measure", "A calibration with %1 targets would leave up to %2."),
                           {std::to_string(reach.targets), lengthText(reach.worst, size)}));
  }
  constexpr double noticeable = 0.1;  // mm
  texts.push_back(
      advice.now - best > noticeable
          ? filled(say("measure", "Calibrate with %1 targets."), {std::to_string(advice.take)})
          : say("measure", "Another calibration would gain nothing."));
  texts.push_back(filled(say("measure", "No calibration can bring this panel below %1."),
                         {lengthText(advice.floor, size)}));
  return texts;
}

std::vector<CauseText> causeTexts(const Analysis& analysis, Outcome outcome,
                                  const PanelSize& size) {
  std::vector<CauseText> texts;
  for (const Cause& cause : analysis.causes) {
    const CauseRow& row = rowOf(cause.id);
    CauseText& text = texts.emplace_back();
    text.heading =
        filled(say("measure", "%1 (%2 % sure)"),
               {say("measure", row.words), fmt::format("{:.0f}", cause.confidence() * 100)});
    for (const Sign& sign : cause.signs)
      text.signs.push_back(
          filled("%1: %2", {say("measure", sign.words), valueText(sign.value, sign.unit, size)}));
    text.nextStep = say("measure", row.nextStep);
  }
  if (texts.empty() && outcome == Outcome::fail)
    texts.push_back({say("measure", "The cause is not clear."),
                     {},
                     say("measure", "Measure again, slowly. If it fails again, see the figures.")});
  return texts;
}

}  // namespace touch::measure
