#include "core/exchange/frame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/doubles/recording_script.h"

namespace touch {
namespace {

TEST(Frame, HasTheBytesThatControllersRead) {
  const std::pair<Frame, test::Bytes> cases[] = {
      {commandFrame("UT"), {0x01, 0x55, 0x54, 0x0D}},
      {parameterReadFrame("01"), {0x01, 0x47, 0x50, 0x30, 0x31, 0x0D}},
      {parameterWriteFrame("01", "1A", "FF"),
       {0x01, 0x53, 0x50, 0x30, 0x31, 0x31, 0x41, 0x46, 0x46, 0x0D}},
      {parameterReadFrame("1"), {}},
      {parameterWriteFrame("1", "1A", "FF"), {}},
      {parameterWriteFrame("01", "1A", ""), {}},
  };
  for (const auto& [frame, expected] : cases)
    EXPECT_THAT(frame.bytes(), testing::ElementsAreArray(expected));
}

}  // namespace
}  // namespace touch
