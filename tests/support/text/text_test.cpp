#include "support/text/number_layout.h"

#include <charconv>
#include <random>
#include "support/text/language.h"
#include "tests/doubles/test.h"

namespace touch::test {
namespace {

TEST(NumberLayout, WritesTheShortestFormInZonesOfFourteen) {
  const struct {
    std::initializer_list<float> values;
    const char* record;
  } cases[] = {
      {{-1234.5F, -0.0F}, "-1234.5        0 "},
      {{9999999, 1e7F, 0.015F}, " 9999999       1E+07         0.015 "},
      // Thirteen, fourteen and fifteen characters before the second number.
      {{1.23457E+12F, 2}, " 1.23457E+12   2 "},
      {{-1.234568E-12F, 3}, "-1.234568E-12  3 "},
      {{1.1754944E-38F, 3, 4}, " 1.1754944E-38               3             4 "},
  };
  for (const auto& [values, record] : cases) {
    std::string text;
    appendZones(text, values);
    EXPECT_EQ(text, record);
  }
}

TEST(NumberLayout, ReadsTheFloatNextToAnyNumber) {
  std::mt19937 random(1);
  std::vector<std::string> texts = {"16777217",   "16777219.0",      "-0",   ".5", "5.", "-",
                                    "33554433.0", "33554434.000001", "0.00", "."};
  for (int i = 0; i < 50000; ++i) {
    std::string text = std::to_string(random() >> random() % 32);
    if (i % 2 == 0) text += std::to_string(random() >> random() % 32);
    if (i % 4 != 0) text.insert(random() % (text.size() + 1), ".");
    if (i % 3 == 0) text.insert(0, "-");
    texts.push_back(text);
    const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (std::isfinite(value)) texts.push_back(shortestText(value));
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

TEST(NumberLayout, ReadsInPiecesOfAnySize) {
  const std::string text = "Line #001 \r\n 12 \r\n-481.5  0.015 " + std::string(300, '\n') +
                           std::string(200000, '0') + "7.5\t1.5E-02,label of it\r\nwrong";
  for (const std::size_t size : {std::size_t{1}, std::size_t{7}, text.size()}) {
    SCOPED_TRACE(size);
    std::string_view left = text;
    NumberReader reader(
        [&](std::span<char> piece) {
          const std::size_t count = left.copy(piece.data(), std::min(piece.size(), size));
          left.remove_prefix(count);
          return count;
        },
        "f");
    EXPECT_EQ(reader.label(), "Line #001");
    EXPECT_EQ(reader.integer(0, 15, "a"), 12);
    for (const float expected : {-481.5F, 0.015F, 7.5F, 0.015F})
      EXPECT_EQ(reader.number("a"), expected);
    EXPECT_EQ(reader.label(), "label of it");
    EXPECT_EQ(reader.number("a"), 0);
    EXPECT_TRUE(reader.atEnd());
    EXPECT_EQ(reader.error().describe(), "f, line 304: expected a, found \"wrong\"");
  }
}

TEST(Language, FillsPlacesInAnyOrderAndOnlyThose) {
  EXPECT_EQ(filled("%2, then %1, then %2", {"a", "b"}), "b, then a, then b");
  EXPECT_EQ(filled("a value is never a pattern: %1", {"%2"}), "a value is never a pattern: %2");
  EXPECT_EQ(filled("100 %, %0, %3 and %", {"a", "b"}), "100 %, %0, %3 and %");
}

}  // namespace
}  // namespace touch::test
