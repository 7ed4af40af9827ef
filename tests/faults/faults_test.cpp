#include <iostream>

#include "tests/faults/scenarios.h"

namespace touch::test {
namespace {

/// Whatever a user does is done once for each outside operation that it takes and each way in which that can fail.
class Faults : public testing::TestWithParam<Scenario> {};

TEST_P(Faults, LeaveNothingOpenHalfDoneOrUnsaid) {
  const auto [name, run] = GetParam();
  FaultWorld sound{FaultPlan()};
  const Outcome usual = run(sound);
  ASSERT_TRUE(usual.done) << usual.told;
  ASSERT_EQ(sound.disorder(), "");
  const int operations = sound.plan.passed();
  ASSERT_GT(operations, 0);

  int harmless = 0;
  int runs = 0;
  for (const Fault fault : {Fault::refused, Fault::nonsense, Fault::gone}) {
    for (int failing = 1; failing <= operations; ++failing, ++runs) {
      SCOPED_TRACE(testing::Message() << "operation " << failing << " of " << operations
                                      << ", fault " << static_cast<int>(fault));
      FaultWorld world{FaultPlan(failing, fault)};
      const Outcome outcome = run(world);
      harmless += outcome.done ? 1 : 0;
      EXPECT_TRUE(outcome.done || (outcome.told != usual.told && !outcome.told.empty()))
          << "nobody was told";
      EXPECT_EQ(world.disorder(), "");
      world.plan.heal();
      const Outcome again = run(world);
      EXPECT_TRUE(again.done) << "the next try did not work: " << again.told;
      EXPECT_EQ(world.disorder(), "");
      if (HasFailure()) return;
    }
  }
  std::cout << name << ": " << operations << " outside operations, " << runs
            << " runs with a fault: " << harmless << " done all the same, " << runs - harmless
            << " told to the user\n";
}

INSTANTIATE_TEST_SUITE_P(EachOperation, Faults, testing::ValuesIn(scenarios()),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace touch::test
