#include "linetest/linearity/linearity_files.h"

#include <regex>

#include "linetest/linearity/linearity_plot.h"
#include "tests/doubles/comma_locale.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
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

TEST(ResultFile, HasItsRecordsInOrderAndIsReadAgain) {
  const TemporaryFolder folder;
  const LineResult result = resultOf({{3050, 500}, {2900, 9000.5F}});
  ASSERT_EQ(whyNot(writeResult(folder.path(), secondLine, result, panel)), "");
  EXPECT_EQ(folder.read("Tvm-v2.txt"), wholeFile);
  const auto read = readResult(folder.path(), secondLine);
  ASSERT_EQ(whyNot(read), "");
  EXPECT_EQ(read->result.samples, result.samples);
  EXPECT_EQ(resultText(read->result, read->panel), wholeFile);
}

TEST(ResultFile, SaysWhereItIsDamaged) {
  const char* const cases[][3] = {
      {"V-2", "V-3", "1: expected the line's name \"V-2\", found \"V-3\""},
      {"20000", "0", "2: expected the screen's width in twips, found \"0\""},
      {" 100 ", "-1", "3: expected the panel's height in mm, found \"-1\""},
      {" 2 \r", " 3 \r", "9: expected the maximum, found the end of the file"},
      {" 2 \r", " 0 \r", "5: expected a count of samples from 1 to 3001, found \"0\""},
      {"0.7905694", "1 2", "8: expected the end of the file, found \"2\""},
  };
  for (const auto& [old, replacement, error] : cases) {
    std::string damaged = wholeFile;
    damaged.replace(damaged.find(old), std::string_view(old).size(), replacement);
    EXPECT_EQ(whyNot(parseResult(damaged, secondLine, "f")), std::string("f, line ") + error);
  }
}

TEST(ResultFiles, AreWrittenLineByLineAndTakenUpAgain) {
  const TemporaryFolder folder;
  LinearityProcedure procedure(panel);
  const auto drawAndKeepIn = [&procedure](const fs::path& where) {
    procedure.penDown({2969, 0});
    for (float along = 1200; along < 10000; along += 1200)
      procedure.penMove({2969, along});
    procedure.penUp();
    return keepAndGoOn(where, procedure);
  };
  EXPECT_EQ(whyNot(keepAndGoOn(folder.path(), procedure)), "") << "passes over V-1";
  EXPECT_EQ(whyNot(drawAndKeepIn(folder.path())), "");
  procedure.goTo(secondLine);
  EXPECT_NE(whyNot(drawAndKeepIn(folder.path() / "none")), "") << "nowhere to write";
  EXPECT_TRUE(procedure.result(secondLine));

  const char* const torn = "V-2\r\n torn";
  folder.write("Tvm-h1.txt", torn);
  const auto taken = [&](const MeasuredPanel& of) { return readResults(folder.path(), of); };
  // A file rounds it.
  ASSERT_EQ(taken({{20000, 10000}, 200.004, 100}).lines(), std::vector{secondLine});
  EXPECT_TRUE(taken({{20000, 12000}, 200, 100}).lines().empty()) << "another screen";
  EXPECT_TRUE(taken({{20000, 10000}, 250, 100}).lines().empty()) << "another panel";
  ASSERT_EQ(taken(panel).damaged.size(), 1u);
  EXPECT_EQ(taken(panel).damaged.front().describe(),
            (folder.path() / "Tvm-h1.txt").string() +
                ", line 1: expected the line's name \"H-1\", found \"V-2\"");

  folder.write("Tvm-v2.txt", torn);
  folder.write("Tvm-v2.txt.old", "older");
  for (const char* const what : {"what is not measured here is kept", "what is, is replaced"}) {
    procedure.goTo(secondLine);
    EXPECT_EQ(whyNot(drawAndKeepIn(folder.path())), "") << what;
    EXPECT_EQ(taken(panel).lines(), std::vector{secondLine}) << what;
    EXPECT_EQ(folder.read("Tvm-v2.txt.old"), "older") << what;
    EXPECT_EQ(folder.read("Tvm-v2.txt.old2"), torn) << what;
    EXPECT_EQ(folder.read("Tvm-v2.txt.old3"), "") << what;
  }
  const TestLine both[] = {{Orientation::horizontal, 1}, secondLine};
  EXPECT_EQ(whyNot(setAside(folder.path(), both)), "");
  EXPECT_EQ(folder.read("Tvm-h1.txt.old3"), torn) << "with the number of all";
  EXPECT_TRUE(taken(panel).lines().empty() && taken(panel).damaged.empty());
  EXPECT_THAT(whyNot(setAside(folder.path(), both)), HasSubstr("a file that can be renamed"));
}

TEST(LinearityCsv, HasARecordForEachLineWhateverTheLanguage) {
  const CommaLocale locale;
  const LineResult results[] = {resultOf({{3050, 500}, {3050, 1000}})};
  EXPECT_EQ(csvText(results, panel, {0.4, 2}),
            "line,samples,average,maximum,minimum,rms,absolute maximum,centre absolute maximum,"
            "edge absolute maximum,offset,tilt per 100 mm,straightness,straightness rms,"
            "largest gap,coverage,absolute maximum in percent,centre,edge\r\n"
            "V-2,2,0.500,0.500,0.500,0.500,0.500,0.500,0.000,0.500,0.000,0.000,0.000,5.000,0.050,"
            "0.250,fail,pass\r\n");
}

TEST(LinearityPage, ShowsEveryLineAndStaysOnThePage) {
  const std::regex places(" c?([xy])[12]?=\"([-0-9.]+)\"");
  for (const MeasuredPanel& shape : {panel, MeasuredPanel{{10000, 20000}, 30, 60}}) {
    std::vector<LineResult> results;
    for (std::size_t index = 0; index < LinearityProcedure::lines; ++index) {
      const TestLine at{index < 9 ? Orientation::vertical : Orientation::horizontal,
                        static_cast<int>(index % 9) + 1};
      const GuidedLine guide = guideOf(at, shape.screen);
      const float off = guide.position + (at.number == 5 ? 300.0F : 20.0F);
      std::vector<TwipsPoint> samples;
      for (float along = 0; along <= 10000; along += 200)
        samples.push_back(index < 9 ? TwipsPoint{off, along} : TwipsPoint{along, off});
      results.push_back({labelOf(at), guide, samples, measureLine(guide, samples, shape)});
    }
    const std::string page = linearitySvg(results, shape, {0.5, 0.5});
    for (const LineResult& result : results) {
      const char* const verdict = result.label.ends_with('5') ? "  FAIL<" : "  pass<";
      EXPECT_THAT(page, HasSubstr('>' + result.label + verdict));
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
  const std::string empty = linearitySvg({}, panel, {});
  EXPECT_THAT(empty, StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\""));
  EXPECT_THAT(empty, EndsWith("</text>\n</svg>\n"));
}

}  // namespace
}  // namespace touch::test
