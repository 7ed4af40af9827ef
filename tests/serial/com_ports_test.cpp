#include "serial/com_ports.h"

#include <gtest/gtest.h>

namespace touch {
namespace {

TEST(ComPorts, GiveTheAssignedDeviceOrThePlatformsOwn) {
  ComPorts ports;
  for (const char* text : {"2=/dev/old", "2=/dev/ttyUSB0", "255=/dev/a=b"}) {
    EXPECT_EQ(ports.assign(text), std::nullopt) << text;
  }
  EXPECT_EQ(ports.device(1), "/dev/ttyS0");
  EXPECT_EQ(ports.device(2), "/dev/ttyUSB0");
  EXPECT_EQ(ports.device(255), "/dev/a=b");
  EXPECT_EQ(ports.describe(2), "COM2 (/dev/ttyUSB0)");

  ASSERT_FALSE(ports.assign("2=2"));
  ASSERT_FALSE(ports.assign("3=COM3"));
  EXPECT_EQ(ports.describe(3), "COM3");
}

TEST(ComPorts, RefuseAnythingButANumberAndADevice) {
  ComPorts ports;
  for (const char* text : {"", "3", "3=", "=", "=/dev/x", "0=/dev/x", "256=/dev/x", "-1=/dev/x",
                           " 3=/dev/x", "3 =/dev/x", "COM3=/dev/x", "3:/dev/x"}) {
    EXPECT_EQ(ports.assign(text), "\"" + std::string(text) +
                                      "\" names no COM port: expected N=DEVICE with N from 1 to "
                                      "255, e.g. 3=/dev/ttyS2");
  }
  EXPECT_EQ(ports.device(3), "/dev/ttyS2");
}

}  // namespace
}  // namespace touch
