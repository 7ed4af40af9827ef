#include "commission/sheet/sheet.h"

#include "measure/truth/trial.h"
#include "tests/doubles/test.h"

namespace touch::commission {
namespace {

using namespace touch::test;
using Verdict = measure::Outcome;

/// A run to its end on a panel that passes.
Run goodRun() {
  commission::Run run;
  run.use = "kiosk";
  run.panel = {"A-0417 <b>", "Ann & Bo", "Gate 3", "2026-118", ""};
  run.began = "2026-11-12T14:05:59+0100";
  run.controller = "RS232 DEVICE 1";
  run.calibration = CalibrationFacts{5, "kept"};
  for (const Step& step : steps())
    finish(run, step.id, {}, "2026-11-12T14:17:00+0100");
  return run;
}

measure::Report measured(const measure::PanelSize& size = {{200}, {120}, measure::SizeSource::user},
                         double offset = 0) {
  measure::truth::Trial trial;
  trial.size = size;
  trial.hand = {0.02, 0.05, 120};
  trial.offset = {offset, 0};
  return measure::reportOf(
      measure::truth::record(trial, planOf(Profile::quick), measure::findProfile("kiosk")->limits));
}

std::string remark(const Sheet& sheet, std::string_view caption) {
  const auto found = std::ranges::find(sheet.remarks, caption, &Fact::caption);
  return found == sheet.remarks.end() ? "none" : found->text;
}

TEST(Sheet, PassesOnlyWhatWasMeasuredCheckedAndSet) {
  const measure::Report good = measured();
  ASSERT_EQ(good.verdict.outcome(), Verdict::pass);
  const measure::Report bad = measured({{200}, {120}, measure::SizeSource::user}, 9);
  const auto judged = [](commission::Run run, const measure::Report* report, const auto& change) {
    change(run);
    return judgeRun(run, report);
  };
  const auto outcome = [&](const measure::Report* report, const auto& change) {
    return judged(goodRun(), report, change).outcome;
  };
  const auto nothing = [](commission::Run&) {};
  EXPECT_EQ(outcome(&good, nothing), Verdict::pass);
  EXPECT_EQ(outcome(&bad, nothing), Verdict::fail);
  EXPECT_EQ(outcome(nullptr, nothing), Verdict::incomplete);
  EXPECT_EQ(outcome(&good, [](commission::Run& run) { skip(run, StepId::measure, "late", ""); }),
            Verdict::incomplete);
  EXPECT_EQ(outcome(&good, [](commission::Run& run) { skip(run, StepId::check, "late", ""); }),
            Verdict::incomplete);
  EXPECT_EQ(outcome(&good, [](commission::Run& run) { run[StepId::settings].found.good = false; }),
            Verdict::incomplete);
  EXPECT_EQ(outcome(&good,
                    [](commission::Run& run) {
                      skip(run, StepId::calibrate, "done before", "");
                      run.calibration.reset();
                      run[StepId::check].found.good = false;
                    }),
            Verdict::fail)
      << "also a calibration of somebody else";
  EXPECT_EQ(outcome(&good, [](commission::Run& run) { run[StepId::check].found.good = false; }),
            Verdict::fail);
  EXPECT_EQ(outcome(&good, [](commission::Run& run) { skip(run, StepId::rate, "no port", ""); }),
            Verdict::pass);
}

TEST(Sheet, NamesWhatWasSkippedRepeatedOrNominal) {
  commission::Run run = goodRun();
  Sheet sheet = sheetOf(run, nullptr);
  EXPECT_EQ(remark(sheet, "Skipped"), "nothing");
  EXPECT_EQ(remark(sheet, "Repeated"), "nothing");
  EXPECT_EQ(remark(sheet, "Nominal"), "nothing");

  finish(run, StepId::calibrate, {}, "");
  skip(run, StepId::rate, "no port", "");
  measure::Report report = measured({{200}, {120}, measure::SizeSource::nominal});
  report.measurement.traces.push_back(report.measurement.traces.front());
  report.measurement.traces.back().blame = measure::Blame::hand;
  report = measure::reportOf(std::move(report.measurement));
  sheet = sheetOf(run, &report);
  EXPECT_EQ(remark(sheet, "Skipped"), "Report rate (\"no port\")");
  EXPECT_EQ(remark(sheet, "Repeated"), "Calibration (2 ×), line V-1 (1 ×, \"my hand\")");
  EXPECT_EQ(remark(sheet, "Nominal"), "all lengths: 96 pixels are taken as an inch");
  ASSERT_FALSE(sheet.figures.empty());
  EXPECT_THAT(sheet.figures.front().found + sheet.figures[6].found, HasSubstr("nominal"));
}

TEST(Sheet, ShowsTheWorstOfEachKindBesideItsLimit) {
  const measure::Report report = measured();
  const Sheet sheet = sheetOf(goodRun(), &report);
  const auto figure = std::ranges::find(sheet.figures, "Lines: straightness", &SheetFigure::what);
  const auto fewest = std::ranges::find(sheet.figures, "Lines: samples", &SheetFigure::what);
  ASSERT_NE(figure, sheet.figures.end());
  ASSERT_NE(fewest, sheet.figures.end());
  double worst = 0;
  std::size_t samples = 1000;
  for (const measure::LineFigures& line : report.analysis.lines) {
    worst = std::max(worst, line.straightness.maximum);
    samples = std::min(samples, line.samples);
  }
  EXPECT_EQ(std::stoul(fewest->found), samples);
  EXPECT_EQ(std::stod(figure->found), std::round(100 * worst) / 100);
  EXPECT_THAT(figure->how, StartsWith("worst of 10: Line "));
  EXPECT_TRUE(figure->deciding);
}

TEST(Sheet, IsAPageThatNeedsNothingFromElsewhereAndTakesNoTextForMarkup) {
  const measure::Report report = measured();
  const std::string html = sheetHtml(sheetOf(goodRun(), &report), &report);
  EXPECT_THAT(html, HasSubstr("A-0417 &lt;b&gt;"));
  EXPECT_THAT(html, HasSubstr("Ann &amp; Bo"));
  EXPECT_THAT(html, HasSubstr("<b>PASS</b>"));
  for (const char* outside : {"src=", "href=", "url(", "@import", "<script"})
    EXPECT_THAT(html, Not(HasSubstr(outside)));
  const auto json = sheetJson(goodRun(), &report);
  EXPECT_EQ(json["outcome"], "PASS");
  EXPECT_EQ(json["run"]["panel"]["serialNumber"], "A-0417 <b>");
  EXPECT_EQ(json["measurement"]["outcome"], "PASS");
}

TEST(Sheet, SaysTimesAsPeopleDo) {
  constexpr const char* noon = "2026-11-02T12:00:59+0100";
  EXPECT_EQ(periodText(noon, ""), "2 Nov 2026 12:00 (+0100)");
  EXPECT_EQ(periodText(noon, "2026-11-02T12:00:59+0100"), "2 Nov 2026 12:00 (+0100)");
  EXPECT_EQ(periodText(noon, "2026-11-02T12:17:01+0100"), "2 Nov 2026 12:00 to 12:17 (+0100)");
  EXPECT_EQ(periodText(noon, "2026-12-10T08:00:00+0100"),
            "2 Nov 2026 12:00 to 10 Dec 2026 08:00 (+0100)");
  for (const char* other : {"", "yesterday", "2026-13-02T14:05:59+0100"})
    EXPECT_EQ(periodText(other, noon), other);
}

}  // namespace
}  // namespace touch::commission
