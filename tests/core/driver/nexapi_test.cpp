#include "core/driver/nexapi.h"

#include <dlfcn.h>
#include <unistd.h>

#include "core/driver/connection.h"
#include "core/driver/trace.h"
#include "tests/doubles/desk.h"

namespace touch::test {
namespace {

/// Which operation is missing for `work`; empty when none is.
std::string lacking(const std::function<void()>& work) {
  try {
    work();
  } catch (const MissingOperation& missing) {
    EXPECT_EQ(missing.what(),
              "The touch driver library lacks the operation " + missing.operation());
    return missing.operation();
  }
  return {};
}

class IncompleteDriver : public Desk {
 protected:
  IncompleteDriver() : Desk(INCOMPLETE_LIBRARY) {}
};

TEST_F(IncompleteDriver, IsUsedAsFarAsItGoes) {
  Trace trace;
  TracingDriver traced(driver(), trace);
  EXPECT_THAT(traced.missing(),
              ElementsAre("CloseCOMPort", "GetRotation", "SetRotation", "IsPenUp"));
  EXPECT_EQ(lacking([&] {
              Connection connection({session, traced, clock});
              traced.ReopenCOMPort(connection.handle());
              traced.CloseCOMPort(connection.handle());
            }),
            "CloseCOMPort");
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "ReopenCOMPort", "CloseController"}));
}

TEST_F(IncompleteDriver, OpensNothingThatItCannotClose) {
  const auto scant = std::move(*NexapiDriver::bind(SCANT_LIBRARY));
  EXPECT_EQ(lacking([&] { Connection({session, *scant, clock}); }), "CloseController");
  EXPECT_EQ(lacking([&] { scant->GetExistControllers(); }), "GetExistControllers");
}

TEST(DriverLibrary, HasAtLeastOneOperation) {
  Dl_info other{};
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&getpid), &other), 0);
  EXPECT_EQ(NexapiDriver::bind(other.dli_fname).error().reason,
            "it has none of a touch driver's operations");
}

}  // namespace
}  // namespace touch::test
