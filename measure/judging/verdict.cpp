#include "measure/judging/verdict.h"

#include <fmt/core.h>

#include <algorithm>

#include "measure/figures/line_figures.h"
#include "measure/report/conditions.h"
#include "support/text/language.h"

namespace touch::measure {

namespace {

// A figure that is computed in another order differs in its last digits.
constexpr double rounding = 1e-9;

/// A length that must not exceed its limit.
Check mostOf(const Limits& limits, Length length, double value, Millimetres side) {
  const auto [name, words] = nameOf(length);
  Check check{.name = name, .words = words, .value = value, .limit = limits[length].on(side).value};
  if (value > check.limit + rounding) check.outcome = Outcome::fail;
  check.share = inPercent({value}, side);
  return check;
}

/// Evidence of which there must be enough; without it nothing can be said.
Check leastOf(std::string_view name, const char* words, double value, double limit,
              const char* unit) {
  Check check{
      .name = name, .words = words, .value = value, .limit = limit, .unit = unit, .atLeast = true};
  if (value < limit - rounding) check.outcome = Outcome::incomplete;
  return check;
}

Check mostCount(std::string_view name, const char* words, std::size_t value, int limit) {
  Check check{.name = name,
              .words = words,
              .value = static_cast<double>(value),
              .limit = static_cast<double>(limit),
              .unit = ""};
  if (check.value > check.limit) check.outcome = Outcome::fail;
  return check;
}

struct LineRow {
  Length length;
  double (*value)(const LineFigures&);
};
constexpr LineRow lineRows[] = {
    {Length::straightness, [](const LineFigures& line) { return line.straightness.maximum; }},
    {Length::straightnessRms, [](const LineFigures& line) { return line.straightness.rms; }},
    {Length::offset, [](const LineFigures& line) { return std::abs(line.offset); }},
    {Length::tilt, [](const LineFigures& line) { return std::abs(line.tilt); }},
    {Length::centre, [](const LineFigures& line) { return line.centre; }},
    {Length::edge, [](const LineFigures& line) { return line.edge; }},
    {Length::scatter, [](const LineFigures& line) { return line.scatter; }},
};

void remarkOnGaps(const LineFigures& line, double limit, Subject& subject) {
  for (const Gap& gap : line.gaps) {
    if (gap.width() <= limit) continue;
    const auto number = [](double value) { return fmt::format("{:.1f}", value); };
    subject.remarks.push_back(
        filled(gap.reportsKeptComing
                   ? say("measure",
                         "From %1 to %2 mm there is no sample, though reports kept coming: the "
                         "hand was too fast, or touches jump there.")
                   : say("measure",
                         "From %1 to %2 mm there is no sample: the finger was up, or the panel "
                         "is dead there."),
               {number(gap.from), number(gap.to)}));
  }
}

Subject judgeWhole(const Measurement& measurement, const Analysis& analysis) {
  Subject subject{"panel", {}, {}};
  const auto drawn = std::ranges::count_if(
      analysis.lines, [](const LineFigures& line) { return line.samples > 0; });
  subject.checks.push_back(leastOf("lines", marked("measure", "lines"), static_cast<double>(drawn),
                                   static_cast<double>(analysis.lines.size()), ""));
  if (analysis.field) {
    const PointMm scale = analysis.field->scale();
    const auto add = [&](std::string_view name, const char* words, double value, Millimetres side) {
      Check check = mostOf(measurement.limits, Length::scale, std::abs(value), side);
      check.name = name;
      check.words = words;
      subject.checks.push_back(check);
    };
    add("scaleX", marked("measure", "scale in x, at the edge"), scale.x(), measurement.size.width);
    add("scaleY", marked("measure", "scale in y, at the edge"), scale.y(), measurement.size.height);
  }
  const auto lineNamed = [&](std::string_view name) {
    return std::ranges::find_if(analysis.lines,
                                [&](const LineFigures& line) { return line.guide->name == name; });
  };
  std::optional<double> widest;
  for (const LineFigures& back : analysis.lines) {
    if (!back.guide->back) continue;
    const auto there = lineNamed(back.guide->name.substr(0, back.guide->name.find(' ')));
    if (const auto apart = hysteresis(*there, back)) widest = std::max(widest.value_or(0), *apart);
  }
  if (widest)
    subject.checks.push_back(mostOf(measurement.limits, Length::hysteresis, *widest,
                                    std::min(measurement.size.width, measurement.size.height)));
  const auto strip = std::ranges::find(analysis.causes, CauseId::deadStrip, &Cause::id);
  if (strip != analysis.causes.end()) {
    // Neighbouring lines have their gaps at the same place: drawing them again would change
    // nothing.
    Check check{.name = "deadStrip",
                .words = marked("measure", "dead strip, width"),
                .value = strip->signs[1].value,
                .outcome = Outcome::fail};
    subject.checks.push_back(check);
  }
  return subject;
}

Subject judgeRest(const Measurement& measurement, const RestFigures& rest) {
  const Limits& limits = measurement.limits;
  const Millimetres side = std::min(measurement.size.width, measurement.size.height);
  return {rest.task,
          {leastOf("samples", marked("measure", "samples"), static_cast<double>(rest.samples),
                   limits.samples, ""),
           // The last report of a rest comes an interval before its end.
           leastOf("seconds", marked("measure", "seconds"), rest.duration.count() * 1.02,
                   limits.rest.count(), "s"),
           mostOf(limits, Length::restPeak, rest.peakToPeak, side),
           mostOf(limits, Length::drift, rest.drift, side)},
          {}};
}

Subject judgeTaps(const Measurement& measurement, const TapFigures& taps) {
  const Limits& limits = measurement.limits;
  const Millimetres side = std::min(measurement.size.width, measurement.size.height);
  const auto wanted =
      static_cast<double>(taps.targets.size() * static_cast<std::size_t>(tapsPerTarget));
  return {
      "taps",
      {leastOf("taps", marked("measure", "taps"), wanted - static_cast<double>(taps.wanting),
               wanted, ""),
       mostOf(limits, Length::tapMean, taps.meanMiss, side),
       mostOf(limits, Length::tapWorst, taps.worstMiss, side),
       mostOf(limits, Length::tapSpread, taps.spread, side),
       mostCount("missedTaps", marked("measure", "missed taps"), taps.missed, limits.missedTaps),
       mostCount("doubleTaps", marked("measure", "double taps"), taps.doubled, limits.doubleTaps)},
      {filled(say("measure", "On average %1 mm to the right and %2 mm down."),
              {fmt::format("{:.2f}", taps.meanVector.x()),
               fmt::format("{:.2f}", taps.meanVector.y())})}};
}

Subject judgeCoverage(const Measurement& measurement, const CoverageFigures& coverage) {
  Subject subject{"coverage", {}, {}};
  Check part = leastOf("rubbed", marked("measure", "cells touched"), coverage.part * 100,
                       measurement.limits.rubbed.value, "%");
  const bool isDead = std::ranges::any_of(coverage.deadSpots, &DeadSpot::isProven);
  if (part.outcome != Outcome::pass && isDead) part.outcome = Outcome::fail;
  subject.checks.push_back(part);
  if (coverage.part > 0) {
    Check reach = mostOf(measurement.limits, Length::edgeReach, std::ranges::max(coverage.reach),
                         std::min(measurement.size.width, measurement.size.height));
    // The finger may not have been there.
    if (reach.outcome == Outcome::fail) reach.outcome = Outcome::incomplete;
    subject.checks.push_back(reach);
  }
  for (const DeadSpot& spot : coverage.deadSpots) {
    const auto number = [](double value) { return fmt::format("{:.0f}", value); };
    subject.remarks.push_back(filled(
        spot.isProven() ? say("measure",
                              "Dead: %1 × %2 mm, %3 mm from the left and %4 mm from the top; "
                              "the finger went over it %5 times.")
                        : say("measure",
                              "Not touched: %1 × %2 mm, %3 mm from the left and %4 mm from "
                              "the top. Rub there again."),
        {number(spot.size.x()), number(spot.size.y()), number(spot.corner.x()),
         number(spot.corner.y()), std::to_string(spot.crossings)}));
  }
  return subject;
}

Json jsonOf(const Check& check) {
  Json json{{"name", check.name},
            {"value", check.value},
            {check.atLeast ? "atLeast" : "atMost", check.limit},
            {"unit", check.unit},
            {"outcome", wordOf(check.outcome)}};
  if (check.share) json["percentOfSide"] = check.share->value;
  return json;
}

Json jsonOf(const LineFigures& line) {
  Json json{{"line", line.guide->name}, {"sideMm", line.side.value}};
  for (const LineFigure& figure : lineFigureList()) {
    const auto value = figure.value(line);
    json[std::string(figure.name)] = value ? Json(*value) : Json(nullptr);
  }
  return json;
}

}  // namespace

const char* wordOf(Outcome outcome) {
  constexpr const char* words[] = {"PASS", "INCOMPLETE", "FAIL"};
  return words[static_cast<std::size_t>(outcome)];
}

Analysis analyse(const Measurement& measurement) {
  Analysis analysis;
  const Plan& plan = measurement.plan;
  if (plan.lines)
    for (const Guide* guide : guidesOf(plan.lineSet))
      analysis.lines.push_back(measureLine(measurement, *guide));
  if (plan.rest) analysis.rests = measureRest(measurement);
  if (plan.taps) analysis.taps = measureTaps(measurement);
  if (plan.coverage) analysis.coverage = measureCoverage(measurement);

  auto errors = errorsOf(analysis.lines, measurement.size);
  int degree = supportedDegree(analysis.lines);
  if (analysis.taps) {
    const auto ofTaps = errorsOf(*analysis.taps);
    errors.insert(errors.end(), ofTaps.begin(), ofTaps.end());
    if (degree == 0 && ofTaps.size() >= 2 * analysis.taps->targets.size())
      degree = measurement.plan.tapTargets == 25 ? 3 : 1;
  }
  analysis.field = ErrorField::fit(errors, measurement.size, degree);
  if (analysis.field) analysis.advice = advise(*analysis.field);
  analysis.causes = findCauses(measurement, analysis.lines, analysis.rests);
  return analysis;
}

Outcome Subject::outcome() const {
  Outcome worst = Outcome::pass;
  for (const Check& check : checks)
    worst = std::max(worst, check.outcome);
  return worst;
}

Outcome Verdict::outcome() const {
  Outcome worst = subjects.empty() ? Outcome::incomplete : Outcome::pass;
  for (const Subject& subject : subjects)
    worst = std::max(worst, subject.outcome());
  return worst;
}

const Subject* Verdict::find(std::string_view name) const {
  const auto found = std::ranges::find(subjects, name, &Subject::name);
  return found == subjects.end() ? nullptr : &*found;
}

Subject judgeLine(const Measurement& measurement, const LineFigures& line) {
  const Limits& limits = measurement.limits;
  Subject subject{std::string(line.guide->name), {}, {}};
  subject.checks = {
      leastOf("samples", marked("measure", "samples"), static_cast<double>(line.samples),
              limits.samples, ""),
      leastOf("coverage", marked("measure", "covered"), line.coverage * 100, limits.coverage.value,
              "%"),
      leastOf("edgeZones", marked("measure", "ends reached"),
              static_cast<double>(line.reachesStart) + static_cast<double>(line.reachesEnd), 2, ""),
  };
  Check off = mostOf(limits, Length::farOff, line.off.maximum, line.side);
  off.outcome = line.blamesPanel ? Outcome::fail
                : line.farOff    ? Outcome::incomplete
                                 : Outcome::pass;
  // What was not drawn did not stay near either.
  if (line.samples > 0 || off.outcome != Outcome::pass) subject.checks.push_back(off);
  if (line.farOff)
    subject.remarks.push_back(
        say("measure", "A stroke went far off. Say whether the panel did that or your hand."));
  if (line.blamesPanel)
    subject.remarks.push_back(say("measure", "A stroke went far off, and the panel did that."));
  if (line.byHand > 0)
    subject.remarks.push_back(filled(say("measure", "Drawn again %1 times because of the hand."),
                                     {std::to_string(line.byHand)}));
  if (line.samples == 0) return subject;
  Check gap = mostOf(limits, Length::gap, line.largestGap, {line.length});
  if (gap.outcome == Outcome::fail) gap.outcome = Outcome::incomplete;
  remarkOnGaps(line, gap.limit, subject);
  subject.checks.push_back(gap);
  // A few samples make no line, and half a line no tilt.
  const bool isLine = std::ranges::all_of(
      subject.checks, [](const Check& check) { return check.outcome != Outcome::incomplete; });
  for (const auto& [length, value] : lineRows) {
    Check check = mostOf(limits, length, value(line), line.side);
    if (!isLine && check.outcome == Outcome::fail) check.outcome = Outcome::incomplete;
    subject.checks.push_back(check);
  }
  return subject;
}

std::string textOf(const Check& check, const PanelSize& size) {
  const std::string unit = unitText(size, check.unit);
  const std::string share =
      check.share ? fmt::format(" ({:.2f} %)", check.share->value) : std::string();
  const int decimals = check.unit[0] == '\0' ? 0 : 2;
  const auto number = [&](double value) { return fmt::format("{:.{}f}{}", value, decimals, unit); };
  return filled(
      check.atLeast ? say("measure", "%1: %2; at least %3") : say("measure", "%1: %2; at most %3"),
      {say("measure", check.words), number(check.value) + share, number(check.limit)});
}

Verdict judge(const Measurement& measurement, const Analysis& analysis) {
  Verdict verdict;
  if (measurement.plan.lines) verdict.subjects.push_back(judgeWhole(measurement, analysis));
  for (const LineFigures& line : analysis.lines)
    verdict.subjects.push_back(judgeLine(measurement, line));
  if (measurement.plan.rest) {
    Subject& whole = verdict.subjects.emplace_back(Subject{"rest", {}, {}});
    whole.checks = {
        leastOf("places", marked("measure", "places"), static_cast<double>(analysis.rests.size()),
                static_cast<double>(restTargets().size()), ""),
        mostOf(measurement.limits, Length::restNoise, restNoise(analysis.rests),
               std::min(measurement.size.width, measurement.size.height))};
    for (const RestFigures& rest : analysis.rests)
      verdict.subjects.push_back(judgeRest(measurement, rest));
  }
  if (analysis.taps) verdict.subjects.push_back(judgeTaps(measurement, *analysis.taps));
  if (analysis.coverage) verdict.subjects.push_back(judgeCoverage(measurement, *analysis.coverage));
  return verdict;
}

Json jsonOf(const Measurement& measurement, const Analysis& analysis, const Verdict& verdict) {
  Json subjects = Json::array();
  for (const Subject& subject : verdict.subjects) {
    Json checks = Json::array();
    for (const Check& check : subject.checks)
      checks.push_back(jsonOf(check));
    subjects.push_back({{"name", subject.name},
                        {"outcome", wordOf(subject.outcome())},
                        {"checks", checks},
                        {"remarks", subject.remarks}});
  }
  Json lines = Json::array();
  for (const LineFigures& line : analysis.lines)
    lines.push_back(jsonOf(line));
  Json causes = Json::array();
  for (const Cause& cause : analysis.causes) {
    Json signs = Json::array();
    for (const Sign& sign : cause.signs)
      signs.push_back({{"words", sign.words}, {"value", sign.value}, {"unit", sign.unit}});
    const CauseRow& row = rowOf(cause.id);
    causes.push_back({{"name", row.name},
                      {"confidence", cause.confidence()},
                      {"words", row.words},
                      {"nextStep", row.nextStep},
                      {"signs", signs}});
  }
  Json json{{"outcome", wordOf(verdict.outcome())},
            {"sizeIsNominal", measurement.size.source == SizeSource::nominal},
            {"subjects", subjects},
            {"lines", lines},
            {"causes", causes}};
  if (analysis.advice) {
    Json reaches = Json::array();
    for (const Reach& reach : analysis.advice->reaches)
      reaches.push_back(
          {{"targets", reach.targets}, {"worstMm", reach.worst}, {"rmsMm", reach.rms}});
    json["calibration"] = {{"worstNowMm", analysis.advice->now},
                           {"reaches", reaches},
                           {"floorMm", analysis.advice->floor},
                           {"take", analysis.advice->take}};
  }
  return json;
}

}  // namespace touch::measure
