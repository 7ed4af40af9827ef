#include "commission/sheet/frmSheetPdf.h"

#include "measure/truth/trial.h"
#include "tests/ui/window_desk.h"

namespace touch::commission {
namespace {

using namespace touch::test;

/// A run to its end, of whose steps as much is said as there is to say.
Run wholeRun(Profile profile) {
  commission::Run run;
  run.profile = profile;
  run.panel = {"A-0417", "Ann Bo", "Gate 3, entrance hall", "2026-118", "left of two"};
  run.began = "2026-11-12T14:05:59+0100";
  run.controller = "RS232 DEVICE 1";
  run.unitType = "QRMV0301";
  run.firmware = "M0130100";
  run.driver = "/usr/lib/libnexapi.so";
  run.program = "TouchUtility 3.2.0";
  run.blockBefore = run.blockAfter = std::vector<std::string>(8, "1A20");
  run.calibration = CalibrationFacts{5, "kept"};
  run.rate = ReportRate{99.8, 10, 16.5};
  for (const Step& step : steps())
    finish(run, step.id, {true, {std::string(90, 'x'), std::string(40, 'y')}},
           "2026-11-12T14:17:00+0100");
  return run;
}

TEST(SheetPdf, HasTwoPagesHoweverMuchWasMeasured) {
  for (const Profile profile : {Profile::quick, Profile::full}) {
    for (const double offset : {0.0, 9.0}) {
      measure::truth::Trial trial;
      trial.hand = {0.02, 0.05, 120};
      trial.offset = {offset, 0};
      trial.noise = offset / 5;
      trial.dead = measure::truth::Strip{true, offset, 3 * offset};
      const measure::Report report =
          measure::reportOf(measure::truth::record(trial, planOf(profile), measure::Limits()));
      const QByteArray pdf = sheetPdf(sheetOf(wholeRun(profile), &report), &report);
      EXPECT_TRUE(pdf.startsWith("%PDF"));
      EXPECT_EQ(pdf.count("/Type /Page\n"), 2) << nameOf(profile) << ", offset " << offset;
    }
  }
  const commission::Run unmeasured = wholeRun(Profile::quick);
  EXPECT_EQ(sheetPdf(sheetOf(unmeasured, nullptr), nullptr).count("/Type /Page\n"), 1);
}

}  // namespace
}  // namespace touch::commission
