#include "serial/receiving/controller_stream.h"

#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

class ControllerStreamTest : public Desk {
 protected:
  FakePort serial{journal};
  ControllerStream stream{access(), prompt, serial, {}};
};

TEST_F(ControllerStreamTest, TellsWhenEachReportCameAndGivesThePortBack) {
  ASSERT_TRUE(stream.begin(1));
  clock.delay(std::chrono::seconds(1));
  serial.received = {0xD8, 0x01, 0x02, 0x03, 0x04, 0x98, 0x7F, 0x7F, 0x00, 0x00, 0xD8};
  const double now = std::chrono::duration<double>(clock.now().time_since_epoch()).count();
  const auto arrived = stream.read();
  ASSERT_EQ(arrived.size(), 2U);
  EXPECT_EQ(arrived[0].report.x.value, 1 + 128 * 2);
  EXPECT_TRUE(arrived[0].report.touching);
  EXPECT_EQ(arrived[1].report.x, arrived[1].report.greatest);
  EXPECT_FALSE(arrived[1].report.touching);
  EXPECT_NEAR(now - arrived[0].time.count(), 6 * 10 / 9600.0, 1e-6) << "six bytes came after it";
  EXPECT_NEAR(now - arrived[1].time.count(), 1 * 10 / 9600.0, 1e-6);
  stream.end();
  EXPECT_TRUE(stream.read().empty());
  EXPECT_EQ(journal,
            (Lines{"OpenController RS232 DEVICE 1", "CloseCOMPort", "settings 9600,n,8,1", "open 1",
                   "clear input", "delay 1000", "close", "ReopenCOMPort", "CloseController"}));
}

TEST_F(ControllerStreamTest, HoldsNothingWhenThePortIsRefused) {
  EXPECT_EQ(stream.begin(7).error(), "there is no COM7");
  EXPECT_EQ(journal.back(), "CloseController");
  EXPECT_FALSE(stream.lost());
}

}  // namespace
}  // namespace touch::test
