#include "linetest/number_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <clocale>
#include <cmath>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/comma_locale.h"

namespace touch {
namespace {

TEST(NumberLayout, WritesTheShortestForm) {
  const std::pair<float, const char*> cases[] = {
      {-0.0F, "0"},         {0.1F, "0.1"},           {-0.25F, "-0.25"},
      {28785.0F, "28785"},  {9999999.0F, "9999999"}, {1e7F, "1E+07"},
      {1.5e-5F, "1.5E-05"}, {0.015F, "0.015"},       {-3.4e38F, "-3.4E+38"}};
  for (const auto& [value, text] : cases)
    EXPECT_EQ(shortestText(value), text);
}

TEST(NumberLayout, RoundsHalvesAwayFromZero) {
  const struct {
    double value;
    int decimals;
    const char* text;
  } cases[] = {{0.125, 2, "0.13"},
               {-0.125, 2, "-0.13"},
               {0.124, 2, "0.12"},
               {12.5, 0, "13"},
               {-0.04, 1, "-0.0"},
               {99.995, 2, "100.00"},
               {1e20, 1, "100000000000000000000.0"}};
  for (const auto& c : cases)
    EXPECT_EQ(fixedText(c.value, c.decimals), c.text);
}

TEST(NumberLayout, StartsEachZoneAtAMultipleOfFourteen) {
  const struct {
    std::initializer_list<float> values;
    const char* record;
  } cases[] = {
      {{1, 2}, " 1             2 "},
      {{-1234.5F, -0.5F}, "-1234.5       -0.5 "},
      // Thirteen, fourteen, fourteen and fifteen characters before the second number.
      {{1.23457E+12F, 2}, " 1.23457E+12   2 "},
      {{1.234567E+12F, 2}, " 1.234567E+12  2 "},
      {{-1.234568E-12F, 3}, "-1.234568E-12  3 "},
      {{1.1754944E-38F, 3, 4}, " 1.1754944E-38               3             4 "},
  };
  for (const auto& [values, record] : cases) {
    std::string text;
    appendZones(text, values);
    EXPECT_EQ(text, record);
  }
}

TEST(NumberLayout, ReadsWhatItWrote) {
  std::mt19937 random(1);
  for (int i = 0; i < 2000; ++i) {
    const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (!std::isfinite(value)) continue;
    const std::string text = shortestText(value);
    NumberReader reader(text, "f");
    ASSERT_EQ(reader.number("a number"), value) << text;
    ASSERT_TRUE(reader.atEnd() && !reader.failed()) << text;
  }
}

TEST(NumberLayout, ReadsTheFloatNextToAnyDecimalFraction) {
  std::mt19937 random(1);
  std::vector<std::string> texts = {"16777217",   "16777219.0",      "-0",   ".5", "5.", "-",
                                    "33554433.0", "33554434.000001", "0.00", "."};
  for (int i = 0; i < 50000; ++i) {
    std::string text = std::to_string(random() >> random() % 32);
    if (i % 2 == 0) text += std::to_string(random() >> random() % 32);
    if (i % 4 != 0) text.insert(random() % (text.size() + 1), ".");
    if (i % 3 == 0) text.insert(0, "-");
    texts.push_back(text);
  }
  for (const std::string& text : texts) {
    float expected = 0;
    const bool valid =
        std::from_chars(text.data(), text.data() + text.size(), expected).ec == std::errc();
    NumberReader reader(text, "f");
    const float value = reader.number("a number");
    ASSERT_EQ(std::bit_cast<std::uint32_t>(value), std::bit_cast<std::uint32_t>(expected)) << text;
    ASSERT_EQ(reader.failed(), !valid) << text;
  }
}

TEST(NumberLayout, ReadsEverySeparatorAndExponent) {
  for (const char* text : {" 1.5 -2 300 \r\n", "1.5,-2,3E2", "1.5\t-2.0\t+3.0e+02\n",
                           "\r\n 15E-01\n\n-2\r\n300", "1.5 , -2 , 300", "1.5\r-2\r300"}) {
    NumberReader reader(text, "f");
    for (const float expected : {1.5F, -2.0F, 300.0F})
      EXPECT_EQ(reader.number("x"), expected) << text;
    EXPECT_TRUE(reader.atEnd() && !reader.failed()) << text;
  }
}

TEST(NumberLayout, ReadsAlikeInPiecesOfAnySize) {
  const std::string gap(300, '\n');
  const std::string number = std::string(200000, '0') + "7.5";
  const std::string text = "Line #001 \r\n 12 \r\n-481.5  0.015 " + gap + number +
                           "\t1.5E-02,label of " + std::string(90, 'z') + "\r\nwrong";
  for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::size_t{64}, text.size()}) {
    std::string_view left = text;
    NumberReader reader(
        [&](std::span<char> piece) {
          const std::size_t count = left.copy(piece.data(), std::min(piece.size(), size));
          left.remove_prefix(count);
          return count;
        },
        "f");
    EXPECT_EQ(reader.label(), "Line #001") << size;
    EXPECT_EQ(reader.integer(0, 15, "a"), 12) << size;
    for (const float expected : {-481.5F, 0.015F, 7.5F, 0.015F})
      EXPECT_EQ(reader.number("a"), expected) << size;
    EXPECT_EQ(reader.label(), "label of " + std::string(90, 'z')) << size;
    EXPECT_EQ(reader.number("a"), 0) << size;
    ASSERT_TRUE(reader.failed()) << size;
    EXPECT_EQ(reader.error().describe(), "f, line 304: expected a, found \"wrong\"") << size;
    EXPECT_TRUE(reader.atEnd());
  }
}

TEST(NumberLayout, NamesWhatIsWrong) {
  const std::pair<const char*, const char*> cases[] = {
      {"\r\n\r\nabc", "3: expected an x, found \"abc\""},
      {"1.5.2", "1: expected an x, found \"1.5.2\""},
      {"nan", "1: expected an x, found \"nan\""},
      {"inf", "1: expected an x, found \"inf\""},
      {"1e99", "1: expected an x, found \"1e99\""},
      {"0x10", "1: expected an x, found \"0x10\""},
      {"--1", "1: expected an x, found \"--1\""},
      {"\n \t", "2: expected an x, found the end of the file"},
  };
  for (const auto& [text, error] : cases) {
    NumberReader reader(text, "f");
    EXPECT_EQ(reader.number("an x"), 0);
    ASSERT_TRUE(reader.failed()) << text;
    EXPECT_EQ(reader.error().describe(), std::string("f, line ") + error);
    EXPECT_TRUE(reader.atEnd());
  }
}

TEST(NumberLayout, KeepsItsPointInEveryLocale) {
  const test::CommaLocale locale;
  ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  std::string text;
  appendZones(text, {12345.5F, -0.25F});
  EXPECT_EQ(text, " 12345.5      -0.25 ");
  EXPECT_EQ(fixedText(1234.5, 2), "1234.50");
  EXPECT_EQ(threeDigits(12345), "12345");
  EXPECT_EQ(NumberReader(text, "f").number("x"), 12345.5F);
}

}  // namespace
}  // namespace touch
