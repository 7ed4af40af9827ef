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

struct Paper {
  const char* name;
  QLocale country;
  const char* box;
  int height;  ///< of a picture that is 612 wide
};
class SheetPdf : public testing::TestWithParam<Paper> {
 protected:
  SheetPdf() { QLocale::setDefault(GetParam().country); }
  ~SheetPdf() override { QLocale::setDefault(before_); }

 private:
  QLocale before_;
};
INSTANTIATE_TEST_SUITE_P(OnPaper, SheetPdf,
                         testing::Values(Paper{"Letter", QLocale("en_US"), "/MediaBox [0 0 612",
                                               792},
                                         Paper{"A4", QLocale("de_DE"), "/MediaBox [0 0 595", 866}),
                         [](const auto& paper) { return std::string(paper.param.name); });

TEST_P(SheetPdf, HasTwoPagesHoweverMuchWasMeasured) {
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
}

TEST_P(SheetPdf, IsOnThePaperOfTheUsersCountryAndLooksTheSameOnTheScreen) {
  const Sheet sheet = sheetOf(wholeRun(Profile::quick), nullptr);
  const QByteArray pdf = sheetPdf(sheet, nullptr);
  EXPECT_TRUE(pdf.contains(GetParam().box));
  EXPECT_EQ(pdf.count("/Type /Page\n"), 1);
  const auto pictures = sheetPictures(sheet, nullptr, 612);
  ASSERT_EQ(pictures.size(), 1U);
  EXPECT_EQ(pictures[0].height(), GetParam().height);
}

}  // namespace
}  // namespace touch::commission
