#include "serial/line_settings.h"

#include <gtest/gtest.h>

namespace touch {
namespace {

TEST(LineSettings, AreReadAndWrittenInOneForm) {
  const struct {
    const char* text = nullptr;
    LineSettings expected;
    const char* written = nullptr;
  } cases[] = {
      {"9600,n,8,1", {}, "9600,n,8,1"},
      {"9600,n,7,2", {9600, Parity::none, 7, 2}, "9600,n,7,2"},
      {"115200,E,5,1", {115200, Parity::even, 5, 1}, "115200,e,5,1"},
      {"1,o,6,2", {1, Parity::odd, 6, 2}, "1,o,6,2"},
  };
  for (const auto& c : cases) {
    const auto settings = parseLineSettings(c.text);
    ASSERT_TRUE(settings) << c.text << settings.error();
    EXPECT_EQ(*settings, c.expected) << c.text;
    EXPECT_EQ(describe(*settings), c.written);
  }
}

TEST(LineSettings, SayWhatIsWrong) {
  const struct {
    const char* text;
    const char* complaint;
  } cases[] = {
      {"", "expected baud rate, parity, data bits and stop bits, e.g. 9600,n,8,1, found \"\""},
      {"9600,n,8", "e.g. 9600,n,8,1, found \"9600,n,8\""},
      {"9600,n,8,1,", "e.g. 9600,n,8,1, found \"9600,n,8,1,\""},
      {"0,n,8,1", "expected a baud rate of 1 to 4000000, found \"0\""},
      {"-9600,n,8,1", "found \"-9600\""},
      {"9600x,n,8,1", "found \"9600x\""},
      {"99999999999,n,8,1", "found \"99999999999\""},
      {",n,8,1", "expected a baud rate of 1 to 4000000, found \"\""},
      {"9600,m,8,1", "expected n, e or o as the parity, found \"m\""},
      {"9600,none,8,1", "found \"none\""},
      {"9600,n,4,1", "expected 5 to 8 data bits, found \"4\""},
      {"9600,n,9,1", "expected 5 to 8 data bits, found \"9\""},
      {"9600,n,8,0", "expected 1 or 2 stop bits, found \"0\""},
      {"9600,n,8,1.5", "expected 1 or 2 stop bits, found \"1.5\""},
  };
  for (const auto& [text, complaint] : cases) {
    const auto settings = parseLineSettings(text);
    ASSERT_FALSE(settings) << text;
    EXPECT_NE(settings.error().find(complaint), std::string::npos) << settings.error();
  }
}

}  // namespace
}  // namespace touch
