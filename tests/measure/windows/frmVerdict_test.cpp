#include "measure/windows/frmVerdict.h"

#include <QSignalSpy>

#include "drawing/svg_surface.h"
#include "measure/truth/trial.h"
#include "support/text/text_encoding.h"
#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

using measure::frmVerdict, measure::measurementPdf, measure::measurementPng, measure::Report,
    measure::ReportPages, measure::SizeSource;

constexpr double bowed = 0.02;

measure::Measurement panelOf(double bow, SizeSource source) {
  measure::truth::Trial trial;
  trial.traits.bow = bow;
  trial.size.source = source;
  measure::Plan plan;
  plan.rest = plan.taps = plan.coverage = true;
  return measure::truth::record(trial, plan, measure::profiles().front().limits);
}

class VerdictPage : public WindowDesk {
 protected:
  void show(measure::Measurement measurement) {
    QSignalSpy spy(&page, &frmVerdict::shown);
    page.showMeasurement(std::move(measurement));
    ASSERT_TRUE(spy.count() > 0 || spy.wait());
  }
  frmVerdict page;
};

TEST_F(VerdictPage, ShowsWhatItRestsOn) {
  shown = &page;
  page.showMeasurement(panelOf(0, SizeSource::user));  // not the last one
  show(panelOf(bowed, SizeSource::nominal));
  EXPECT_EQ(text("verdictWord"), "FAIL");
  EXPECT_THAT(text("verdictPanel"), HasSubstr("nominal"));
  EXPECT_THAT(text("verdictCauses"), AllOf(HasSubstr("bowed"), HasSubstr("targets")));
  const auto* const figures = find<QTreeWidget>("verdictFigures");
  // The panel, 18 lines, the rest and its five places, taps, coverage.
  ASSERT_EQ(figures->topLevelItemCount(), 27);
  for (int subject = 0; subject < figures->topLevelItemCount(); ++subject) {
    const QTreeWidgetItem& item = *figures->topLevelItem(subject);
    EXPECT_EQ(item.isExpanded(), item.text(4) != "PASS") << item.text(0).toStdString();
    for (int row = 0; row < item.childCount(); ++row) {
      const QTreeWidgetItem& check = *item.child(row);
      EXPECT_EQ(check.text(1).contains("mm"), check.text(1).endsWith("nominal"));
    }
  }
}

TEST_F(VerdictPage, WritesPagesThatAllSayWhetherTheSizeIsAGuess) {
  measure::Measurement measurement = panelOf(bowed, SizeSource::nominal);
  // Longer than a row, of letters of three bytes, and without a blank.
  for (int letter = 0; letter < 100; ++letter)
    measurement.conditions.panel += "\u677f";
  show(std::move(measurement));
  const Report& report = *page.report();
  EXPECT_EQ(QImage::fromData(measurementPng(report)).width(), 1600);
  const QByteArray pdf = measurementPdf(report);
  EXPECT_TRUE(pdf.startsWith("%PDF"));
  const ReportPages pages(report);
  EXPECT_EQ(pdf.count("/Type /Page\n"), static_cast<int>(pages.count()));
  for (std::size_t number = 0; number < pages.count(); ++number) {
    SvgSurface picture(measure::mapPage);
    pages.draw(picture, number);
    EXPECT_THAT(picture.document(), HasSubstr("nominal")) << number;
    EXPECT_TRUE(isUtf8(picture.document())) << number;
  }
}

TEST(VerdictPageAlone, CanBeClosedWhileItAnalyses) {
  for (int time = 0; time < 5; ++time) {
    frmVerdict page;
    page.showMeasurement(panelOf(bowed, SizeSource::user));
    page.showMeasurement(panelOf(bowed, SizeSource::user));
    QApplication::processEvents();
  }
}

}  // namespace
}  // namespace touch::test
