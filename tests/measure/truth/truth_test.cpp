#include "measure/truth/figures.h"

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <map>

namespace touch::measure {

namespace {

Limits industrial() {
  return profiles().front().limits;
}

Measurement goodMeasurement(const Plan& plan) {
  return truth::record({}, plan, industrial());
}

Outcome outcomeOf(const Measurement& measurement) {
  return judge(measurement, analyse(measurement)).outcome();
}

Plan onlyCoverage() {
  Plan plan;
  plan.lines = false;
  plan.coverage = true;
  return plan;
}

Plan everything() {
  Plan plan = onlyCoverage();
  plan.lines = plan.rest = plan.taps = true;
  plan.lineSet = LineSet::full;
  return plan;
}

/// Takes away the samples of a task that are at such places, in mm.
void erase(Measurement& measurement, std::string_view task,
           const std::function<bool(const PointMm&)>& isThere) {
  for (Trace& trace : measurement.traces)
    if (trace.task == task)
      std::erase_if(trace.samples, [&](const Sample& sample) {
        return isThere(measurement.point(trace, sample));
      });
}

TEST(Truth, FiguresComeOutAsTold) {
  std::map<std::string_view, int> held;
  constexpr int panels = 12;
  for (std::uint32_t seed = 1; seed <= panels; ++seed)
    for (const truth::Told& figure : truth::compareFigures(seed))
      held[figure.figure] += figure.holds() ? 1 : 0;
  for (const auto& [figure, count] : held)
    EXPECT_GE(count, panels - 1) << figure;
}

TEST(Truth, FivePercentDecide) {
  for (const Length limit : truth::triedLimits)
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
      EXPECT_EQ(truth::judgeNear(limit, 1.05, seed), Outcome::fail) << nameOf(limit).name;
      EXPECT_EQ(truth::judgeNear(limit, 0.95, seed), Outcome::pass) << nameOf(limit).name;
    }
}

TEST(Truth, OfManyPanelsCausesAreNamedRight) {
  int right = 0;
  int tried = 0;
  Plan plan;
  plan.lineSet = LineSet::full;
  plan.rest = true;
  Plan quick;
  quick.lineSet = LineSet::ten;
  const auto isAccused = [](const truth::Trial& trial, const Plan& tests) {
    return !analyse(truth::record(trial, tests, industrial())).causes.empty();
  };
  for (const CauseRow& row : causeTable())
    for (std::uint32_t seed = 1; seed <= 2; ++seed) {
      std::mt19937 random(1000 * seed + static_cast<std::uint32_t>(row.id));
      truth::Trial trial = truth::goodPanel(random, industrial());
      EXPECT_FALSE(isAccused(trial, plan)) << row.name;
      EXPECT_FALSE(isAccused(trial, quick)) << row.name << ", ten lines";
      addFault(trial, row.id, random, industrial());
      const auto causes = analyse(truth::record(trial, plan, industrial())).causes;
      ++tried;
      if (!causes.empty() && causes[0].id == row.id) ++right;
    }
  EXPECT_GE(right, tried - 2);
}

/// A ruler is laid beside a line with its own error, and drawn along as straight as it is.
TEST(Truth, AStraightEdgeBesideItsLineIsNoFault) {
  Plan plan;
  plan.lineSet = LineSet::ten;
  std::mt19937 random(1);
  std::uniform_real_distribution beside(-0.25, 0.25);  // mm
  for (int panel = 0; panel < 40; ++panel) {
    truth::Trial trial;
    trial.hand.wander = 0;
    trial.noise = 0.02;
    Measurement measurement = truth::record(trial, plan, industrial());
    for (Trace& trace : measurement.traces) {
      const double apart = beside(random);
      for (Sample& sample : trace.samples)
        (trace.task.starts_with('V') ? sample.x : sample.y) +=
            apart / 211 * measurement.sources[trace.source].stepsX;
    }
    for (const Cause& cause : analyse(measurement).causes)
      ADD_FAILURE() << panel << ": " << rowOf(cause.id).name << ' ' << cause.confidence();
  }
}

TEST(Verdict, IsThatOfTheWorstPart) {
  struct Case {
    const char* what;
    Plan plan;
    Outcome outcome;
    std::function<void(Measurement&)> change;
  };
  const auto first = [](Measurement& measurement, std::string_view task) -> Trace& {
    return *std::ranges::find(measurement.traces, task, &Trace::task);
  };
  const auto farOff = [&](Blame blame) {
    return [=](Measurement& measurement) {
      Trace stray = first(measurement, "V-3");
      for (Sample& sample : stray.samples)
        sample.x += 3000;
      stray.blame = blame;
      measurement.traces.push_back(stray);
    };
  };
  const std::vector<Case> cases = {
      {"all is well", everything(), Outcome::pass, [](Measurement&) {}},
      {"nothing measured", {}, Outcome::incomplete, [](Measurement& m) { m.traces.clear(); }},
      {"a line missing",
       {},
       Outcome::incomplete,
       [](Measurement& m) { std::erase_if(m.traces, [](auto& t) { return t.task == "H-7"; }); }},
      {"half a line",
       {},
       Outcome::incomplete,
       [](Measurement& m) { erase(m, "V-3", [](const PointMm& at) { return at.y() > 80; }); }},
      {"a line in four samples",
       {},
       Outcome::incomplete,
       [&](Measurement& m) {
         auto& samples = first(m, "V-3").samples;
         samples = {samples.front(), samples[50], samples[100], samples.back()};
       }},
      {"no sample in an edge zone",
       {},
       Outcome::incomplete,
       [](Measurement& m) { erase(m, "V-3", [](const PointMm& at) { return at.y() < 3.6; }); }},
      {"a gap of 5 mm",
       {},
       Outcome::incomplete,
       [](Measurement& m) {
         erase(m, "V-3", [](const PointMm& at) { return at.y() > 60 && at.y() < 65; });
       }},
      {"far off, nobody knows why", {}, Outcome::incomplete, farOff(Blame::undecided)},
      {"far off by the panel", {}, Outcome::fail, farOff(Blame::panel)},
      {"far off by the hand", {}, Outcome::pass, farOff(Blame::hand)},
      {"a strip dead on all lines",
       {},
       Outcome::fail,
       [](Measurement& m) {
         for (const Guide* guide : guidesOf(LineSet::eighteen))
           erase(m, guide->name, [](const PointMm& at) { return at.y() > 60 && at.y() < 70; });
       }},
      {"a corner not rubbed", onlyCoverage(), Outcome::incomplete,
       [](Measurement& m) {
         erase(m, rubTask, [](const PointMm& at) { return at.x() < 12 && at.y() < 12; });
       }},
      {"rubbed over a dead spot", onlyCoverage(), Outcome::fail,
       [](Measurement& m) {
         erase(m, rubTask, [](const PointMm& at) {
           return (at - PointMm(100, 80)).cwiseAbs().maxCoeff() < 12;
         });
       }},
      {"a tap that nothing came of", everything(), Outcome::fail,
       [&](Measurement& m) {
         first(m, "tap 2").samples.clear();
         first(m, "tap 2").blame = Blame::panel;
       }},
      {"a tap too few", everything(), Outcome::incomplete,
       [&](Measurement& m) { m.traces.erase(std::ranges::find(m.traces, "tap 4", &Trace::task)); }},
      {"a rest too short", everything(), Outcome::incomplete,
       [&](Measurement& m) { first(m, "rest 2").samples.resize(150); }},
      {"the size corrected",
       {},
       Outcome::fail,
       [](Measurement& m) {
         erase(m, "V-3", [](const PointMm& at) { return at.y() > 60 && at.y() < 62.5; });
         m.traces[0].samples[40].x += 180;
         m.limits[Length::scatter] = {Millimetres{0.2}, std::nullopt};
         m.size = {{422}, {316}, SizeSource::user};
       }},
  };
  for (const Case& tried : cases) {
    Measurement measurement = goodMeasurement(tried.plan);
    tried.change(measurement);
    EXPECT_EQ(outcomeOf(measurement), tried.outcome) << tried.what;
  }
  const Measurement nothing;
  for (const Subject& subject : judge(nothing, analyse(nothing)).subjects)
    for (const Check& check : subject.checks)
      EXPECT_EQ(check.outcome, Outcome::incomplete) << subject.name << ' ' << check.name;
}

TEST(Figures, OfWhatASimulatedPanelDoes) {
  truth::Trial trial;
  trial.hysteresis = {0.6, 0};
  trial.dead = truth::Strip{true, 60, 72};
  const Analysis analysis = analyse(truth::record(trial, everything(), industrial()));
  const auto lineNamed = [&](std::string_view name) -> const LineFigures& {
    return *std::ranges::find_if(analysis.lines,
                                 [&](const LineFigures& line) { return line.guide->name == name; });
  };
  EXPECT_NEAR(hysteresis(lineNamed("V-5"), lineNamed("V-5 back")).value_or(0), 0.6, 0.4);
  const LineFigures& line = lineNamed("H-2");
  EXPECT_NEAR(line.largestGap, 13, 2);
  EXPECT_NEAR(line.reportRate.value_or(0), 100, 1);
  EXPECT_NEAR(line.speed.value_or(0), 120, 8);
  EXPECT_FALSE(line.gaps[0].reportsKeptComing);
  ASSERT_FALSE(analysis.coverage->deadSpots.empty());
  EXPECT_NEAR(analysis.coverage->deadSpots[0].corner.x(), 60, 5);
  EXPECT_NEAR(analysis.coverage->deadSpots[0].size.y(), trial.size.height.value, 5) << "one spot";
  EXPECT_TRUE(analysis.coverage->deadSpots[0].isProven());
}

TEST(Figures, TellTheTimeThatWasLostBeyondAnInterval) {
  Measurement silent = goodMeasurement({});
  auto& samples = std::ranges::find(silent.traces, "V-3", &Trace::task)->samples;
  constexpr std::ptrdiff_t lost = 5;
  samples.erase(samples.begin() + 20, samples.begin() + 20 + lost);
  EXPECT_NEAR(measureLine(silent, *findGuide("V-3")).lost.value_or(0), lost * 0.01, 1e-3);
}

TEST(Limits, AreThoseThatAreDocumented) {
  std::ifstream file(SOURCE_FOLDER "/docs/file-formats.md");
  const std::string documented{std::istreambuf_iterator<char>(file), {}};
  for (std::size_t i = 0; i < lengthCount; ++i) {
    const auto length = static_cast<Length>(i);
    std::string row = fmt::format("| `{}` | {} |", nameOf(length).name, nameOf(length).words);
    for (const Profile& profile : profiles()) {
      const auto& [mm, percent] = profile.limits[length];
      if (mm) row += fmt::format(" {:g} mm", mm->value);
      if (mm && percent) row += ',';
      if (percent) row += fmt::format(" {:g} %", percent->value);
      row += " |";
    }
    EXPECT_NE(documented.find('\n' + row + '\n'), std::string::npos) << row;
  }
}

TEST(Advice, KnowsWhatACalibrationLeaves) {
  // Scaled only: two targets are as good as nine. Bowed: none takes the bow away.
  truth::Trial trial;
  trial.calibrated = false;
  trial.hand.wander = 0;
  trial.scale = {4, 2};
  const auto scaled = analyse(truth::record(trial, {}, industrial())).advice;
  ASSERT_TRUE(scaled);
  EXPECT_NEAR(scaled->now, std::hypot(4, 2), 0.1);
  EXPECT_EQ(scaled->take, 2);
  EXPECT_LT(scaled->floor, 0.1);
  trial.traits.bow = 4 / trial.size.width.value;
  EXPECT_GT(analyse(truth::record(trial, {}, industrial())).advice->floor, 1);
}

}  // namespace

}  // namespace touch::measure
