#include <malloc.h>

#include <filesystem>
#include <iostream>

#include "tests/faults/fault_world.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;

/// Whatever a user does is done once for each outside operation that it takes and each way in which
/// that can fail.
class Faults : public testing::TestWithParam<Scenario> {};

TEST_P(Faults, LeaveNothingOpenHalfDoneOrUnsaid) {
  const auto [name, run] = GetParam();
  FaultWorld sound{FaultPlan{}};
  namesAreOnDisk = true;
  const Outcome usual = run(sound);
  ASSERT_TRUE(usual.done) << usual.told;
  sound.expectOrder();
  EXPECT_TRUE(namesAreOnDisk) << "a power cut takes a file that was written";
  ASSERT_FALSE(HasFailure());
  const int operations = sound.plan.passed;
  ASSERT_GT(operations, 0);

  int harmless = 0;
  int runs = 0;
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
}

INSTANTIATE_TEST_SUITE_P(EachOperation, Faults, testing::ValuesIn(scenarios()),
                         [](const auto& tested) { return tested.param.name; });

/// A kiosk's week: everything that a user does, once an hour, every third time with something
/// failing.
TEST(AWeek, TakesNoMemoryAndNoHandles) {
  const auto memoryInUse = [] { return mallinfo2().uordblks; };
  FaultWorld world{FaultPlan{}};
  const auto openHandles = [&world] {
    world.plan = FaultPlan{};  // looking is no operation of the product
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  std::size_t memoryAfterADay = 0;
  std::ptrdiff_t handlesAfterADay = 0;
  int rounds = 0;
  int failed = 0;
  while (world.clock.elapsed() < 7 * 24h) {
    for (const Scenario& scenario : scenarios()) {
      ++rounds;
      const bool faulty = rounds % 3 == 0;
      // Another operation each time, and each way to fail in turn.
      world.plan =
          faulty ? FaultPlan{1 + rounds % 37, static_cast<Fault>(rounds % 9 / 3)} : FaultPlan{};
      const bool done = scenario.run(world).done;
      ASSERT_TRUE(done || faulty) << scenario.name << " in round " << rounds;
      world.expectOrder();
      ASSERT_FALSE(HasFailure()) << scenario.name << " in round " << rounds;
      failed += done ? 0 : 1;
    }
    world.clock.delay(1h);
    world.journal = Lines();
    if (memoryAfterADay == 0 && world.clock.elapsed() >= 24h) {
      memoryAfterADay = memoryInUse();
      handlesAfterADay = openHandles();
    }
  }
  std::cout << rounds << " rounds in a week, " << failed << " ended by a fault; " << memoryAfterADay
            << " bytes in use after a day, " << memoryInUse() << " after seven\n";
  EXPECT_EQ(openHandles(), handlesAfterADay);
  EXPECT_LT(memoryInUse(), memoryAfterADay + 64 * 1024);
}

}  // namespace
}  // namespace touch::test
