#include "serial/plots/report_series.h"

#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

/// Two strokes with reports every 10 and every 20 ms, then one report by itself.
ReportSeries twoStrokes() {
  ReportSeries series(ReportFamily::tablet);
  const std::tuple<std::chrono::milliseconds, std::uint8_t, std::uint8_t> reports[] = {
      {1000ms, 0xD8, 10}, {1010ms, 0xD8, 20}, {1020ms, 0xD8, 30},
      {1090ms, 0xD8, 20}, {1100ms, 0x98, 20}, {2000ms, 0xD8, 40},
      {2020ms, 0xD8, 40}, {2040ms, 0x98, 40}, {9000ms, 0xD8, 50}};
  for (const auto& [time, state, x] : reports) {
    series.take(time, Bytes{state, x});
    series.take(time, Bytes{0, 5, 0});
  }
  return series;
}

TEST(ReportSeries, SaysInNumbersWhatIsSeen) {
  const ReportSeries series = twoStrokes();
  EXPECT_EQ(series.range(), (TimeRange{1s, 9s}));
  const auto all = series.figures(series.range());
  EXPECT_EQ(all.reports, 9u);
  EXPECT_EQ(all.strokes, 3u);
  EXPECT_DOUBLE_EQ(all.rate.value(), (100.0 + 50.0) / 2) << "the gap of 70 ms moves no median";
  const auto first = series.figures({1s, 1095ms});
  EXPECT_EQ(first.reports, 4u);
  EXPECT_EQ(first.spanX, RawCounts{20});
  EXPECT_EQ(first.spanY, RawCounts{0});
  EXPECT_NEAR(first.deviationX, 8.165, 0.001);
  EXPECT_FALSE(series.figures({9s, 9s}).rate);
  EXPECT_EQ(series.csv({2s, 2020ms}),
            "time_s,touching,x,y,interval_ms,reckoned\n2.000000,1,40,5,,0\n"
            "2.020000,1,40,5,20.000,0\n");
}

TEST(ReportSeries, IsSeenInColumnsAndClosely) {
  const ReportSeries series = twoStrokes();
  const auto columns = series.columns({1s, 1100ms}, 2);
  EXPECT_EQ(columns[0].reports, 4u);
  EXPECT_EQ(columns[0].x, std::pair(RawCounts{10}, RawCounts{30}));
  EXPECT_EQ(columns[0].longest, 70ms);
  EXPECT_EQ(columns[1].reports, 1u);
  const TimeRange all = series.range();
  const auto half = all.zoomed(0.5, all);
  EXPECT_EQ(half, (TimeRange{3s, 7s}));
  EXPECT_EQ(half.moved(1, all), (TimeRange{5s, 9s}));
  EXPECT_EQ(half.moved(-9, all), (TimeRange{1s, 5s}));
  EXPECT_EQ(half.zoomed(9, all), all);
  EXPECT_EQ(half.zoomed(1e-9, all).length(), 20ms);
  EXPECT_EQ(TimeRange{}.zoomed(0.5, {}).length(), 20ms) << "of nothing";
  EXPECT_EQ(ReportSeries(ReportFamily::e02).columns({}, 3).size(), 3u);
}

TEST(ReportSeries, ReckonsTheTimesOfWhatWasReadTogetherFromTheLine) {
  const Bytes packet = {0xD8, 1, 0, 1, 0};
  const struct {
    const char* what;
    LineSettings line;
    Bytes bytes;
    std::chrono::microseconds second;  ///< of three reports, before the third
    std::chrono::microseconds first;
  } cases[] = {
      {"9600", {}, times(3, packet), 5208us, 10416us},
      {"115200 with parity", {115200, Parity::even, 8, 1}, times(3, packet), 477us, 954us},
      {"with half a packet behind", {}, times(3, packet) + Bytes{0xD8, 2}, 5208us, 10416us},
      {"slower than the last reading allows", {300}, times(3, packet), 20ms, 20ms},
  };
  for (const auto& [what, line, bytes, second, first] : cases) {
    SCOPED_TRACE(what);
    ReportSeries series(ReportFamily::tablet);
    series.take(1s, Bytes{0x0D}, line);
    series.take(1020ms, bytes, line);
    ASSERT_EQ(series.reports().size(), 3u);
    const auto last = series.reports()[2].time;
    EXPECT_LE(std::chrono::abs(last - series.reports()[1].time - second), 1us);
    EXPECT_LE(std::chrono::abs(last - series.reports()[0].time - first), 1us);
    EXPECT_EQ(series.figures(series.range()).reckoned, series.reports()[2].reckoned ? 3u : 2u);
  }
  ReportSeries series(ReportFamily::tablet);
  series.take(1s, packet);
  EXPECT_FALSE(series.reports()[0].reckoned) << "it ended when it was read";
}

TEST(ReportSeries, DropsTheOldestOfALongStream) {
  ReportSeries series(ReportFamily::tablet);
  series.take(0s, Bytes{0xD8, 1, 0, 1, 0});
  Bytes many;
  for (std::size_t i = 0; i < ReportSeries::most; ++i)
    many.insert(many.end(), {0xD8, 4, 0, 1, 0});
  series.take(3s, many);
  EXPECT_EQ(series.reports().size(), ReportSeries::most);
  EXPECT_EQ(series.reports().front().x, RawCounts{4});
}

}  // namespace
}  // namespace touch::test
