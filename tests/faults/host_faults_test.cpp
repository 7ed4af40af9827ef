#include <iostream>

#include "core/driver/host/hosted_driver.h"
#include "tests/doubles/scripted_host.h"
#include "tests/faults/fault_world.h"

namespace touch::test {
namespace {

/// The same world with the driver in a host, over the messages to which the plan decides.
class HostedWorld {
 public:
  explicit HostedWorld(HostPlan faults) : plan(faults) {
    auto bound = HostedDriver::bind(
        [this]() -> Result<std::unique_ptr<HostLink>, std::string> {
          return std::unique_ptr<HostLink>(
              std::make_unique<ScriptedHost>(world.driver, plan, [this] { forgetProcess(); }));
        },
        "/lib/driver.so", world.clock, patience);
    if (!bound) throw std::runtime_error(bound.error().describe());
    driver_ = std::move(*bound);
    world.used = driver_.get();
  }

  FaultWorld world{FaultPlan{}};
  HostPlan plan;
  ScriptedPatience patience;

 private:
  /// The system takes from a process that ends all that it had open.
  void forgetProcess() {
    world.driver.openControllers.clear();
    world.driver.portIsTaken = false;
    world.forgetHandles();
  }

  std::unique_ptr<BoundDriver> driver_;
};

class HostFaults : public testing::TestWithParam<Scenario> {};

TEST_P(HostFaults, LeaveTheProgramAliveAndNothingOpenOrUnsaid) {
  const auto [name, run] = GetParam();
  FaultWorld direct{FaultPlan{}};
  ASSERT_TRUE(run(direct).done);
  HostedWorld sound{HostPlan{}};
  const Outcome usual = run(sound.world);
  ASSERT_TRUE(usual.done) << usual.told;
  EXPECT_EQ(sound.world.journal, direct.journal) << "other calls, in another order or with other "
                                                    "waits, than without a host";
  const int messages = sound.plan.passed;

  int runs = 0;
  for (const HostFault fault :
       {HostFault::hang, HostFault::crash, HostFault::garbage, HostFault::endOfPipe}) {
    // The first message binds the library; without it there is no program.
    for (int failing = 2; failing <= messages; ++failing, ++runs) {
      SCOPED_TRACE(testing::Message() << "message " << failing << " of " << messages << ", fault "
                                      << static_cast<int>(fault));
      HostedWorld hosted{HostPlan{failing, fault}};
      run(hosted.world);
      EXPECT_EQ(hosted.patience.losses.size(), 1u) << "the loss was not said";
      EXPECT_EQ(hosted.patience.givenUp.size(), fault == HostFault::hang ? 1u : 0u);
      hosted.world.expectOrder();
      const Outcome again = run(hosted.world);
      EXPECT_TRUE(again.done) << "the next action did not work: " << again.told;
      EXPECT_EQ(hosted.patience.losses.size(), 1u);
      hosted.world.expectOrder();
      if (HasFailure()) return;
    }
  }
  std::cout << name << ": " << messages << " messages, " << runs << " runs with a fault\n";
}

std::vector<Scenario> drivenScenarios() {
  std::vector<Scenario> driven;
  for (const Scenario& scenario : scenarios()) {
    for (const std::string_view name :
         {"StartUp", "Settings", "ParameterWrite", "Calibration9", "SerialExchange"})
      if (scenario.name == name) driven.push_back(scenario);
  }
  return driven;
}

INSTANTIATE_TEST_SUITE_P(EachMessage, HostFaults, testing::ValuesIn(drivenScenarios()),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace touch::test
