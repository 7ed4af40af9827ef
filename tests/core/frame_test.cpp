#include "core/frame.h"

#include <gtest/gtest.h>

#include "core/reply.h"
#include "tests/support/recording_script.h"

namespace touch {
namespace {

using test::Bytes;
using test::bytesOf;

Bytes bytesOf(const Frame& frame) {
  return {frame.bytes().begin(), frame.bytes().end()};
}

TEST(Frame, HasTheBytesThatControllersRead) {
  const struct {
    Frame frame;
    Bytes expected;
  } cases[] = {
      {commandFrame("UT"), {0x01, 0x55, 0x54, 0x0D}},
      {commandFrame(""), {0x01, 0x0D}},
      {parameterReadFrame("01"), {0x01, 0x47, 0x50, 0x30, 0x31, 0x0D}},
      {parameterWriteFrame("01", "1A", "FF"),
       {0x01, 0x53, 0x50, 0x30, 0x31, 0x31, 0x41, 0x46, 0x46, 0x0D}},
      {parameterReadFrame("1"), {}},
      {parameterReadFrame("001"), {}},
      {parameterWriteFrame("1", "1A", "FF"), {}},
      {parameterWriteFrame("01", "A", "FF"), {}},
      {parameterWriteFrame("01", "1A", ""), {}},
  };
  for (const auto& [frame, expected] : cases)
    EXPECT_EQ(bytesOf(frame), expected);
}

TEST(Reply, IsAcknowledgedByItsSecondByteAndCutToItsText) {
  const struct {
    Bytes bytes;
    bool acknowledged;
    std::string text;
  } cases[] = {
      {{}, false, ""},
      {{'0'}, false, ""},
      {{0x01, '0'}, true, ""},
      {{0x01, '0', 0x0D}, true, ""},
      {{0xFF, '0', 0x0D}, true, ""},
      {{0x01, '1', 0x0D}, false, ""},
      {{0x01, 'A', 0x07, 'B', 0x0D}, false, "AB"},
      {{0x01, 0x1F, 0x20, 0xE9, 0x7F, 0x0D}, false, " \xE9\x7F"},
      {test::replyOf("QMRV1000"), false, "QMRV1000"},
  };
  for (const auto& [bytes, acknowledged, text] : cases) {
    const Reply reply{bytes};
    EXPECT_EQ(reply.acknowledged(), acknowledged) << testing::PrintToString(bytes);
    EXPECT_EQ(reply.text(), text) << testing::PrintToString(bytes);
  }
}

}  // namespace
}  // namespace touch
