#include <malloc.h>

#include <filesystem>
#include <iostream>

#include "tests/faults/scenarios.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;

std::size_t memoryInUse() {
  return mallinfo2().uordblks;
}
std::ptrdiff_t openHandles() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

/// A kiosk's week: everything that a user does, once an hour, every third time with something failing.
TEST(AWeek, TakesNoMemoryAndNoHandles) {
  FaultWorld world{FaultPlan()};
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
          faulty ? FaultPlan(1 + rounds % 37, static_cast<Fault>(rounds % 9 / 3)) : FaultPlan();
      const bool done = scenario.run(world).done;
      ASSERT_TRUE(done || faulty) << scenario.name << " in round " << rounds;
      ASSERT_EQ(world.disorder(), "") << scenario.name << " in round " << rounds;
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
  constexpr std::size_t slack = 64 * 1024;
  EXPECT_LT(memoryInUse(), memoryAfterADay + slack);
}

}  // namespace
}  // namespace touch::test
