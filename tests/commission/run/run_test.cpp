#include "commission/run/run.h"

#include "commission/run/run_folder.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::commission {
namespace {

using namespace touch::test;

/// One letter a step: (d)one, (s)kipped, (.) open.
std::string statesOf(const Run& run) {
  std::string states;
  for (const StepRecord& record : run.records)
    states += record.state == StepState::done      ? 'd'
              : record.state == StepState::skipped ? 's'
                                                   : '.';
  return states;
}

Run runAt(std::string_view states) {
  commission::Run run;
  for (std::size_t i = 0; i < states.size(); ++i) {
    const auto id = static_cast<StepId>(i);
    if (states[i] == 'd') finish(run, id, {true, {"found"}}, "2026-11-12T14:05:59+0100");
    if (states[i] == 's') skip(run, id, "no port", "2026-11-12T14:05:59+0100");
  }
  return run;
}

Run anyRun() {
  commission::Run run = runAt("dddddsdsd.");
  run.profile = Profile::full;
  run.use = "kiosk";
  run.panel = {"A-17 \"left\"", "Ann", "Gate 3", "2026-118", "<note>"};
  run.began = "2026-11-12T14:05:59+0100";
  run.controller = "RS232 DEVICE 1";
  run.settings = {{"rotation", "90"}};
  run.blockBefore = {"0301", "1A20"};
  run.calibration = CalibrationFacts{5, "kept"};
  run.rate = ReportRate{99.8, 10, 16.5};
  return run;
}

TEST(Run, TakesUpTheFirstOpenStepAndRepeatsWhatRestsOnAStep) {
  struct Case {
    const char* before;
    StepId repeated;
    const char* after;
  };
  constexpr Case cases[] = {
      {"dddddddddd", StepId::calibrate, "dddd...d.."},
      {"dddddsdsdd", StepId::calibrate, "dddd...s.."},
      {"dddddddddd", StepId::identity, "dd........"},
      {"dddddddddd", StepId::measure, "dddddd.d.."},
      {"dddddddddd", StepId::panel, "d.ddddddd."},
      {"dddddddddd", StepId::prerequisites, ".ddddddddd"},
      {"dddd......", StepId::settings, "ddd......."},
  };
  for (const auto& [before, repeated, after] : cases) {
    commission::Run run = runAt(before);
    repeat(run, repeated);
    EXPECT_EQ(statesOf(run), after) << before;
    EXPECT_EQ(run[repeated].found, Found()) << "it holds no longer";
    EXPECT_EQ(static_cast<std::size_t>(nextStep(run).value()), std::string(after).find('.'));
    finish(run, repeated, {}, "later");
    EXPECT_EQ(run[repeated].times, 2) << "the sheet says so";
  }
  EXPECT_FALSE(nextStep(runAt("ddddssdsdd")));
  EXPECT_EQ(progress(runAt("")), 0);
  EXPECT_EQ(progress(runAt("ssssssssss")), 1);
}

TEST(Run, ShowsAProblemBeforeItGoesOnAndLetsNoStepBeDoneTooEarly) {
  struct Case {
    const char* states;
    StepId ended;
    bool good;
    StepId shown;
  };
  constexpr Case cases[] = {
      {"d.........", StepId::prerequisites, true, StepId::panel},
      {"d.........", StepId::prerequisites, false, StepId::prerequisites},
      {"s.........", StepId::prerequisites, false, StepId::panel},
      {"dddd.ddddd", StepId::sheet, true, StepId::calibrate},
      {"dddddddddd", StepId::sheet, true, StepId::sheet},
      {"dddddddddd", StepId::verdict, false, StepId::verdict},
  };
  for (const auto& [states, ended, good, shown] : cases) {
    commission::Run run = runAt(states);
    run[ended].found.good = good;
    EXPECT_EQ(stepAfter(run, ended), shown) << states << good;
  }
  const commission::Run run = runAt("dd..d.....");
  std::string reachable;
  for (const Step& step : steps())
    reachable += isReachable(run, step.id) ? 'y' : 'n';
  EXPECT_EQ(reachable, "yyynynnnnn");
  EXPECT_LT(durationOf(Profile::quick), durationOf(Profile::full));
  std::chrono::seconds all{};
  for (const Step& step : steps())
    all += step.duration(Profile::quick);
  EXPECT_GE(durationOf(Profile::quick), all);
  EXPECT_LT(durationOf(Profile::quick) - all, std::chrono::minutes(1));
}

TEST(RunFile, LosesNothingAndSaysWhatIsWrongAndWhere) {
  const commission::Run run = anyRun();
  const std::string whole = runText(run);
  const auto read = parseRun(whole, "r");
  ASSERT_TRUE(read) << read.error().describe();
  EXPECT_EQ(*read, run);

  struct Case {
    const char* from;
    const char* to;
    const char* message;
  };
  constexpr Case cases[] = {
      {"touch commissioning", "a song", "r, schema: expected \"touch commissioning\""},
      {"\"version\": 1", "\"version\": 2", "r, version: expected version 1, found \"2\""},
      {"\"version\": 1,", "\"version\": 1", "r, line 4: expected JSON"},
      {"\"full\"", "\"half\"", "r, profile: expected one of \"quick\", \"full\""},
      {"\"kiosk\"", "\"bar\"", "r, use: expected the name of a profile of limits"},
      {"\"targets\": 5", "\"targets\": 50", "r, calibration.targets: expected a whole number"},
      {"\"skipped\"", "\"lost\"", "r, steps.check.state: expected one of"},
      {"\"rate\": {", "\"rote\": {", "r, rote: expected no member of this name"},
      {"\"verdict\": {", "\"vordict\": {", "r, steps: expected the member \"verdict\""},
  };
  for (const auto& [from, to, message] : cases) {
    std::string text = whole;
    const auto at = text.find(from);
    ASSERT_NE(at, text.npos) << from;
    text.replace(at, std::string_view(from).size(), to);
    const auto bad = parseRun(text, "r");
    ASSERT_FALSE(bad) << from;
    EXPECT_THAT(bad.error().describe(), HasSubstr(message));
  }
}

TEST(RunFolder, HasANameOfItsOwnAndIsFoundAsLongAsItIsUnfinished) {
  const TemporaryFolder folder;
  const fs::path base = folder.path() / "commissioning";
  EXPECT_TRUE(unfinishedRuns(base).runs.empty()) << "there is no such folder yet";
  commission::Run run = anyRun();
  run.panel.serialNumber = "../A 17/\xC3\x9C";
  const auto first = RunFolder::make(base, run);
  ASSERT_TRUE(first) << first.error().describe();
  EXPECT_EQ(first->path(), base / "___A_17___-2026-11-12");
  run.began = "2026-11-12T15:00:00+0100";
  const auto second = RunFolder::make(base, run);
  ASSERT_TRUE(second);
  EXPECT_EQ(second->path(), base / "___A_17___-2026-11-12-2");

  folder.write("commissioning/notes.txt", "no run");
  fs::create_directory(base / "empty");
  UnfinishedRuns found = unfinishedRuns(base);
  ASSERT_EQ(found.runs.size(), 2u);
  EXPECT_EQ(found.runs[0].folder, second->path()) << "the later one first";
  finish(run, StepId::sheet, {}, "");
  ASSERT_EQ(whyNot(second->save(run)), "");
  found = unfinishedRuns(base);
  ASSERT_EQ(found.runs.size(), 1u);
  EXPECT_EQ(found.runs[0].folder, first->path());
  EXPECT_TRUE(found.damaged.empty());
  ASSERT_EQ(whyNot(first->write(RunFolder::runName, "{")), "");
  found = unfinishedRuns(base);
  EXPECT_TRUE(found.runs.empty());
  ASSERT_EQ(found.damaged.size(), 1u);
  EXPECT_THAT(found.damaged[0].describe(), HasSubstr("run.json, line 1: expected JSON"));
  EXPECT_FALSE(first->measurement().value()) << "nothing was measured";
  ASSERT_EQ(whyNot(first->write(RunFolder::measurementName, "{}")), "");
  EXPECT_THAT(whyNot(first->measurement()), HasSubstr("measurement.json"));
}

}  // namespace
}  // namespace touch::commission
