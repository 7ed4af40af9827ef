#include "commission/replay/replay.h"

#include "app/touchctl/commands/simulated_hand.h"
#include "commission/bundle/bundle.h"
#include "commission/replay/source_recordings.h"
#include "commission/run/run_folder.h"
#include "measure/judging/verdict.h"
#include "measure/truth/trial.h"
#include "support/files/whole_file.h"
#include "tests/doubles/temporary_folder.h"
#include "tests/doubles/test.h"
#include "tests/simulator/driver/driver_bench.h"

namespace touch::commission {
namespace {

using namespace touch::test;
using namespace measure;
using simulator::SimulatedDriver;

const Limits& industrial() {
  return profiles().front().limits;
}

Plan everything() {
  return {true, true, true, true, LineSet::full, 25};
}

/// When a task was begun, where a measurement has it.
std::optional<Seconds> beginOf(const std::string& task, const Measurement& measurement) {
  for (const measure::Trace& trace : measurement.traces)
    if (trace.task == task && !trace.samples.empty()) return trace.samples.front().time;
  return std::nullopt;
}

Seconds endOf(const Measurement& measurement) {
  Seconds end{};
  for (const measure::Trace& trace : measurement.traces)
    if (!trace.samples.empty()) end = trace.samples.back().time;
  return end;
}

/// All that a hand which never errs finds out. Whatever goes wrong counts as the panel's fault. It
/// takes its time as in `paced`.
Measurement measured(SimulatedDriver& driver, const std::string& controller, const PanelSize& size,
                     const Measurement& paced = {}) {
  Measurement measurement;
  measurement.size = size;
  measurement.plan = everything();
  measurement.sources = {SimulatedHand::source()};
  SimulatedHand hand(Simulation(driver), controller, size);
  for (const std::string& task : tasksOf(measurement.plan)) {
    if (const auto begin = beginOf(task, paced))
      hand.pause(std::max(Seconds{}, *begin - beginOf(tasksOf(paced.plan).front(), paced).value() -
                                         endOf(measurement)));
    for (measure::Trace& trace : hand.carryOut(task, measurement.plan))
      measurement.traces.push_back(std::move(trace));
  }
  for (measure::Trace& trace : measurement.traces)
    trace.blame = Blame::panel;
  return measurement;
}

void become(SimulatedDriver& driver, const Replay& replay) {
  for (const std::string& property : replay.properties)
    ASSERT_EQ(whyNot(driver.simulate("become " + property)), "") << property;
  ASSERT_EQ(whyNot(driver.simulate("become done")), "");
}

Measurement replayed(const Measurement& source) {
  SimulatedDriver driver;
  become(driver, replayOf({commission::Run(), source}));
  return measured(driver, "RS232 DEVICE 1", source.size, source);
}

std::set<std::string_view> causesOf(const Analysis& analysis) {
  std::set<std::string_view> names;
  for (const Cause& cause : analysis.causes)
    names.insert(rowOf(cause.id).name);
  return names;
}

/// Within 5 %, or as near as noise and the steps of a moving finger let it be known.
void expectNear(const std::string& figure, double source, double again, double floor) {
  EXPECT_NEAR(again, source, std::max(0.05 * std::abs(source), floor)) << figure;
}

void expectSameFigures(const Analysis& source, const Analysis& again) {
  const double noise = restNoise(source.rests);
  // The worst sample of a line is a matter of chance; across a crack its course is known from one
  // station to the next.
  const double known = std::max(0.15, 1.5 * noise);
  for (std::size_t i = 0; i < source.lines.size(); ++i) {
    const LineFigures& before = source.lines[i];
    const LineFigures& after = again.lines[i];
    SCOPED_TRACE(before.guide->name);
    // A diagonal runs between the lines that tell the error.
    const double floor = before.guide->name.starts_with('D') ? 4 * known : known;
    expectNear("offset", before.offset, after.offset, floor);
    expectNear("tilt", before.tilt, after.tilt, floor);
    expectNear("straightness", before.straightness.maximum, after.straightness.maximum, floor);
    expectNear("straightness RMS", before.straightness.rms, after.straightness.rms, floor / 2);
    expectNear("largest gap", before.largestGap, after.largestGap, 5);
  }
  expectNear("noise", noise, restNoise(again.rests), 0.005);
  expectNear("mean miss", source.taps->meanMiss, again.taps->meanMiss, known);
  expectNear("worst miss", source.taps->worstMiss, again.taps->worstMiss, 2 * known);
  expectNear("cells touched", source.coverage->part, again.coverage->part, 0.01);
}

/// Lines of a panel that does not know its directions are no lines; those of a hand tell how they
/// were drawn.
bool figuresTellOnlyOfThePanel(CauseId id) {
  constexpr std::array others{CauseId::turned, CauseId::swapped, CauseId::wires, CauseId::hand};
  return std::ranges::find(others, id) == others.end();
}

TEST(Replay, PanelsWithAFaultGiveTheirFiguresAndCausesBack) {
  for (const CauseRow& row : causeTable())
    for (const std::uint32_t seed : {1U, 2U}) {
      SCOPED_TRACE(std::string(row.name) + ' ' + std::to_string(seed));
      std::mt19937 random(1000 * seed + static_cast<std::uint32_t>(row.id));
      truth::Trial trial = truth::goodPanel(random, industrial());
      truth::addFault(trial, row.id, random, industrial());
      if (row.id != CauseId::hand) trial.hand.wander = 0;
      trial.hand.tapSpread = 0;
      const Measurement source = truth::record(trial, everything(), industrial());
      const Analysis before = analyse(source);
      const Analysis after = analyse(replayed(source));
      EXPECT_EQ(causesOf(after), causesOf(before));
      if (figuresTellOnlyOfThePanel(row.id)) expectSameFigures(before, after);
    }
}

/// A controller of the simulator's own with faults, as it was commissioned.
class Commissioned : public simulator::DriverBench {
 protected:
  Commissioned() {
    for (const char* const change :
         {"panel bow 0.012 ", "panel dead-strip 0.09 ", "panel noise 0.0012 "})
      EXPECT_EQ(whyNot(original.simulate(change + name)), "");
    run.controller = name;
    run.unitType = "QMRV1000";
    run.firmware = "M0110100";
    run.settings = {{"rotation", "90"},
                    {"right-click-time", "700 ms"},
                    {"right-click", "off"},
                    {"touch-panel", "on"}};
    run.blockAfter = {"0100", "1018", "3E00", "FF80", "0120", "0040", "4100", "FE00"};
    run.rate = ReportRate{80, 12.5, 20};
  }

  const std::string name = "USB DEVICE 2";
  const PanelSize size{{211}, {158}, SizeSource::user};
  SimulatedDriver original;
  commission::Run run;
};

TEST_F(Commissioned, PanelsMeasureAsTheyDid) {
  const Measurement source = measured(original, name, size);
  become(driver, replayOf({run, source}));
  EXPECT_EQ(driver.GetExistControllers(), 1);
  const Measurement second = measured(driver, name, size);
  const Analysis before = analyse(source);
  const Analysis after = analyse(second);
  EXPECT_THAT(causesOf(before), testing::SizeIs(testing::Ge(2U)));
  EXPECT_EQ(causesOf(after), causesOf(before));
  expectSameFigures(before, after);
  EXPECT_NEAR(after.lines[0].reportRate.value(), 80, 0.1);
}

TEST_F(Commissioned, ControllersSayWhatTheySaid) {
  const Replay replay = replayOf({run, std::nullopt});
  become(driver, replay);
  EXPECT_THAT(replay.unknown,
              ElementsAre(HasSubstr("settings: up-sound, down-sound, double-click, touch-mode"),
                          "where its touches miss", "its noise", "its dead spots"));
  const auto handle = open(name);
  EXPECT_EQ(ask(handle, simulator::framed("OI")), simulator::framed("M0110100"));
  EXPECT_EQ(ask(handle, simulator::framed("UT")), simulator::framed("QMRV1000"));
  EXPECT_EQ(ask(handle, simulator::framed("Uu")), "UIQMRV1001") << "the first model";
  for (std::size_t address = 0; address < run.blockAfter.size(); ++address)
    EXPECT_EQ(ask(handle, simulator::framed("GP0" + std::to_string(address))),
              simulator::framed('0' + run.blockAfter[address]));
  EXPECT_EQ(driver.GetRotation(handle), 1);
  EXPECT_EQ(driver.GetRightClickTime(handle), 700);
  EXPECT_EQ(driver.GetRightClickEnabled(handle), 0);
  EXPECT_EQ(driver.GetReportStatus(handle), 1);
}

TEST(ReplaySource, SaysWhatIsWrongWithIt) {
  const TemporaryFolder folder;
  fs::create_directory(folder.path() / "empty");
  fs::create_directory(folder.path() / "torn");
  folder.write("torn/run.json", "{\"schema\": \"touch commissioning\"");
  fs::create_directory(folder.path() / "good");
  folder.write("good/run.json", runText({}));
  const auto why = [&](const char* name) { return whyNot(readSource(folder.path() / name)); };
  EXPECT_THAT(why("none"), HasSubstr("the bundle of a commissioning, found nothing of that name"));
  EXPECT_THAT(why("torn/run.json"), HasSubstr("a ZIP archive"));
  EXPECT_THAT(why("empty"), HasSubstr("run.json"));
  EXPECT_THAT(why("torn"), HasSubstr("run.json, line 1: expected JSON"));
  EXPECT_EQ(why("good"), "");
  EXPECT_THAT(replayOf(readSource(folder.path() / "good").value()).unknown, testing::SizeIs(9));
  folder.write("good/measurement.json", "{}");
  EXPECT_THAT(why("good"), HasSubstr("measurement.json: expected the member \"schema\""));
}

TEST(ReplaySource, UnpacksTheRecordingsOfABundleForAsLongAsTheyAreWanted) {
  const TemporaryFolder folder;
  commission::Run run;
  run.panel.serialNumber = "A-17";
  const auto made = RunFolder::make(folder.path(), run).value();
  for (const char* name : {"recording.txt", "recording-10.txt", "recording-2.txt"})
    ASSERT_EQ(whyNot(made.write(name, name)), "");
  const auto bundle = writeBundle(made, run).value();
  fs::path unpacked;
  for (const fs::path& source : {made.path(), bundle}) {
    auto recordings = SourceRecordings::of(source).value();
    EXPECT_THAT(recordings.names(),
                ElementsAre("recording.txt", "recording-2.txt", "recording-10.txt"));
    unpacked = recordings.folder().value();
    EXPECT_EQ(readWholeFile(unpacked / "recording-2.txt", 100).value(), "recording-2.txt");
  }
  EXPECT_FALSE(fs::exists(unpacked));
  EXPECT_TRUE(fs::exists(made.path())) << "the run's own folder is not a copy";
}

TEST(ReplaySource, WhatNoControllerSaysIsNotTakenOver) {
  commission::Run run;
  run.controller = "USB\nDEVICE";
  run.firmware = "far too long a text";
  run.unitType = "\x1B[1m";
  run.blockAfter = {"zzzz", "0", "0", "0", "0", "0", "0", "0"};
  run.settings = {{"rotation", "360"}};
  run.rate = ReportRate{1e6, 0, 0};
  const Replay replay = replayOf({run, std::nullopt});
  EXPECT_THAT(replay.properties, ElementsAre("rate 1000"));
  EXPECT_THAT(replay.unknown, testing::SizeIs(8));
}

}  // namespace
}  // namespace touch::commission
