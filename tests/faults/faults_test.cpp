
#include <iostream>

#include "tests/faults/fault_world.h"

namespace touch::test {
namespace {

/// Whatever a user does is done once for each outside operation that it takes and each way in which
/// that can fail.
class Faults : public testing::TestWithParam<Scenario> {};

TEST_P(Faults, LeaveNothingOpenHalfDoneOrUnsaid) {
  const auto [name, run] = GetParam();
  FaultWorld sound{FaultPlan{}};
  namesAreOnDisk = bytesCameFirst = true;
  const Outcome usual = run(sound);
  ASSERT_TRUE(usual.done) << usual.told;
  sound.expectOrder();
  EXPECT_TRUE(namesAreOnDisk) << "a power cut takes a file that was written";
  EXPECT_TRUE(bytesCameFirst) << "a power cut leaves an empty file of a name that was good before";
  ASSERT_FALSE(HasFailure());
  const int operations = sound.plan.passed;
  ASSERT_GT(operations, 0);
  const auto openFiles = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); };
  sound.plan.paused = true;  // looking is no operation of the program
  const auto filesBefore = openFiles();

  int runs = 0;
  int harmless = 0;
  for (const Fault fault : {Fault::refused, Fault::nonsense, Fault::gone}) {
    for (int failing = 1; failing <= operations; ++failing, ++runs) {
      SCOPED_TRACE(testing::Message() << "operation " << failing << " of " << operations
                                      << ", fault " << static_cast<int>(fault));
      FaultWorld world{FaultPlan{failing, fault}};
      const Outcome outcome = run(world);
      harmless += outcome.done ? 1 : 0;
      EXPECT_TRUE(outcome.done || (outcome.told != usual.told && !outcome.told.empty()))
          << "nobody was told";
      world.expectOrder();
      world.plan.failing = 0;
      const Outcome again = run(world);
      EXPECT_TRUE(again.done) << "the next try did not work: " << again.told;
      world.expectOrder();
      if (HasFailure()) return;
    }
  }
  std::cout << name << ": " << operations << " outside operations, " << runs
            << " runs with a fault: " << harmless << " done all the same, " << runs - harmless
            << " told to the user\n";
  EXPECT_EQ(openFiles(), filesBefore) << "after a while nothing could be opened any more";
}

INSTANTIATE_TEST_SUITE_P(EachOperation, Faults, testing::ValuesIn(scenarios()),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace touch::test
