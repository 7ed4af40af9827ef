#include "measure/files/measurement_file.h"

#include <gmock/gmock.h>

#include "measure/truth/trial.h"

namespace touch::measure {

namespace {

using testing::HasSubstr;

Measurement anyMeasurement() {
  Plan plan;
  plan.lines = false;
  plan.rest = plan.taps = true;
  Measurement measurement = truth::record({}, plan, findProfile("kiosk")->limits);
  measurement.conditions.serialNumber = "A-17 \"left\"";
  measurement.conditions.date = "2026-11-26T16:00:00+0100";
  measurement.conditions.settings = {{"rotation", "90"}};
  measurement.conditions.parameterWords = {"0301", "1A20"};
  measurement.traces[0].blame = Blame::hand;
  return measurement;
}

TEST(MeasurementFile, LosesNothing) {
  const Measurement measurement = anyMeasurement();
  const auto read = parseMeasurement(measurementText(measurement, {{"outcome", "PASS"}}), "m");
  ASSERT_TRUE(read) << read.error().describe();
  EXPECT_EQ(*read, measurement);
  const auto limits = parseLimits(limitsText(measurement.limits), "l");
  ASSERT_TRUE(limits) << limits.error().describe();
  EXPECT_EQ(*limits, measurement.limits);
}

TEST(MeasurementFile, SaysWhatIsWrongAndWhere) {
  struct Case {
    const char* from;
    const char* to;
    const char* message;
  };
  constexpr Case cases[] = {
      {"touch measurement", "a song",
       "m, schema: expected \"touch measurement\", found \"\"a song"},
      {"\"version\": 1", "\"version\": 2", "m, version: expected version 1, found \"2\""},
      {"\"version\": 1,", "\"version\": 1", "m, line 4: expected JSON, found"},
      {"\"widthMm\": 211.0", "\"widthMm\": -3", "m, conditions.size.widthMm: expected a number"},
      {"\"widthMm\": 211.0,", "", "m, conditions.size: expected the member \"widthMm\""},
      {"\"rest 1\"", "\"rest 6\"", "m, traces[0].task: expected the name of a line or target"},
      {"\"source\":0", "\"source\":7", "m, traces[0].source: expected a whole number from 0 to 0"},
      {"\"blame\":\"hand\"", "\"blame\":\"dog\"",
       "m, traces[0].blame: expected one of \"undecided\", \"panel\", \"hand\""},
      {"\"samples\":[[", "\"samples\":[[1,2,3,4],[", "m, traces[0].samples[0]: expected 3 numbers"},
      {"\"gap\":", "\"gab\":", "m, limits.gab: expected the name of a limit"},
      {"\"tapTargets\": 9", "\"tapTargets\": 10", "m, plan.tapTargets: expected 9 or 25"},
      {"\"plan\"", "\"plot\": 1, \"plan\"", "m, plot: expected no member of this name"},
  };
  const std::string whole = measurementText(anyMeasurement(), nullptr);
  for (const auto& [from, to, message] : cases) {
    std::string text = whole;
    const auto place = text.find(from);
    ASSERT_NE(place, text.npos) << from;
    text.replace(place, std::string_view(from).size(), to);
    const auto read = parseMeasurement(text, "m");
    ASSERT_FALSE(read) << to;
    EXPECT_THAT(read.error().describe(), HasSubstr(message));
  }
}

TEST(Limits, StartFromAProfile) {
  const auto limits = parseLimits(
      R"({"schema": "touch limits", "version": 1, "profile": "kiosk", "gap": {"mm": 1},
          "offset": {"mm": 1, "percent": 2}})",
      "l");
  ASSERT_TRUE(limits) << limits.error().describe();
  EXPECT_EQ((*limits)[Length::gap].on({200}).value, 1);
  EXPECT_EQ((*limits)[Length::offset].on({30}).value, 1);
  EXPECT_EQ((*limits)[Length::offset].on({200}).value, 4);
  EXPECT_EQ((*limits)[Length::tilt], findProfile("kiosk")->limits[Length::tilt]);
  const auto none = parseLimits(R"({"schema": "touch limits", "version": 1, "profile": "x"})", "l");
  ASSERT_FALSE(none);
  EXPECT_THAT(none.error().describe(), HasSubstr("l, profile: expected one of \"industrial\""));
}

}  // namespace

}  // namespace touch::measure
