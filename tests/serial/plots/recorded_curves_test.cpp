#include "serial/plots/recorded_curves.h"

#include "serial/plots/report_table.h"
#include "tests/doubles/temporary_folder.h"
#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

constexpr int reportsInStroke = 1000;
constexpr int strokes = 1200;

/// A report every 10 ms, and a second between strokes. Every second report is read together with
/// the one before it. X is 50, once 90 in stroke 1; in stroke 2 a report is 70 ms late.
class LongRecording final : public TransferSource {
 public:
  std::optional<Transfer> next() override {
    if (place_ == strokes * reportsInStroke) return std::nullopt;
    const bool isPeak = place_ == reportsInStroke + 500;
    Transfer transfer{timeOf(place_ + 1), Direction::fromController, {}};
    for (const bool second : {false, true}) {
      const bool isLast = place_ % reportsInStroke == reportsInStroke - 1;
      const std::uint8_t state = isLast ? 0x98 : 0xD8;
      const std::uint8_t x = isPeak && second ? 90 : 50;
      transfer.bytes.insert(transfer.bytes.end(), {state, x, 0, 5, 0});
      ++place_;
    }
    return transfer;
  }
  void rewind() override {
    place_ = 0;
    isInside_ = false;
  }
  void seek(std::chrono::microseconds time) override {
    isInside_ = true;
    for (place_ = 0; timeOf(place_ + 1) < time;)
      place_ += 2;
  }
  std::chrono::microseconds length() const override {
    return timeOf(strokes * reportsInStroke - 1);
  }
  std::optional<LineSettings> line() const override {
    return isInside_ ? std::nullopt : std::optional(LineSettings{19200});
  }

  static std::chrono::microseconds timeOf(int report) {
    const auto late = report > 2 * reportsInStroke + 501 ? 60ms : 0ms;
    return report * 10ms + report / reportsInStroke * 1s + late;
  }

 private:
  int place_ = 0;
  bool isInside_ = false;
};

class Curves : public testing::Test {
 protected:
  void readAll() {
    while (curves.isReading())
      EXPECT_EQ(whyNot(curves.readOn(100'000)), "");
  }
  std::string tableOf(const std::optional<TimeRange>& range) {
    auto table = ReportTableFile::begin(folder.path() / "a.csv", curves.reports(range));
    while (*table->writeOn(100'000)) {
    }
    return folder.read("a.csv");
  }

  TemporaryFolder folder;
  RecordedCurves curves{std::make_unique<LongRecording>(),
                        [] { return TimedReports(ReportFamily::tablet); }};
};

TEST_F(Curves, ShowAllOfALongRecordingThinnedOutWithItsExtremes) {
  readAll();
  const ReportSeries& whole = curves.whole();
  EXPECT_EQ(whole.taken(), 1'200'000u);
  EXPECT_EQ(whole.every(), 4u);
  EXPECT_LE(whole.reports().size(), ReportSeries::most);
  EXPECT_EQ(whole.range(), (TimeRange{LongRecording::timeOf(1) - 2604us,
                                      LongRecording::timeOf(strokes * reportsInStroke - 1)}));
  const auto figures = whole.figures(whole.range());
  EXPECT_EQ(figures.reports, 1'200'000u);
  EXPECT_EQ(figures.strokes, 1200u);
  EXPECT_EQ(figures.reckoned, 600'000u);
  const auto columns = whole.columns({0s, 44s}, 5);  // a stroke takes 11 s
  EXPECT_EQ(columns[1].x.second, RawCounts{90});
  EXPECT_EQ(columns[0].x.second, RawCounts{50});
  EXPECT_GT(columns[2].longest, 70ms);
  EXPECT_LT(columns[1].longest, 30ms);
}

TEST_F(Curves, ReadAPartAgainInFullWhenItIsLookedAt) {
  const TimeRange middle{6000s, 6011s};
  EXPECT_FALSE(curves.lookCloser(middle)) << "the whole is not read yet";
  readAll();
  EXPECT_FALSE(curves.lookCloser(curves.whole().range())) << "too much";
  EXPECT_TRUE(curves.lookCloser(middle));
  EXPECT_EQ(&curves.best(middle), &curves.whole()) << "until it is read";
  readAll();
  const ReportSeries& part = curves.best(middle);
  EXPECT_EQ(part.every(), 1u);
  EXPECT_EQ(part.count(middle), 1000u);
  EXPECT_EQ(part.figures(middle).reckoned, 500u);
  EXPECT_TRUE(part.reports()[0].interval.has_value()) << "it begins in a stroke";
  const TimeRange beside = middle.moved(0.5, curves.whole().range());
  EXPECT_FALSE(curves.lookCloser(beside)) << "it was read with it";
  EXPECT_EQ(&curves.best(beside), &part);
  EXPECT_EQ(&curves.best(curves.whole().range()), &curves.whole());
}

TEST_F(Curves, AreSavedWithAllReportsAsATable) {
  readAll();
  const std::string all = tableOf(std::nullopt);
  EXPECT_EQ(std::ranges::count(all, '\n'), 1'200'001);
  const std::string part = tableOf(TimeRange{6000s, 6000'050ms});
  const std::string lines = part.substr(part.find('\n') + 1);
  EXPECT_EQ(std::ranges::count(lines, '\n'), 6);
  EXPECT_NE(all.find(lines), all.npos) << "the same lines, on the same line settings";
}

TEST_F(Curves, AreThoseThatWereReadUntilTheyWereStopped) {
  EXPECT_EQ(whyNot(curves.readOn(5)), "");
  curves.stop();
  EXPECT_FALSE(curves.isReading());
  EXPECT_EQ(std::ranges::count(tableOf(std::nullopt), '\n'), 11);
}

}  // namespace
}  // namespace touch::test
