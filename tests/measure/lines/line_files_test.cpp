#include "measure/lines/line_files.h"

#include <regex>

#include "measure/lines/lines_csv.h"
#include "measure/lines/lines_page.h"
#include "tests/doubles/comma_locale.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

using namespace measure;

constexpr TwipsSize screen{20000, 10000};
constexpr PanelSize size{{200}, {100}, SizeSource::user};
const Guide& secondLine = *findGuide("V-2");

const char* const wholeFile =
    "V-2\r\n"
    " 20000         10000 \r\n"
    " 200           100 \r\n"
    " 3000 \r\n"
    " 2 \r\n"
    " 3050          500           0.5 \r\n"
    " 2900          9000.5       -1 \r\n"
    "-0.25          0.5          -1             0.7905694 \r\n";

TEST(LineFile, HasItsRecordsInOrderAndIsReadAgain) {
  const TemporaryFolder folder;
  LineFile line = lineFileOf(secondLine, screen, size, {{3050, 500}, {2900, 9000.5F}});
  EXPECT_EQ(line.position, 2968.75F);
  line.position = 3000;
  ASSERT_EQ(whyNot(writeLineFile(folder.path(), line)), "");
  EXPECT_EQ(folder.read("Tvm-v2.txt"), wholeFile);
  const auto read = readLineFile(folder.path(), secondLine);
  ASSERT_EQ(whyNot(read), "");
  EXPECT_EQ(read->samples, line.samples);
  EXPECT_EQ(lineFileText(*read), wholeFile);
}

TEST(LineFile, SaysWhereItIsDamaged) {
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
    EXPECT_EQ(whyNot(parseLineFile(damaged, secondLine, "f")), std::string("f, line ") + error);
  }
}

TEST(LineFiles, AreWrittenLineByLineAndTakenUpAgain) {
  const TemporaryFolder folder;
  Measurement measurement;
  measurement.size = size;
  LineProcedure procedure(measurement, screen);
  const auto drawAndKeepIn = [&procedure](const fs::path& where) {
    procedure.penDown({{2969, 0}});
    for (float along = 1200; along < 10000; along += 1200)
      procedure.penMove({{2969, along}});
    procedure.penUp();
    return keepAndGoOn(where, procedure, size);
  };
  EXPECT_EQ(whyNot(keepAndGoOn(folder.path(), procedure, size)), "") << "passes over V-1";
  EXPECT_EQ(whyNot(drawAndKeepIn(folder.path())), "");
  procedure.goTo(secondLine);
  EXPECT_NE(whyNot(drawAndKeepIn(folder.path() / "none")), "") << "nowhere to write";
  EXPECT_FALSE(procedure.kept(secondLine).empty());

  const char* const torn = "V-2\r\n torn";
  folder.write("Tvm-h1.txt", torn);
  const auto taken = [&](TwipsSize on, PanelSize of) {
    Measurement other;
    other.size = of;
    return readLineFiles(folder.path(), LineProcedure(other, on), of);
  };
  // A file rounds it.
  ASSERT_EQ(taken(screen, {{200.004}, {100}}).guides(), std::vector{&secondLine});
  EXPECT_TRUE(taken({20000, 12000}, size).lines.empty()) << "another screen";
  EXPECT_TRUE(taken(screen, {{250}, {100}}).lines.empty()) << "another panel";
  ASSERT_EQ(taken(screen, size).damaged.size(), 1u);
  EXPECT_EQ(taken(screen, size).damaged.front().describe(),
            (folder.path() / "Tvm-h1.txt").string() +
                ", line 1: expected the line's name \"H-1\", found \"V-2\"");

  folder.write("Tvm-v2.txt", torn);
  folder.write("Tvm-v2.txt.old", "older");
  for (const char* const what : {"what is not measured here is kept", "what is, is replaced"}) {
    procedure.goTo(secondLine);
    EXPECT_EQ(whyNot(drawAndKeepIn(folder.path())), "") << what;
    EXPECT_EQ(taken(screen, size).guides(), std::vector{&secondLine}) << what;
    EXPECT_EQ(folder.read("Tvm-v2.txt.old"), "older") << what;
    EXPECT_EQ(folder.read("Tvm-v2.txt.old2"), torn) << what;
    EXPECT_EQ(folder.read("Tvm-v2.txt.old3"), "") << what;
  }
  const Guide* const both[] = {findGuide("H-1"), &secondLine};
  EXPECT_EQ(whyNot(setAside(folder.path(), both)), "");
  EXPECT_EQ(folder.read("Tvm-h1.txt.old3"), torn) << "with the number of all";
  EXPECT_TRUE(taken(screen, size).lines.empty() && taken(screen, size).damaged.empty());
  EXPECT_THAT(whyNot(setAside(folder.path(), both)), HasSubstr("a file that can be renamed"));
}

/// Every line drawn 0.2 mm off its guide, the fifth ones 3 mm; V-2 in four samples.
Measurement drawnLines(PanelSize of, LineSet set = LineSet::eighteen) {
  Measurement measurement;
  measurement.size = of;
  measurement.plan.lineSet = set;
  measurement.conditions.serialNumber = "A-17, \"left\"";
  measurement.sources = {{SourceKind::pointer, of.width.value, of.height.value, false, ""}};
  for (const Guide* guide : guidesOf(measurement.plan.lineSet)) {
    const GuideFrame frame(*guide, of);
    const int samples = guide == &secondLine ? 3 : 200;
    measure::Trace trace{std::string(guide->name), 0, Blame::undecided, {}};
    for (int i = 0; i <= samples; ++i) {
      const PointMm at = frame.at(frame.length() * i / samples) +
                         (guide->name.ends_with('5') ? 3 : 0.2) * frame.normal();
      trace.samples.push_back({{}, at.x(), at.y()});
    }
    measurement.traces.push_back(std::move(trace));
  }
  return measurement;
}

TEST(LinesCsv, HasARecordForEachLineWhateverTheLanguage) {
  const CommaLocale locale;
  for (const SizeSource source : {SizeSource::user, SizeSource::nominal}) {
    const Measurement measurement = drawnLines({{200}, {100}, source});
    const Analysis analysis = analyse(measurement);
    const std::string csv = linesCsv(measurement, analysis, judge(measurement, analysis));
    EXPECT_THAT(csv, StartsWith(source == SizeSource::user
                                    ? "line,verdict,samples,byHand,coverage %,gap mm,offset mm,"
                                    : "line,verdict,samples,byHand,coverage %,gap mm nominal,"));
    EXPECT_THAT(csv, HasSubstr("\r\nV-1,PASS,201.000,0.000,100.000,0.500,0.200,"));
    EXPECT_THAT(csv, HasSubstr("\r\nV-2,INCOMPLETE,4.000,"));
    EXPECT_THAT(csv, HasSubstr("\r\nH-5,FAIL,201.000,0.000,100.000,1.000,3.000,"));
    EXPECT_THAT(csv, HasSubstr(",\"A-17, \"\"left\"\"\","));
    EXPECT_EQ(std::ranges::count(csv, '\n'), 19);
  }
}

TEST(LinesPage, ShowsEveryLineWithItsVerdictAndStaysOnThePage) {
  const std::regex places(" c?([xy])[12]?=\"([-0-9.]+)\"");
  for (const PanelSize& shape : {size, PanelSize{{60}, {110}}}) {
    Measurement measurement = drawnLines(shape);
    const Analysis analysis = analyse(measurement);
    const Verdict verdict = judge(measurement, analysis);
    const std::string page = linesSvg(measurement, analysis, verdict);
    for (const auto& line : analysis.lines) {
      const auto outcome = verdict.find(line.guide->name)->outcome();
      EXPECT_EQ(outcome, line.guide == &secondLine         ? Outcome::incomplete
                         : line.guide->name.ends_with('5') ? Outcome::fail
                                                           : Outcome::pass);
      EXPECT_THAT(page, HasSubstr(std::string(">") + std::string(line.guide->name) + ' ' +
                                  wordOf(outcome) + '<'));
    }
    EXPECT_THAT(page, HasSubstr(">FAIL   15 of 18 lines pass<"));
    EXPECT_EQ(page.find("nominal") != page.npos, shape.source == SizeSource::nominal);
    int shown = 0;
    for (std::sregex_iterator place(page.begin(), page.end(), places), end; place != end; ++place) {
      const float limit = (*place)[1] == "x" ? linesPage.width : linesPage.height;
      const float at = std::stof((*place)[2]);
      EXPECT_TRUE(at >= 0 && at <= limit) << place->str();
      ++shown;
    }
    EXPECT_GT(shown, 18 * 50);
  }
  const Measurement none;
  const Analysis analysis = analyse(none);
  EXPECT_THAT(linesSvg(none, analysis, judge(none, analysis)),
              HasSubstr(">INCOMPLETE   0 of 18 lines pass<"));
}

/// Where texts stand; nothing else.
class TextPlaces final : public ChartSurface {
 public:
  struct Written {
    std::string text;
    float left;
    float right;
    float top;
    float bottom;
  };
  std::vector<Written> texts;

  void clear() override { texts.clear(); }
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint, float, Colour, int) override {}
  void area(TwipsPoint, TwipsSize, Colour) override {}
  void text(TwipsPoint at, std::string_view text, Colour, float height,
            TextAnchor anchor) override {
    const auto letters = std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; });
    const float width = 0.6F * height * static_cast<float>(letters);
    const float left = anchor == TextAnchor::start    ? at.x
                       : anchor == TextAnchor::middle ? at.x - width / 2
                                                      : at.x - width;
    texts.push_back({std::string(text), left, left + width, at.y - 0.7F * height, at.y});
  }
};

TEST(LinesPage, KeepsItsTextsApart) {
  for (const LineSet set : {LineSet::ten, LineSet::eighteen, LineSet::full})
    for (const SizeSource source : {SizeSource::user, SizeSource::nominal}) {
      Measurement measurement = drawnLines({{200}, {100}, source}, set);
      const Analysis analysis = analyse(measurement);
      TextPlaces page;
      drawLinesPage(page, measurement, analysis, judge(measurement, analysis));
      ASSERT_GT(page.texts.size(), 100u);
      for (auto a = page.texts.begin(); a != page.texts.end(); ++a)
        for (auto b = a + 1; b != page.texts.end(); ++b)
          EXPECT_FALSE(a->left < b->right && b->left < a->right && a->top < b->bottom &&
                       b->top < a->bottom)
              << a->text << " covers " << b->text;
    }
}

}  // namespace
}  // namespace touch::test
