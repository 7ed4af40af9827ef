#include "commission/steps/target_advice.h"

#include "commission/run/run_folder.h"
#include "measure/truth/trial.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::commission {
namespace {

using namespace touch::test;

/// A run of the panel `serialNumber`, with the measurement of `trial` where there is one.
void keepRun(const fs::path& base, std::string_view serialNumber, std::string_view began,
             const std::optional<measure::truth::Trial>& trial) {
  commission::Run run;
  run.panel.serialNumber = serialNumber;
  run.began = began;
  const auto folder = RunFolder::make(base, run);
  ASSERT_TRUE(folder) << folder.error().describe();
  if (!trial) return;
  const auto measurement =
      measure::truth::record(*trial, planOf(Profile::quick), measure::profiles().front().limits);
  ASSERT_EQ(whyNot(folder->saveMeasurement(measurement)), "");
}

TEST(TargetAdvice, IsThatOfTheLastMeasurementOfThisPanelElseOfTheUse) {
  const TemporaryFolder folder;
  const fs::path base = folder.path() / "commissioning";
  commission::Run run;
  run.panel.serialNumber = "A-17";
  for (const auto& [use, targets] :
       {std::pair{"industrial", 5}, {"kiosk", 3}, {"signature", 9}, {"of later days", 5}}) {
    run.use = use;
    const TargetAdvice advice = adviseTargets(base, run);
    EXPECT_EQ(advice.targets, targets) << use;
    EXPECT_THAT(advice.why, StartsWith(std::to_string(targets) + " targets")) << use;
  }
  run.use = "industrial";

  measure::truth::Trial shifted;  // two targets mend that as well as nine do
  shifted.offset = {6, 4};
  shifted.hand = {0.02, 0.05, 120};
  measure::truth::Trial tilted = shifted;
  tilted.tilt = {14, 0};
  keepRun(base, "A-17", "2026-11-10T14:05:59+0100", tilted);
  const TargetAdvice first = adviseTargets(base, run);
  EXPECT_GT(first.targets, 2);
  EXPECT_THAT(first.why, HasSubstr("10 Nov 2026"));
  keepRun(base, "A-17", "2026-11-12T14:05:59+0100", shifted);
  keepRun(base, "A-17", "2026-11-14T14:05:59+0100", std::nullopt);
  keepRun(base, "A-18", "2026-11-15T14:05:59+0100", tilted);
  folder.write("commissioning/notes.txt", "no run");
  const TargetAdvice last = adviseTargets(base, run);
  EXPECT_EQ(last.targets, 2);
  EXPECT_THAT(last.why, HasSubstr("measurement of 12 Nov 2026")) << "the later one has none";

  keepRun(base, "", "2026-11-16T14:05:59+0100", tilted);
  run.panel.serialNumber.clear();
  EXPECT_EQ(adviseTargets(base, run).targets, 5) << "panels without a number are not one panel";
}

}  // namespace
}  // namespace touch::commission
