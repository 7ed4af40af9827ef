#pragma once

#include "core/driver/nexapi.h"
#include "core/session.h"
#include "tests/doubles/recording_driver.h"
#include "tests/doubles/scripted_prompt.h"
#include "tests/doubles/virtual_clock.h"

namespace touch::test {

/// A table with everything on it that an action needs: the recording driver library bound as users
/// bind theirs, the virtual clock and a scripted prompt, all writing into one journal in the order
/// in which things happen.
class Desk : public testing::Test {
 protected:
  /// `library`: the one that leads to the recording driver, or only a part of it.
  explicit Desk(const char* library = ATTACHED_LIBRARY) {
    auto bound = NexapiDriver::bind(library);
    if (!bound) throw std::runtime_error(bound.error().describe());
    driver_ = std::move(*bound);
    std::bit_cast<void (*)(Driver*)>(driver_->extraExport("AttachDriver"))(&script);
    script.names = {"RS232 DEVICE 1"};
    session.controllerName = "RS232 DEVICE 1";
  }

  /// Whatever a test did, no controller stays open.
  void TearDown() override {
    EXPECT_TRUE(script.openHandles.empty()) << "a controller stayed open";
  }

  Driver& driver() { return *driver_; }
  Access access() { return {session, *driver_, clock}; }

  Lines journal;
  RecordingDriver script{journal};
  VirtualClock clock{journal};
  ScriptedPrompt prompt{journal};
  Session session;

 private:
  std::unique_ptr<NexapiDriver> driver_;
};

}  // namespace touch::test
