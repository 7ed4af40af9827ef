#include "commission/sheet/sheet.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "commission/run/run_folder.h"
#include "measure/report/conditions.h"
#include "measure/report/words.h"
#include "support/text/decimal.h"
#include "support/text/language.h"

namespace touch::commission {

namespace {

using measure::Check;
using measure::Report;
using measure::Subject;
using Verdict = measure::Outcome;

/// Figures of the first page, in their order; one that is no PASS stands there in any case.
constexpr std::string_view decidingFigures[] = {
    "straightness", "edge",      "offset",   "tilt",  "hysteresis",
    "tapWorst",     "tapSpread", "restPeak", "drift", "rubbed",
};

/// What a subject's figures are compared with: those of its like.
std::string_view kindOf(const Subject& subject) {
  if (measure::findGuide(subject.name) != nullptr) return "lines";
  return subject.name.starts_with("rest") ? "rest" : std::string_view(subject.name);
}

double excess(const Check& check) {
  if (check.atLeast) return check.value > 0 ? check.limit / check.value : 1e9;
  return check.limit > 0 ? check.value / check.limit : check.value;
}

/// All checks of one name on subjects of one kind.
struct Group {
  std::string_view kind;
  const Check* worst = nullptr;
  const Subject* at = nullptr;
  std::size_t count = 0;

  bool isWorse(const Check& check) const {
    if (check.outcome != worst->outcome) return check.outcome > worst->outcome;
    return excess(check) > excess(*worst);
  }
};

std::vector<Group> groupsOf(const measure::Verdict& verdict) {
  std::vector<Group> groups;
  for (const Subject& subject : verdict.subjects) {
    for (const Check& check : subject.checks) {
      const std::string_view kind = kindOf(subject);
      auto group = std::ranges::find_if(groups, [&](const Group& one) {
        return one.kind == kind && one.worst->name == check.name;
      });
      if (group == groups.end()) group = groups.insert(group, Group{kind, &check, &subject, 0});
      if (group->isWorse(check)) *group = {kind, &check, &subject, group->count};
      ++group->count;
    }
  }
  return groups;
}

/// "Lines: straightness"; "Taps, worst miss", where the words say already what it is about.
std::string whatText(const Group& group) {
  const std::string kind =
      group.kind == "lines" ? say("commission", "Lines") : measure::subjectName(group.kind);
  const std::string words = say("measure", group.worst->words);
  const auto isSame = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
  };
  if (words.size() > kind.size() && std::equal(kind.begin(), kind.end(), words.begin(), isSame))
    return kind + words.substr(kind.size());
  return filled("%1: %2", {kind, words});
}

SheetFigure figureOf(const Group& group, const measure::PanelSize& size) {
  const Check& check = *group.worst;
  SheetFigure figure;
  figure.what = whatText(group);
  figure.found = measure::valueText(check.value, check.unit, size);
  figure.limit = (check.atLeast ? "≥ " : "≤ ") + measure::valueText(check.limit, check.unit, size);
  figure.outcome = check.outcome;
  if (group.count > 1)
    figure.how = filled(say("commission", "worst of %1: %2"),
                        {std::to_string(group.count), measure::subjectName(group.at->name)});
  figure.deciding = check.outcome != Verdict::pass ||
                    std::ranges::find(decidingFigures, check.name) != std::end(decidingFigures);
  return figure;
}

std::vector<SheetFigure> figuresOf(const Report& report) {
  std::vector<SheetFigure> figures;
  for (const Group& group : groupsOf(report.verdict))
    figures.push_back(figureOf(group, report.measurement.size));
  return figures;
}

void add(std::vector<Fact>& facts, std::string caption, std::string text) {
  if (!text.empty()) facts.push_back({std::move(caption), std::move(text)});
}

std::string joined(const std::vector<std::string>& texts, std::string_view between) {
  std::string all;
  for (const std::string& text : texts)
    all.append(all.empty() ? "" : between).append(text);
  return all;
}

/// "A-0417 · Gate 3 · order 2026-118"
std::string subtitleOf(const PanelFacts& panel) {
  std::vector<std::string> parts;
  if (!panel.serialNumber.empty())
    parts.push_back(filled(say("commission", "Panel %1"), {panel.serialNumber}));
  if (!panel.place.empty()) parts.push_back(panel.place);
  if (!panel.order.empty()) parts.push_back(filled(say("commission", "order %1"), {panel.order}));
  return joined(parts, " · ");
}

/// "12 Nov 2026", "14:05" and "+0100" of "2026-11-12T14:05:59+0100".
struct DateParts {
  std::string day;
  std::string time;
  std::string zone;
  friend bool operator==(const DateParts&, const DateParts&) = default;
};
std::optional<DateParts> partsOf(const std::string& time) {
  constexpr std::array months{
      marked("commission", "Jan"), marked("commission", "Feb"), marked("commission", "Mar"),
      marked("commission", "Apr"), marked("commission", "May"), marked("commission", "Jun"),
      marked("commission", "Jul"), marked("commission", "Aug"), marked("commission", "Sep"),
      marked("commission", "Oct"), marked("commission", "Nov"), marked("commission", "Dec")};
  constexpr std::size_t length = std::string_view("2026-11-12T14:05:59+0100").size();
  if (time.size() != length || time[10] != 'T') return std::nullopt;
  const auto month = parseDecimal(std::string_view(time).substr(5, 2), 1, 12);
  if (!month) return std::nullopt;
  const std::size_t firstDigit = time[8] == '0' ? 9 : 8;
  return DateParts{
      filled("%1 %2 %3",
             {time.substr(firstDigit, 10 - firstDigit),
              say("commission", months[static_cast<std::size_t>(*month - 1)]), time.substr(0, 4)}),
      time.substr(11, 5), time.substr(19)};
}

std::string lastEnded(const Run& run) {
  std::string last;
  for (const StepRecord& record : run.records)
    last = std::max(last, record.ended);
  return last;
}

std::vector<Fact> panelFacts(const Run& run, const Report* report) {
  std::vector<Fact> facts;
  add(facts, say("commission", "Controller"),
      run.controller.empty() ? run.controller
                             : filled(say("commission", "%1, %2, firmware %3"),
                                      {run.controller, run.unitType, run.firmware}));
  if (report != nullptr) {
    add(facts, say("commission", "Active area"), measure::panelText(report->measurement.size));
    add(facts, say("commission", "Screen"), report->measurement.conditions.screen);
  }
  add(facts, say("commission", "Driver"),
      isSimulated(run) ? say("commission", "simulated") : run.driver);
  add(facts, say("commission", "Note"), run.panel.note);
  return facts;
}

std::vector<Fact> conductFacts(const Run& run, const Report* report) {
  std::vector<Fact> facts;
  add(facts, say("commission", "Date"), periodText(run.began, lastEnded(run)));
  add(facts, say("commission", "Operator"), run.panel.person);
  add(facts, say("commission", "Program"), run.program);
  if (report != nullptr)
    for (const measure::Condition& condition : measure::conditionsOf(report->measurement))
      if (condition.name == "samples") add(facts, condition.caption, condition.text);
  if (run.rate)
    add(facts, say("commission", "Report rate"),
        filled(
            say("commission", "%1 a second, median interval %2 ms, longest %3 ms"),
            {fmt::format("{:.1f}", run.rate->perSecond), fmt::format("{:.1f}", run.rate->medianMs),
             fmt::format("{:.1f}", run.rate->longestMs)}));
  return facts;
}

std::string checkText(const CalibrationFacts& calibration) {
  const std::string targets = std::to_string(calibration.targets);
  if (calibration.check == "kept")
    return filled(say("commission", "%1 targets, checked with 5 others"), {targets});
  if (calibration.check.empty())
    return filled(say("commission", "%1 targets, not checked"), {targets});
  if (calibration.check == "put back")
    return filled(say("commission", "%1 targets; the check failed, and the old one was put back"),
                  {targets});
  return filled(say("commission", "%1 targets; the check failed"), {targets});
}

std::string sentence(const std::string& words) {
  return words.ends_with('.') ? words : words + '.';
}

std::vector<Fact> calibrationFacts(const Run& run, const Report* report) {
  std::vector<Fact> facts;
  if (run.calibration) add(facts, say("commission", "Calibrated"), checkText(*run.calibration));
  if (!run.blockBefore.empty())
    add(facts, say("commission", "Parameters before"), joined(run.blockBefore, " "));
  if (!run.blockAfter.empty())
    add(facts, say("commission", "Parameters after"), joined(run.blockAfter, " "));
  if (report == nullptr) return facts;
  if (report->analysis.advice) {
    const auto advice = measure::adviceTexts(*report->analysis.advice, report->measurement.size);
    add(facts, say("commission", "Touches miss"), advice.front());
    // What to do stands before the last sentence, which says what nobody can reach.
    add(facts, say("commission", "Advice"), advice[advice.size() - 2]);
  }
  for (const measure::CauseText& cause :
       measure::causeTexts(report->analysis, report->verdict.outcome(), report->measurement.size))
    add(facts, say("commission", "Likely cause"), sentence(cause.heading) + ' ' + cause.nextStep);
  return facts;
}

std::string stateText(const StepRecord& record) {
  if (record.state == StepState::open) return say("commission", "not done");
  if (record.state == StepState::skipped)
    return filled(say("commission", "skipped: %1"), {record.reason});
  if (record.times == 1) return say("commission", "done");
  return filled(say("commission", "done %1 times"), {std::to_string(record.times)});
}

std::vector<Fact> remarksOf(const Run& run, const Report* report) {
  std::vector<std::string> repeated, skipped;
  for (const Step& step : steps()) {
    const StepRecord& record = run[step.id];
    const std::string caption = say("commission", step.caption);
    if (record.state == StepState::skipped)
      skipped.push_back(filled(say("commission", "%1 (\"%2\")"), {caption, record.reason}));
    if (record.times > 1)
      repeated.push_back(
          filled(say("commission", "%1 (%2 ×)"), {caption, std::to_string(record.times)}));
  }
  if (report != nullptr)
    for (const measure::LineFigures& line : report->analysis.lines)
      if (line.byHand > 0)
        repeated.push_back(filled(say("commission", "line %1 (%2 ×, \"my hand\")"),
                                  {measure::lineName(*line.guide), std::to_string(line.byHand)}));
  const std::string none = say("commission", "nothing");
  const bool isNominal =
      report != nullptr && report->measurement.size.source == measure::SizeSource::nominal;
  return {
      {say("commission", "Simulated"),
       isSimulated(run) ? say("commission", "controller and panel: no real one was touched")
                        : none},
      {say("commission", "Repeated"), repeated.empty() ? none : joined(repeated, ", ")},
      {say("commission", "Skipped"), skipped.empty() ? none : joined(skipped, ", ")},
      {say("commission", "Nominal"),
       isNominal ? say("commission", "all lengths: 96 pixels are taken as an inch") : none},
  };
}

}  // namespace

Judgement judgeRun(const Run& run, const Report* report) {
  const StepRecord& check = run[StepId::check];
  if (check.state == StepState::done && !check.found.good)
    return {Verdict::fail, say("commission", "The calibration did not pass its check.")};
  if (report != nullptr && report->verdict.outcome() == Verdict::fail) return {Verdict::fail, {}};
  if (report == nullptr || run[StepId::measure].state != StepState::done)
    return {Verdict::incomplete, say("commission", "The panel was not measured.")};
  if (report->verdict.outcome() != Verdict::pass) return {report->verdict.outcome(), {}};
  if (check.state != StepState::done)
    return {Verdict::incomplete, say("commission", "The calibration was not checked.")};
  if (!run[StepId::settings].found.good)
    return {Verdict::incomplete, say("commission", "Settings are not as this use wants them.")};
  return {Verdict::pass, {}};
}

std::string outcomeNote(const Sheet& sheet) {
  return filled(sheet.simulated ? say("commission", "for \"%1\", simulated")
                                : say("commission", "for \"%1\""),
                {sheet.use});
}

measure::Outcome outcomeLook(measure::Outcome outcome, bool simulated) {
  return simulated && outcome == Verdict::pass ? Verdict::incomplete : outcome;
}

std::optional<Judgement> judgementIn(const Run& run) {
  const StepRecord& judged = run[StepId::verdict];
  const auto& texts = judged.found.texts;
  if (judged.state != StepState::done || texts.empty()) return std::nullopt;
  for (const Verdict outcome : {Verdict::pass, Verdict::fail, Verdict::incomplete})
    if (texts.front() == measure::wordOf(outcome))
      return Judgement{outcome, texts.size() > 1 ? texts[1] : std::string()};
  return std::nullopt;
}

bool isSimulated(const Run& run) {
  return run.driver == simulatedDriver;
}

Sheet sheetOf(const Run& run, const Report* report) {
  const Judgement judged = judgeRun(run, report);
  Sheet sheet;
  sheet.subtitle = subtitleOf(run.panel);
  sheet.outcome = judged.outcome;
  sheet.reason = judged.reason;
  sheet.use = run.use;
  sheet.simulated = isSimulated(run);
  sheet.panel = panelFacts(run, report);
  sheet.conduct = conductFacts(run, report);
  if (report != nullptr) sheet.figures = figuresOf(*report);
  sheet.remarks = remarksOf(run, report);
  sheet.calibration = calibrationFacts(run, report);
  for (const Step& step : steps()) {
    const StepRecord& record = run[step.id];
    sheet.steps.push_back({say("commission", step.caption), stateText(record), record.found.texts});
  }
  return sheet;
}

std::string periodText(const std::string& from, const std::string& to) {
  const auto first = partsOf(from);
  const auto last = partsOf(to);
  if (!first) return from;
  if (!last || *first == *last) return filled("%1 %2 (%3)", {first->day, first->time, first->zone});
  const std::string end = first->day == last->day && first->zone == last->zone
                              ? last->time
                              : filled("%1 %2", {last->day, last->time});
  return filled(say("commission", "%1 %2 to %3 (%4)"), {first->day, first->time, end, last->zone});
}

measure::Json sheetJson(const Run& run, const Report* report) {
  using measure::Json;
  const Judgement judged = judgeRun(run, report);
  Json json{{"schema", sheetSchema},
            {"version", sheetVersion},
            {"outcome", measure::wordOf(judged.outcome)},
            {"reason", judged.reason},
            {"use", run.use},
            {"profile", nameOf(run.profile)}};
  json["run"] = Json::parse(runText(run));
  json["measurement"] =
      report == nullptr ? Json(nullptr)
                        : measure::jsonOf(report->measurement, report->analysis, report->verdict);
  return json;
}

}  // namespace touch::commission
