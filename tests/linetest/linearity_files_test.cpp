#include "linetest/linearity_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "linetest/drawing_file.h"
#include "linetest/linearity_plot.h"
#include "linetest/svg_surface.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

constexpr MeasuredPanel panel{{20000, 10000}, 200, 100};
constexpr TestLine secondLine{Orientation::vertical, 2};

LineResult resultOf(std::vector<TwipsPoint> samples) {
  const GuidedLine guide{Orientation::vertical, 3000};
  const LineFigures figures = measureLine(guide, samples, panel);
  return {"V-2", guide, std::move(samples), figures};
}

const char* const wholeFile =
    "V-2\r\n"
    " 20000         10000 \r\n"
    " 200           100 \r\n"
    " 3000 \r\n"
    " 2 \r\n"
    " 3050          500           0.5 \r\n"
    " 2900          9000.5       -1 \r\n"
    "-0.25          0.5          -1             0.7905694 \r\n";

TEST(ResultFile, HasItsRecordsInOrder) {
  EXPECT_EQ(resultText(resultOf({{3050, 500}, {2900, 9000.5F}}), panel), wholeFile);
}

TEST(ResultFile, KeepsEveryByteWhenReadAndWrittenAgain) {
  const test::TemporaryFolder folder;
  std::vector<TwipsPoint> samples;
  for (float i = 0; i < 3001; ++i)
    samples.push_back({3000 + i / 3, i * 3.3F});
  ASSERT_EQ(writeResult(folder.path(), secondLine, resultOf(samples), panel), std::nullopt);
  const auto read = readResult(folder.path(), secondLine);
  ASSERT_TRUE(read) << read.error().describe();
  EXPECT_EQ(read->result.samples, samples);
  EXPECT_EQ(resultText(read->result, read->panel), folder.read("Tvm-v2.txt"));
  EXPECT_EQ(resultFileName({Orientation::horizontal, 9}), "Tvm-h9.txt");
}

TEST(ResultFile, SaysWhereItIsDamaged) {
  const struct {
    const char* old;
    const char* damaged;
    const char* error;
  } cases[] = {
      {"V-2", "V-3", "1: expected the line's name \"V-2\", found \"V-3\""},
      {"20000", "0", "2: expected the screen's width in twips, found \"0\""},
      {" 100 ", "-1", "3: expected the panel's height in mm, found \"-1\""},
      {" 2 \r", " 3 \r", "9: expected the maximum, found the end of the file"},
      {" 2 \r", " 0 \r", "5: expected a count of samples from 1 to 3001, found \"0\""},
      {"0.7905694", "", "9: expected the RMS, found the end of the file"},
      {"0.7905694", "1 2", "8: expected the end of the file, found \"2\""},
  };
  for (const auto& c : cases) {
    std::string damaged = wholeFile;
    damaged.replace(damaged.find(c.old), std::string_view(c.old).size(), c.damaged);
    const auto read = parseResult(damaged, secondLine, "f");
    ASSERT_FALSE(read) << c.error;
    EXPECT_EQ(read.error().describe(), std::string("f, line ") + c.error);
  }
}

TEST(ResultFiles, AreWrittenLineByLineAndTakenUpAgain) {
  const test::TemporaryFolder folder;
  LinearityProcedure procedure(panel);
  const auto drawAndKeepIn = [&procedure](const std::filesystem::path& where) {
    procedure.penDown({2969, 0});
    for (int i = 1; i < 9; ++i)
      procedure.penMove({2969, static_cast<float>(i) * 1200});
    procedure.penUp();
    return keepAndGoOn(where, procedure);
  };
  EXPECT_EQ(keepAndGoOn(folder.path(), procedure), std::nullopt) << "passes over V-1";
  EXPECT_EQ(drawAndKeepIn(folder.path()), std::nullopt);
  EXPECT_EQ(procedure.current(), (TestLine{Orientation::vertical, 3}));
  folder.write("Tvm-h1.txt", "H-1\r\n torn");

  const struct {
    const char* what;
    MeasuredPanel panel;
    std::size_t results;
  } cases[] = {
      {"as a file rounds it", {{20000, 10000}, 200.004, 100}, 1},
      {"another screen", {{20000, 12000}, 200, 100}, 0},
      {"another panel", {{20000, 10000}, 250, 100}, 0},
  };
  for (const auto& c : cases)
    EXPECT_EQ(readResults(folder.path(), c.panel).size(), c.results) << c.what;
  EXPECT_EQ(readResults(folder.path(), panel).front().first, secondLine);

  procedure.goTo(secondLine);
  EXPECT_TRUE(drawAndKeepIn(folder.path() / "none")) << "nowhere to write";
  EXPECT_TRUE(procedure.result(secondLine));
}

TEST(LinearityCsv, HasARecordForEachLine) {
  const LineResult results[] = {resultOf({{3050, 500}, {3050, 1000}})};
  EXPECT_EQ(csvText(results, panel, {0.4, 2}),
            "line,samples,average,maximum,minimum,rms,absolute maximum,centre absolute maximum,"
            "edge absolute maximum,offset,tilt per 100 mm,straightness,straightness rms,"
            "largest gap,coverage,absolute maximum in percent,centre,edge\r\n"
            "V-2,2,0.500,0.500,0.500,0.500,0.500,0.500,0.000,0.500,0.000,0.000,0.000,5.000,0.050,"
            "0.250,fail,pass\r\n");
}

TEST(MeasuredDrawing, TakesEachStrokeToItsNearestGuide) {
  const test::TemporaryFolder folder;
  // Guide lines at 625, 5312.5, 10000, … and 312.5, 2656.25, 5000, …
  const Stroke strokes[] = {
      {12, 1, {{5412.5F, 0}, {5412.5F, 5000}, {5412.5F, 9000}}},
      {12, 1, {{0, 4950}, {20000, 4950}}},
  };
  const auto path = folder.path() / "a.fdw";
  ASSERT_EQ(writeDrawing(path, strokes), std::nullopt);
  const auto results = measureDrawing(path, panel);
  ASSERT_TRUE(results) << results.error().describe();
  ASSERT_EQ(results->size(), 2u);
  EXPECT_EQ(results->at(0).label, "V-2");
  EXPECT_NEAR(results->at(0).figures.offset, 1, 1e-4);
  EXPECT_EQ(results->at(1).label, "H-3");
  EXPECT_NEAR(results->at(1).figures.all.average, -0.5, 1e-4);

  folder.write("a.fdw", "GIF89a");
  EXPECT_EQ(measureDrawing(path, panel).error().line, 1);
  const MeasuredPanel nominal = MeasuredPanel::ofNominalSize({14400, 7200});
  EXPECT_NEAR(nominal.widthMm, 254, 1e-9);
}

TEST(SvgSurface, WritesShapes) {
  SvgSurface page({1500, 750});
  page.line({0, 1}, {2.25F, 3}, palette[12], 2);
  page.circle({4, 5}, 6, palette[0], 1);
  page.area({7, 8}, {9, 10}, white);
  page.text({1, 2}, "a < b & c", palette[9], 190, TextAnchor::end);
  EXPECT_EQ(page.document(),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100.0\" height=\"50.0\" "
            "viewBox=\"0 0 1500.0 750.0\" font-family=\"sans-serif\">\n"
            "<line x1=\"0.0\" y1=\"1.0\" x2=\"2.3\" y2=\"3.0\" fill=\"none\" stroke=\"#FF0000\" "
            "stroke-width=\"30.0\" stroke-linecap=\"round\"/>\n"
            "<circle cx=\"4.0\" cy=\"5.0\" r=\"6.0\" fill=\"none\" stroke=\"#000000\" "
            "stroke-width=\"15.0\" stroke-linecap=\"round\"/>\n"
            "<rect x=\"7.0\" y=\"8.0\" width=\"9.0\" height=\"10.0\" fill=\"#FFFFFF\"/>\n"
            "<text x=\"1.0\" y=\"2.0\" font-size=\"190.0\" fill=\"#0000FF\" "
            "text-anchor=\"end\">a &lt; b &amp; c</text>\n"
            "</svg>\n");
}

TEST(LinearityPage, ShowsEveryLineAndStaysOnThePage) {
  const std::regex places(" c?([xy])[12]?=\"([-0-9.]+)\"");
  for (const MeasuredPanel& shape :
       {panel, MeasuredPanel{{10000, 20000}, 100, 200}, MeasuredPanel{{15000, 15000}, 30, 30}}) {
    std::vector<LineResult> results;
    for (const Orientation orientation : {Orientation::vertical, Orientation::horizontal}) {
      for (int number = 1; number <= 9; ++number) {
        const TestLine at{orientation, number};
        const GuidedLine guide = guideOf(at, shape.screen);
        const float off = guide.position + (number == 5 ? 300.0F : 20.0F);
        std::vector<TwipsPoint> samples;
        for (float along = 0; along <= 10000; along += 200)
          samples.push_back(orientation == Orientation::vertical ? TwipsPoint{off, along}
                                                                 : TwipsPoint{along, off});
        results.push_back({labelOf(at), guide, samples, measureLine(guide, samples, shape)});
      }
    }
    const std::string page = linearitySvg(results, shape, {0.5, 0.5});
    for (const LineResult& result : results) {
      const char* const verdict = result.label.ends_with('5') ? "  FAIL<" : "  pass<";
      EXPECT_THAT(page, testing::HasSubstr('>' + result.label + verdict));
    }
    int shown = 0;
    for (std::sregex_iterator place(page.begin(), page.end(), places), end; place != end; ++place) {
      const float limit = (*place)[1] == "x" ? linearityPage.width : linearityPage.height;
      const float at = std::stof((*place)[2]);
      EXPECT_TRUE(at >= 0 && at <= limit) << place->str();
      ++shown;
    }
    EXPECT_GT(shown, 18 * 50);
  }
  EXPECT_THAT(linearitySvg({}, panel, {}), testing::HasSubstr("<svg"));
}

}  // namespace
}  // namespace touch
