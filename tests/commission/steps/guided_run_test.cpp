#include "commission/steps/guided_run.h"

#include "commission/steps/controller_steps.h"
#include "core/driver/driver_settings.h"
#include "support/text/personal_names.h"
#include "tests/console/parameters/parameter_controller.h"

namespace touch::commission {
namespace {

using namespace touch::test;

class Guided : public ParameterDesk {
 protected:
  Guided() {
    script.results["GetRightClickTime"] = 1000;
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
    commission::Run begun;
    begun.use = "kiosk";
    begun.panel.serialNumber = "A-17";
    begun.began = "2026-11-12T14:05:59+0100";
    auto made = RunFolder::make(folder.path() / "runs", begun);
    EXPECT_TRUE(made);
    guided.emplace(access(), backup, std::move(*made), begun,
                   [] { return std::chrono::system_clock::time_point{}; });
  }
  /// As it is on the disk.
  commission::Run stored() const { return guided->folder().run().value(); }

  Result<fs::path> handOver(const SheetPrinter& print = printHtml) {
    Trace trace;
    return guided->handOver(RunTrace(trace, guided->folder()), print);
  }

  std::optional<GuidedRun> guided;
};

TEST_F(Guided, KeepsTheParametersOfBeforeAndPutsThemBack) {
  ASSERT_EQ(whyNot(guided->identify("nexapi")), "");
  EXPECT_EQ(stored().firmware, "M0130100");
  EXPECT_EQ(stored().blockBefore.at(3), "1003");
  EXPECT_THAT(stored()[StepId::identity].found.texts.back(), HasSubstr(".vrq"));
  guided->beginCalibration();
  const auto before = std::exchange(memory[3], {0x55, 0x55});
  ASSERT_EQ(whyNot(guided->endCalibration(5, true)), "");
  EXPECT_EQ(stored().blockAfter.at(3), "5555");
  ASSERT_EQ(whyNot(guided->identify("nexapi")), "");
  EXPECT_EQ(stored().blockBefore.at(3), "1003") << "those of before the run";

  const Notice notice = guided->takeWayBack()->putBack();
  EXPECT_EQ(memory[3], before);
  ASSERT_EQ(whyNot(guided->endCheck(CheckResult{CheckOutcome::putBack, notice})), "");
  EXPECT_EQ(stored().calibration->check, "put back");
  EXPECT_EQ(stored().blockAfter.at(3), "1003");
  EXPECT_FALSE(stored()[StepId::check].found.good);
}

TEST_F(Guided, FindsTheWayBackOfARunThatWasInterrupted) {
  guided->beginCalibration();
  const auto before = std::exchange(memory[3], {0x55, 0x55});
  ASSERT_EQ(whyNot(guided->endCalibration(5, true)), "");
  const auto path = guided->folder().path();
  guided.emplace(access(), backup, RunFolder::open(path).value(), stored());
  const auto wayBack = guided->takeWayBack();
  EXPECT_EQ(wayBack->whyNone(), "");
  static_cast<void>(wayBack->putBack());
  EXPECT_EQ(memory[3], before);

  guided->beginCalibration();
  memory[3] = {0x55, 0x55};
  ASSERT_EQ(whyNot(guided->endCalibration(5, true)), "");
  ASSERT_EQ(whyNot(guided->skip(StepId::check, "no time")), "");
  EXPECT_FALSE(settleUnchecked(access(), prompt, backup)) << "what nobody checks is kept";
}

TEST_F(Guided, NamesSettingsThatTheUseWantsOtherwiseAndChangesNone) {
  const auto lacking = [](std::string_view use, const DriverSettings& reported) {
    std::string names;
    for (const WantedSetting& one : deviations(use, reported))
      names.append(names.empty() ? "" : " ").append(one.name);
    return names;
  };
  DriverSettings settings;
  settings.reporting = true;
  settings.touchMode = 1;
  settings.rightClick = true;
  EXPECT_EQ(lacking("industrial", settings), "");
  EXPECT_EQ(lacking("kiosk", settings), "right-click");
  EXPECT_EQ(lacking("signature", settings), "touch-mode right-click");
  settings.reporting = false;
  EXPECT_EQ(lacking("industrial", settings), "touch-panel");

  script.results["GetEnableRightClick"] = 1;
  ASSERT_EQ(whyNot(guided->compareSettings()), "");
  EXPECT_FALSE(stored()[StepId::settings].found.good);
  EXPECT_THAT(matching(journal, "^(Enable|Set|Disable)"), ElementsAre());
}

TEST_F(Guided, ForgetsTheMeasurementOfAnotherCalibrationAndSkipsARateThatIsNotKnown) {
  auto measurement = guided->measurement({{200}, {120}, measure::SizeSource::user}).value();
  EXPECT_EQ(measurement.limits, measure::findProfile("kiosk")->limits);
  EXPECT_EQ(measurement.conditions.serialNumber, "A-17");
  measurement.sources = {{measure::SourceKind::pointer, 1, 1, true, "pointer"}};
  measurement.traces.push_back({"V-1", 0, measure::Blame::undecided, {{{}, 0.1, 0.1}}});
  ASSERT_EQ(whyNot(guided->keep(measurement)), "");
  ASSERT_EQ(whyNot(guided->endMeasurement()), "");
  ASSERT_EQ(whyNot(guided->tellRate()), "");
  EXPECT_EQ(stored()[StepId::rate].state, StepState::skipped);
  EXPECT_EQ(guided->measurement({}).value(), measurement);

  EXPECT_FALSE(stored()[StepId::measure].found.good) << "one stroke is not all";
  ASSERT_EQ(whyNot(guided->repeat(StepId::measure)), "");
  EXPECT_EQ(guided->measurement({}).value(), measurement) << "it is to be completed";
  ASSERT_EQ(whyNot(guided->folder().write("Tvm-v1.txt", "a line")), "");

  ASSERT_EQ(whyNot(guided->repeat(StepId::calibrate)), "");
  EXPECT_FALSE(fs::exists(guided->folder().path() / "Tvm-v1.txt"));
  EXPECT_EQ(stored()[StepId::measure].state, StepState::open);
  EXPECT_TRUE(guided->measurement({{1}, {1}, measure::SizeSource::user}).value().traces.empty());
  ASSERT_EQ(whyNot(guided->skip(StepId::calibrate, "as it is")), "");
  EXPECT_EQ(stored()[StepId::calibrate].reason, "as it is");

  const auto printNothing = [](auto&&...) {
    return Status(tl::unexpected(FileError{"sheet.pdf", 0, "paper", ""}));
  };
  EXPECT_EQ(handOver(printNothing).error().file, "sheet.pdf");
  EXPECT_EQ(stored()[StepId::sheet].state, StepState::open) << "what is not there is not done";
  EXPECT_EQ(whyNot(handOver()), "");
  EXPECT_EQ(stored()[StepId::sheet].state, StepState::done);
  EXPECT_THAT(folder.read(fs::relative(guided->folder().path(), folder.path()) / "sheet.html"),
              HasSubstr("INCOMPLETE"));
}

TEST_F(Guided, OffersWhatCanBeMended) {
  using enum Mend;
  struct Case {
    const char* controller;
    bool answers;
    bool reporting;
    FindingState folder;
    std::vector<Mend> mends;
  };
  const Case cases[] = {
      {"RS232 DEVICE 1", true, true, FindingState::ok, {}},
      {"RS232 DEVICE 1", false, true, FindingState::note, {takePortBack}},
      {"USB DEVICE 2", false, true, FindingState::ok, {}},
      {"USB DEVICE 2", true, false, FindingState::ok, {enablePanel}},
      {"RS232 DEVICE 1",
       false,
       false,
       FindingState::problem,
       {takePortBack, enablePanel, chooseFolder}},
  };
  for (const auto& [controller, answers, reporting, state, mends] : cases) {
    session.controllerName = controller;
    script.results["GetReportStatus"] = reporting ? 1 : 0;
    Diagnosis diagnosis;
    diagnosis.controllers = {{"RS232 DEVICE 9", false}, {controller, answers}};
    diagnosis.findings = {{state, "folder", "the folder", {}, {}}};
    ASSERT_EQ(whyNot(guided->lookAround(diagnosis)), "");
    EXPECT_EQ(guided->mends(), mends) << controller;
    EXPECT_EQ(stored()[StepId::prerequisites].found.good,
              reporting && state != FindingState::problem);
  }
  journal.clear();
  commission::takePortBack(access());
  EXPECT_EQ(journal, Lines({"OpenController RS232 DEVICE 1", "ReopenCOMPort", "CloseController"}));
}

TEST_F(Guided, GoesAlongToAnotherFolderWithAllThatItHas) {
  ASSERT_EQ(whyNot(guided->lookAround({})), "");
  ASSERT_EQ(whyNot(guided->folder().write("Tvm-v1.txt", "a line")), "");
  guided->beginCalibration();
  const auto before = std::exchange(memory[3], {0x55, 0x55});
  ASSERT_EQ(whyNot(guided->endCalibration(5, true)), "");
  const fs::path old = guided->folder().path();
  folder.write("taken", "no folder");
  EXPECT_NE(whyNot(guided->moveTo(folder.path() / "taken")), "");
  EXPECT_EQ(guided->folder().path(), old) << "it is where it was";

  const fs::path elsewhere = folder.path() / "elsewhere";
  ASSERT_EQ(whyNot(guided->moveTo(elsewhere)), "");
  EXPECT_FALSE(fs::exists(old));
  EXPECT_EQ(guided->folder().path(), runsIn(elsewhere) / old.filename());
  EXPECT_EQ(stored(), guided->run());
  EXPECT_TRUE(fs::exists(guided->folder().path() / "Tvm-v1.txt"));
  ASSERT_EQ(whyNot(guided->identify("nexapi")), "");
  EXPECT_TRUE(fs::exists(elsewhere / "backup"));
  static_cast<void>(guided->takeWayBack()->putBack());
  EXPECT_EQ(memory[3], before) << "what was kept in the old folder can be put back";
}

TEST_F(Guided, TellsWhenNothingCanBeKeptAndLeavesTheStepOpen) {
  fs::remove_all(guided->folder().path());
  EXPECT_NE(whyNot(guided->identify("nexapi")), "");
  EXPECT_EQ(guided->next(), StepId::prerequisites);
  EXPECT_EQ(guided->run()[StepId::identity].state, StepState::open);
}

TEST(ReportRate, IsThatOfTheTimesBetweenRawCounts) {
  using namespace measure;
  Measurement measurement;
  measurement.sources = {{SourceKind::reports, 100, 100, true, ""},
                         {SourceKind::pointer, 1, 1, true, ""}};
  EXPECT_FALSE(rateOf(measurement));
  measurement.traces = {{"V-1",
                         0,
                         Blame::undecided,
                         {{Seconds(0), 1, 1}, {Seconds(0.01), 1, 2}, {Seconds(0.02), 1, 3}}},
                        {"V-2", 0, Blame::undecided, {{Seconds(9), 1, 1}, {Seconds(9.03), 1, 2}}},
                        {"V-3", 1, Blame::undecided, {{Seconds(20), 1, 1}, {Seconds(21), 1, 2}}}};
  const auto rate = rateOf(measurement);
  ASSERT_TRUE(rate);
  EXPECT_NEAR(rate->perSecond, 100, 1e-6);
  EXPECT_NEAR(rate->longestMs, 30, 1e-6) << "not the pause between two lines";
}

TEST(DriverName, HasNoHomeFolderOnASheet) {
  const std::string home = personalNames().homeFolders.front();
  EXPECT_EQ(driverName({.driverPath = home + "/lib/libnexapi.so"}), "~/lib/libnexapi.so");
}

}  // namespace
}  // namespace touch::commission
