#include <random>

#include "commission/steps/guided_run.h"
#include "tests/faults/fault_world.h"

namespace touch::test {
namespace {

using namespace commission;

/// Somebody who commissions a panel as far as the world lets them.
class Installer {
 public:
  explicit Installer(FaultWorld& world) : world_(world) {}

  /// False when something could not be kept, and they cannot go on.
  bool goOn() {
    auto guided = takeUp();
    if (!guided) return false;
    while (const auto id = guided->next())
      if (!carryOut(*guided, *id)) return false;
    ended_ = guided->run();
    return true;
  }
  const Run& ended() const { return ended_; }
  int drawn() const { return drawn_; }

 private:
  std::optional<GuidedRun> takeUp() {
    const fs::path base = world_.disk() / "runs";
    const UnfinishedRuns found = unfinishedRuns(base);
    if (const UnfinishedRun* const left = found.of("A-17")) {
      auto folder = RunFolder::open(left->folder);
      if (!folder) return std::nullopt;
      return GuidedRun(world_.access(), Backup(world_.disk()), std::move(*folder), left->run);
    }
    Run run;
    run.panel.serialNumber = "A-17";
    run.began = "2026-11-12T14:05:59+0100";
    auto folder = RunFolder::make(base, run);
    if (!folder) return std::nullopt;
    return GuidedRun(world_.access(), Backup(world_.disk()), std::move(*folder), run);
  }

  bool carryOut(GuidedRun& guided, StepId id) {
    switch (id) {
      case StepId::prerequisites:
        return guided.lookAround({}).has_value();
      case StepId::panel:
        return guided.namePanel({"A-17", "Ann", "", "", ""}).has_value();
      case StepId::identity:
        return guided.identify("nexapi").has_value();
      case StepId::settings:
        return guided.compareSettings().has_value();
      case StepId::calibrate:
        guided.beginCalibration();
        return guided.endCalibration(5, true).has_value();
      case StepId::check: {
        const bool settled = guided.takeWayBack()->settle().has_value();
        return settled && guided.endCheck(CheckResult{CheckOutcome::kept, {}}).has_value();
      }
      case StepId::measure:
        return draw(guided) && guided.endMeasurement().has_value();
      case StepId::rate:
        return guided.tellRate().has_value();
      case StepId::verdict:
        return guided.judge().has_value();
      case StepId::sheet:
        return handOver(guided);
    }
    return false;
  }

  static bool handOver(GuidedRun& guided) {
    Trace trace;
    return guided.handOver(RunTrace(trace, guided.folder())).has_value();
  }

  bool draw(GuidedRun& guided) {
    auto measurement = guided.measurement({{200}, {120}, measure::SizeSource::user});
    if (!measurement) return false;
    measurement->sources = {{measure::SourceKind::pointer, 1, 1, true, ""}};
    for (const measure::Guide* line : measure::guidesOf(measurement->plan.lineSet)) {
      if (std::ranges::find(measurement->traces, line->name, &measure::Trace::task) !=
          measurement->traces.end())
        continue;
      ++drawn_;
      measurement->traces.push_back({std::string(line->name), 0, measure::Blame::undecided, {}});
      if (!guided.keep(*measurement)) return false;
    }
    return true;
  }

  FaultWorld& world_;
  Run ended_;
  int drawn_ = 0;
};

TEST(Commissioning, GoesOnWhereItWasAfterAPowerCutAtAnyMoment) {
  constexpr int lines = 10;
  FaultWorld sound{FaultPlan{}};
  Installer usual(sound);
  ASSERT_TRUE(usual.goOn());
  ASSERT_EQ(usual.drawn(), lines);
  std::mt19937 random(17);
  for (int cut = 0; cut < 200; ++cut) {
    const int moment = std::uniform_int_distribution(1, sound.plan.passed)(random);
    SCOPED_TRACE(testing::Message() << "operation " << moment << " of " << sound.plan.passed);
    FaultWorld world{FaultPlan{moment, Fault::gone}};
    Installer installer(world);
    installer.goOn();
    world.plan.failing = 0;
    world.forgetHandles();
    ASSERT_TRUE(installer.goOn());
    EXPECT_LE(installer.drawn(), lines + 1) << "more than the line in hand was drawn again";
    EXPECT_FALSE(nextStep(installer.ended()));
    for (const StepRecord& record : installer.ended().records)
      EXPECT_EQ(record.times + (record.state == StepState::skipped ? 1 : 0), 1);
    const Pause pause(world.plan);
    const UnfinishedRuns left = unfinishedRuns(world.disk() / "runs");
    EXPECT_TRUE(left.runs.empty());
    EXPECT_TRUE(left.damaged.empty()) << "a file is whole";
  }
}

}  // namespace
}  // namespace touch::test
