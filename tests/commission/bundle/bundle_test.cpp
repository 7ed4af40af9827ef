#include "commission/bundle/bundle.h"

#include "commission/bundle/fleet.h"
#include "measure/files/measurement_file.h"
#include "measure/truth/trial.h"
#include "support/files/sha256.h"
#include "support/text/personal_names.h"
#include "tests/app/child_process.h"

namespace touch::commission {
namespace {

using namespace touch::test;
using measure::Json;

constexpr std::chrono::sys_days day = std::chrono::year(2026) / 11 / 12;
constexpr const char* program = "TouchUtility 9.9";

/// A run to its end, and what it has left in its folder.
class BundleTest : public testing::Test {
 protected:
  commission::Run runOf(const std::string& serialNumber, const std::string& began) {
    commission::Run run;
    run.use = "kiosk";
    run.program = program;
    run.panel = {serialNumber, "Ann", "Gate 3", "2026-118", ""};
    run.began = began;
    run.settings = {{"rotation", "0"}};
    run.blockBefore = {"0301", "1A20"};
    run.blockAfter = {"0301", "1B02"};
    run.calibration = CalibrationFacts{5, "kept"};
    for (const Step& step : steps())
      finish(run, step.id, {}, began);
    return run;
  }

  /// The bundle of a run on a panel that touches miss by `offset` mm.
  std::filesystem::path bundleOf(const std::string& serialNumber = "A-17", double offset = 0,
                                 const std::string& began = "2026-11-12T14:05:59+0100") {
    const commission::Run run = runOf(serialNumber, began);
    const auto made = RunFolder::make(folder.path() / "runs", run).value();
    measure::truth::Trial trial;
    trial.size = {{200}, {120}, measure::SizeSource::user};
    trial.hand = {0.02, 0.05, 120};
    trial.offset = {offset, 0};
    const auto measurement =
        measure::truth::record(trial, planOf(run.profile), measure::findProfile(run.use)->limits);
    EXPECT_EQ(whyNot(made.saveMeasurement(measurement)), "");
    const auto report = made.report().value();
    EXPECT_EQ(whyNot(made.write("sheet.html", sheetHtml(sheetOf(run, &*report), &*report))), "");
    EXPECT_EQ(whyNot(made.write("sheet.json", sheetJson(run, &*report).dump(2))), "");
    EXPECT_EQ(whyNot(made.write("sheet.pdf", "%PDF")), "");
    EXPECT_EQ(whyNot(made.write("doctor.txt", "all is well " + personalHome())), "");
    EXPECT_EQ(whyNot(made.write("mine.txt", "the user's")), "");
    const auto written = writeBundle(made, run);
    EXPECT_TRUE(written) << written.error().describe();
    return *written;
  }
  static std::string personalHome() { return personalNames().homeFolders.front() + "/x"; }

  static std::vector<ZipEntry> entriesOf(const std::filesystem::path& bundle) {
    const ZipReader files = Bundle::open(bundle).value().files();
    std::vector<ZipEntry> entries;
    for (const std::string& name : files.names())
      entries.push_back({name, files.content(name).value()});
    return entries;
  }

  /// What is said of a bundle of these.
  BundleCheck checkOf(const std::vector<ZipEntry>& entries) const {
    folder.write("changed.zip", zipArchive(entries, day));
    const auto check = verifyBundle(Bundle::open(folder.path() / "changed.zip").value(), program);
    if (check) return *check;
    return {{}, {}, {check.error().describe()}, {}};
  }

  TemporaryFolder folder;
};

/// With a manifest that fits, as somebody would write who knows how.
std::vector<ZipEntry> withNewHashes(std::vector<ZipEntry> entries) {
  std::string manifest;
  for (const ZipEntry& entry : entries)
    if (entry.name != Bundle::manifestName)
      manifest += sha256(entry.content) + "  " + entry.name + '\n';
  std::ranges::find(entries, Bundle::manifestName, &ZipEntry::name)->content = manifest;
  return entries;
}

std::string& contentIn(std::vector<ZipEntry>& entries, std::string_view name) {
  return std::ranges::find(entries, name, &ZipEntry::name)->content;
}

void replaceIn(std::string& text, std::string_view from, std::string_view to) {
  const auto at = text.find(from);
  ASSERT_NE(at, std::string::npos) << from;
  text.replace(at, from.size(), to);
}

TEST_F(BundleTest, HoldsTheRunAndItsHashesAndNothingPrivate) {
  const auto file = bundleOf();
  EXPECT_EQ(file, folder.path() / "runs" / "A-17-2026-11-12.tub.zip");
  std::set<std::string> names;
  for (const ZipEntry& entry : entriesOf(file)) {
    names.insert(entry.name);
    EXPECT_THAT(entry.content, Not(HasSubstr(personalHome()))) << entry.name;
  }
  EXPECT_EQ(names,
            (std::set<std::string>{"SHA256SUMS", "block-after.vrq", "block-before.vrq",
                                   "doctor.txt", "limits.json", "measurement.json", "run.json",
                                   "settings.json", "sheet.html", "sheet.json", "sheet.pdf"}));
  const auto others = runProgram("/bin/sh", {"-c",
                                             "mkdir \"$1/out\" && cd \"$1/out\" && unzip -q \"$2\" "
                                             "&& sha256sum -c --strict --quiet SHA256SUMS",
                                             "sh", folder.path(), file});
  EXPECT_EQ(others.status, 0) << others.output << others.errors;

  const auto check = verifyBundle(Bundle::open(file).value(), program).value();
  EXPECT_THAT(check.problems, ElementsAre());
  EXPECT_THAT(check.notes, ElementsAre(HasSubstr("sheet.pdf")));
  EXPECT_EQ(check.judged.outcome, measure::Outcome::pass);
  EXPECT_EQ(check.run.panel.serialNumber, "A-17");
  EXPECT_THAT(verifyBundle(Bundle::open(file).value(), "TouchUtility 10").value().notes,
              Contains(HasSubstr("sheet.html")));
}

TEST_F(BundleTest, NamesEachFileThatWasChangedRemovedOrAdded) {
  const auto whole = entriesOf(bundleOf());
  ASSERT_THAT(checkOf(whole).problems, ElementsAre());
  for (std::size_t i = 0; i < whole.size(); ++i) {
    const std::string& name = whole[i].name;
    for (const std::size_t place : {std::size_t{0}, whole[i].content.size() / 2}) {
      auto entries = whole;
      char& byte = entries[i].content[place];
      byte = static_cast<char>(byte ^ 1);
      const auto problems = checkOf(entries).problems;
      ASSERT_FALSE(problems.empty()) << name;
      if (name != Bundle::manifestName) {
        EXPECT_THAT(problems, Contains(HasSubstr(name)));
      }
    }
    auto entries = whole;
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(i));
    EXPECT_THAT(checkOf(entries).problems, Contains(HasSubstr(name))) << "removed";
  }
  auto entries = whole;
  entries.push_back({"note.txt", "x"});
  EXPECT_THAT(checkOf(entries).problems, ElementsAre(HasSubstr("note.txt was added")));
}

TEST_F(BundleTest, NamesWhatDoesNotFollowFromTheSamples) {
  struct Case {
    const char* file;
    const char* from;
    const char* to;
    const char* problem;
  };
  constexpr Case cases[] = {
      {"sheet.json", "\"outcome\": \"PASS\"", "\"outcome\": \"FAIL\"", "outcome is"},
      {"sheet.json", "\"atMost\": ", "\"atMost\": 9", "atMost is"},
      {"sheet.json", "\"use\": \"kiosk\"", "\"use\": \"signature\"", "use is"},
      {"sheet.json", "\"causes\": []", "\"causes\": [1]", "causes is"},
      {"sheet.json", "\"version\": 1,", "\"version\": 1, \"more\": 2,", "more is"},
      {"run.json", "\"serialNumber\": \"A-17\"", "\"serialNumber\": \"A-18\"", "serialNumber is"},
      {"limits.json", "\"mm\": ", "\"mm\": 9", "limits.json"},
      {"block-before.vrq", "1A20", "1A21", "block-before.vrq"},
      {"settings.json", "rotation", "Rotation", "settings.json"},
      {"sheet.html", "PASS", "FAIL", "sheet.html"},
  };
  const auto whole = entriesOf(bundleOf());
  for (const auto& [file, from, to, problem] : cases) {
    auto entries = whole;
    replaceIn(contentIn(entries, file), from, to);
    EXPECT_THAT(checkOf(withNewHashes(entries)).problems, Contains(HasSubstr(problem)))
        << file << ": " << to;
  }
  auto entries = whole;
  std::string& text = contentIn(entries, "measurement.json");
  auto measurement = measure::parseMeasurement(text, "m").value();
  measurement.traces.front().samples.pop_back();
  text = measure::measurementText(measurement, nullptr);
  EXPECT_THAT(checkOf(withNewHashes(entries)).problems, Contains(HasSubstr("sheet.json: ")))
      << "one sample less";
}

TEST_F(BundleTest, AreComparedOverPanelsAndVisits) {
  const auto first = bundleOf("B-2", 0.5, "2026-11-12T14:05:59+0100");
  const auto last = bundleOf("B-2", 9, "2027-11-12T14:05:59+0100");
  bundleOf("A-1");
  bundleOf("");
  bundleOf("", 0, "2026-11-12T15:05:59+0100");
  std::filesystem::copy(last, folder.path() / "runs" / "B-2-2027-11-12" / "copy.tub.zip");
  const auto files = bundlesIn(folder.path()).value();
  EXPECT_EQ(files.size(), 6U) << "in all folders, and nothing but bundles";
  std::vector<Visit> visits;
  for (const auto& file : files)
    visits.push_back(readVisit(file).value());
  const auto panels = panelsOf(visits);
  ASSERT_EQ(panels.size(), 4U) << "nobody knows whether those without a number are one";
  EXPECT_EQ(panels[0].last.serialNumber, "B-2") << "what failed stands first";
  EXPECT_EQ(panels[0].last.outcome, measure::Outcome::fail);
  EXPECT_EQ(panels[0].visits, 2U) << "the copy is no visit of its own";
  EXPECT_EQ(panels[0].last.began, "2027-11-12T14:05:59+0100");
  EXPECT_THAT(panels[0].last.causes, Contains("offset"));
  ASSERT_FALSE(panels[0].drifts.empty());
  EXPECT_GT(panels[0].drifts.front().last.value, panels[0].drifts.front().first.value + 5);
  EXPECT_EQ(panels[3].visits, 1U);
  EXPECT_THAT(panels[3].drifts, ElementsAre());

  EXPECT_THAT(bundlesIn(first).error().describe(), HasSubstr(first.string()));

  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"\"outcome\": \"PASS\"", "\"outcome\": \"WELL\"", "sheet.json, outcome: expected one of"},
      {"\"version\": 1", "\"version\": 2", "sheet.json, version: expected version 1"},
      {"commissioning sheet", "measurement", "sheet.json, schema: expected"},
      {"{", "{\"a\": 1e999,", "sheet.json: expected numbers below"},
  };
  for (const auto& [from, to, problem] : cases) {
    auto entries = entriesOf(first);
    replaceIn(contentIn(entries, "sheet.json"), from, to);
    folder.write("odd.zip", zipArchive(entries, day));
    const auto read = readVisit(folder.path() / "odd.zip");
    ASSERT_FALSE(read) << to;
    EXPECT_THAT(read.error().describe(), HasSubstr(problem));
  }
}

}  // namespace
}  // namespace touch::commission
