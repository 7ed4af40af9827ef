#include "core/driver/host/hosted_driver.h"

#include <array>

#include "core/driver/connection.h"
#include "core/driver/simulation.h"
#include "support/system_clock.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/drivers.h"
#include "tests/doubles/scripted_host.h"

namespace touch::test {
namespace {

using testing::HasSubstr;

/// The recording library in a scripted host.
class HostedDesk : public Desk {
 protected:
  void bind() {
    auto bound = HostedDriver::bind(
        [this]() -> Result<std::unique_ptr<HostLink>, std::string> {
          ++starts;
          return std::unique_ptr<HostLink>(
              std::make_unique<ScriptedHost>(*inner, plan, [this] { script.openHandles.clear(); }));
        },
        "/lib/driver.so", clock, patience);
    ASSERT_TRUE(bound) << bound.error().describe();
    hosted = std::move(*bound);
  }
  /// The message after this many goes wrong.
  void failAfter(int messages, HostFault fault) {
    plan = {plan.passed + 1 + messages, fault, plan.passed};
  }
  Access access() { return {session, *hosted, clock}; }

  Driver* inner = &driver();
  HostPlan plan;
  ScriptedPatience patience;
  int starts = 0;
  std::unique_ptr<BoundDriver> hosted;
};

TEST_F(HostedDesk, CarriesWhatEachOperationIsGivenAndGivesBack) {
  bind();
  script.replies["UT"] = {replyOf("QRMV0301")};
  script.touches = {std::pair{-7, INT32_MAX}};
  script.results["GetRotation"] = INT32_MIN;
  Connection connection(access());
  EXPECT_EQ(connection.handle(), 2);
  connection.write(commandFrame("UT"));
  EXPECT_EQ(connection.read().bytes, replyOf("QRMV0301"));
  std::array<std::int32_t, 2> raw{};
  EXPECT_EQ(hosted->CalCurrentPointReady(connection.handle(), raw.data()), 1);
  EXPECT_EQ(raw, (std::array<std::int32_t, 2>{-7, INT32_MAX}));
  raw = {3, 4};
  EXPECT_EQ(hosted->CalCurrentPointReady(connection.handle(), raw.data()), 0);
  EXPECT_EQ(raw, (std::array<std::int32_t, 2>{3, 4})) << "nothing was written to it";
  EXPECT_EQ(hosted->GetRotation(connection.handle()), INT32_MIN);
  EXPECT_EQ(hosted->SetCalPoint(connection.handle(), -1, 60, 0), 1);
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "WriteBuffer UT", "ReadBuffer 10",
                            "CalCurrentPointReady", "CalCurrentPointReady", "GetRotation",
                            "SetCalPoint -1 60 0"}));
}

TEST_F(HostedDesk, CutsWhatALyingDriverReturns) {
  bind();
  script.lies = true;
  script.names = {std::string(40, 'N')};
  EXPECT_EQ(controllerName(*hosted, 1), std::string(20, 'N'));
  script.replies["UT"] = {Bytes(15, 'x')};
  Connection connection(access());
  connection.write(commandFrame("UT"));
  EXPECT_EQ(connection.read().bytes, Bytes(10, 'x'));
}

TEST_F(HostedDesk, LacksWhatItsLibraryLacks) {
  LackingDriver lacking(driver(), {"IsPenUp", "CloseController"});
  inner = &lacking;
  bind();
  EXPECT_THAT(hosted->missing(), testing::UnorderedElementsAre("IsPenUp", "CloseController"));
  EXPECT_THROW(hosted->IsPenUp(2), MissingOperation);
  EXPECT_THROW(hosted->OpenController("what cannot be closed"), MissingOperation);
  EXPECT_EQ(journal, Lines{});
}

TEST_F(HostedDesk, IsDeadAfterALossUntilAnActionBegins) {
  bind();
  {
    Connection connection(access());
    failAfter(0, HostFault::crash);
    EXPECT_EQ(hosted->GetRotation(connection.handle()), 0);
    EXPECT_EQ(hosted->SetRotation(connection.handle(), 1), 0);
  }
  EXPECT_EQ(starts, 1);
  EXPECT_EQ(patience.losses,
            Lines{"The touch driver /lib/driver.so crashed in GetRotation: Segmentation fault "
                  "(SIGSEGV)."});
  EXPECT_EQ(hosted->report().lastLoss, patience.losses.front());
  EXPECT_TRUE(Connection(access()).isOpen());
  EXPECT_EQ(starts, 2);
}

TEST_F(HostedDesk, IsLeftAloneAfterThreeCrashesInARow) {
  bind();
  for (int crash = 1; crash <= HostedDriver::mostCrashes; ++crash) {
    // A fresh host is first told what to bind.
    failAfter(crash == 1 ? 0 : 1, HostFault::crash);
    EXPECT_EQ(hosted->GetExistControllers(), 0);
  }
  plan.failing = 0;
  EXPECT_THAT(patience.losses.back(), HasSubstr("three times in a row"));
  EXPECT_EQ(hosted->GetExistControllers(), 0);
  EXPECT_EQ(starts, HostedDriver::mostCrashes);
  hosted->revive();
  EXPECT_EQ(hosted->GetExistControllers(), 1);
  EXPECT_EQ(patience.losses.size(), 3u);
}

TEST_F(HostedDesk, IsStartedAgainAsOftenAsItWorksBetweenItsCrashes) {
  bind();
  for (int crash = 1; crash <= 2 * HostedDriver::mostCrashes; ++crash) {
    EXPECT_TRUE(Connection(access()).isOpen()) << crash;
    failAfter(0, HostFault::crash);
    EXPECT_EQ(hosted->GetExistControllers(), 0);
  }
  EXPECT_EQ(starts, 2 * HostedDriver::mostCrashes);
}

TEST_F(HostedDesk, AnswersNobodyWhoAsksInTheMiddleOfACall) {
  bind();
  failAfter(0, HostFault::hang);
  patience.onWait = [this] {
    EXPECT_EQ(hosted->OpenController("USB DEVICE 2"), 0);
    EXPECT_EQ(hosted->GetExistControllers(), 0);
  };
  EXPECT_EQ(hosted->QueryMultiMonitorSetOK(), 0);
  EXPECT_EQ(clock.elapsed(), std::chrono::seconds(3));
  EXPECT_EQ(journal, Lines{});
}

TEST_F(HostedDesk, HasASecondForAllThatIsLeftWhenTheProgramEnds) {
  bind();
  patience.ending = true;
  failAfter(0, HostFault::hang);
  EXPECT_EQ(hosted->GetExistControllers(), 0);
  EXPECT_EQ(clock.elapsed(), std::chrono::seconds(1));
  EXPECT_EQ(hosted->GetExistControllers(), 0);
  EXPECT_EQ(starts, 1) << "no host for a program that ends";
  EXPECT_EQ(clock.elapsed(), std::chrono::seconds(1));
}

TEST(HostMessages, AreReadAsTheyWereSentAndNothingElseIs) {
  const HostMessage message{"WriteBuffer", {INT32_MIN, std::string("\0\xFF", 2), INT32_MAX, ""}};
  HostMessageReader reader;
  const std::string bytes = encoded(message).value();
  for (const char byte : bytes) {
    const auto early = reader.next();
    ASSERT_TRUE(early && !*early);
    reader.add({&byte, 1});
  }
  EXPECT_EQ(**reader.next(), message);
  EXPECT_EQ(encoded({"long", {std::string(longestHostMessage, 'x')}}), std::nullopt);

  using namespace std::string_literals;
  const std::pair<const char*, std::string> damages[] = {
      {"a length that nothing has", "\xFF\xFF\xFF\xFF"s},
      {"nothing", "\0\0\0\0"s},
      {"no array", "\1\0\0\0\x01"s},
      {"no name", "\1\0\0\0\x80"s},
      {"a number for a name", "\2\0\0\0\x81\x01"s},
      {"less than the array says", "\3\0\0\0\x82\x61x"s},
      {"more behind the array", "\4\0\0\0\x81\x61x\x01"s},
      {"an array within", "\4\0\0\0\x82\x61x\x80"s},
      {"a map", "\1\0\0\0\xA0"s},
      {"a fraction", "\6\0\0\0\x82\x61x\xF9\x3C\0"s},
      {"a number of 33 bits", "\x0C\0\0\0\x82\x61x\x1B\0\0\0\1\0\0\0\0"s},
      {"bytes beyond the end", "\5\0\0\0\x82\x61x\x58\xFF"s},
      {"a thousand strings in one another", "\xE8\3\0\0\x82\x61x"s + std::string(997, '\x5F')},
  };
  for (const auto& [what, damaged] : damages) {
    HostMessageReader one;
    one.add(damaged);
    const auto read = one.next();
    EXPECT_FALSE(read) << what;
    EXPECT_TRUE(read || read.error().starts_with("a message of")) << what;
  }
}

TEST(DriverServer, TakesNothingButWhatAHostIsSent) {
  std::vector<std::string> journal;
  int bound = 0;
  DriverServer server([&bound](const auto&) -> BoundDriverOrError {
    ++bound;
    return tl::unexpected(BindError{"x", "there is none"});
  });
  const HostMessage cases[] = {{"", {}},
                               {"bind", {}},
                               {"bind", {1}},
                               {"bind", {"x", 1}},
                               {"OpenController", {"before it is bound"}},
                               {"simulate", {"touch 0 0"}}};
  for (const HostMessage& message : cases)
    EXPECT_EQ(server.answer(message), std::nullopt) << message.name;
  EXPECT_EQ(bound, 0);
  EXPECT_EQ(server.answer({"bind", {hostProtocol + 1, ""}})->name, "refused");
  EXPECT_EQ(server.answer({"bind", {hostProtocol, ""}}),
            (HostMessage{"refused", {"there is none", ""}}));
}

/// In a real process.
TEST(HostProcess, GivesASimulatedDriverItsHand) {
  SystemClock clock;
  ScriptedPatience patience;
  auto bound = HostedDriver::bind([] { return startHostProcess(TOUCHDRIVER); }, SIMULATOR_LIBRARY,
                                  clock, patience);
  ASSERT_TRUE(bound) << bound.error().describe();
  const Simulation simulation(**bound);
  ASSERT_TRUE(simulation.isThere());
  EXPECT_EQ(simulation.request("clock manual"), "");
  simulation.touch(0.25, 0.75);
  EXPECT_TRUE(simulation.panelError("USB DEVICE 2"));
  EXPECT_FALSE(simulation.request("no such request"));
  const std::int32_t handle = (*bound)->OpenController("USB DEVICE 2");
  EXPECT_EQ((*bound)->IsPenUp(handle), 0);
  simulation.lift();
  EXPECT_NE((*bound)->IsPenUp(handle), 0);
  (*bound)->CloseController(handle);
  EXPECT_EQ(patience.losses, Lines{});
}

TEST(HostProcess, SaysWhyALibraryCannotBeBound) {
  SystemClock clock;
  ScriptedPatience patience;
  const auto start = [] { return startHostProcess(TOUCHDRIVER); };
  EXPECT_THAT(HostedDriver::bind(start, "/none.so", clock, patience).error().describe(),
              HasSubstr("/none.so cannot be used: /none.so: cannot open shared object file"));
  const auto other = [] { return startHostProcess("/bin/true"); };
  EXPECT_THAT(HostedDriver::bind(other, "/none.so", clock, patience).error().reason,
              HasSubstr("it crashed as it was loaded: it ended by itself, with status 0"));
  const auto none = [] { return startHostProcess("/no/host"); };
  EXPECT_THAT(HostedDriver::bind(none, "/none.so", clock, patience).error().reason,
              HasSubstr("/no/host cannot be started: No such file or directory"));
}

}  // namespace
}  // namespace touch::test
