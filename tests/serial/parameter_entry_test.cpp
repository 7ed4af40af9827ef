#include "serial/parameter_entry.h"

#include <gtest/gtest.h>

#include "serial/h2d.h"

namespace touch {
namespace {

TEST(AddressSelector, JumpsFrom3FTo80) {
  const std::pair<int, const char*> cases[] = {{0, "00"},  {5, "05"},  {15, "0F"}, {16, "10"},
                                               {32, "20"}, {63, "3F"}, {64, "80"}, {191, "FF"}};
  for (const auto& [value, address] : cases) {
    EXPECT_EQ(selectedAddress(value), address);
  }
  EXPECT_EQ(selectedAddress(addressSelectorStart), "20");
}

TEST(DataBoxes, KeepTheLastTwoCharactersAndTakeOnlyHexadecimalDigits) {
  EXPECT_EQ(keptDataText("1A2"), "A2");
  EXPECT_EQ(keptDataText("12345"), "45");
  EXPECT_EQ(keptDataText("1"), "1");
  EXPECT_TRUE(fillsDataBox("1A"));
  EXPECT_FALSE(fillsDataBox("1"));
  const std::pair<const char*, std::optional<std::string>> cases[] = {{" a1 ", "A1"},
                                                                      {"", ""},
                                                                      {"f", "F"},
                                                                      {"G1", std::nullopt},
                                                                      {"1 2", std::nullopt},
                                                                      {"@", std::nullopt},
                                                                      {"/", std::nullopt},
                                                                      {":", std::nullopt},
                                                                      {"\xC3\xA9", std::nullopt}};
  for (const auto& [text, left] : cases) {
    EXPECT_EQ(leftDataText(text), left) << text;
  }
  const auto bytes = checkedDataBytes("1a", "fF");
  EXPECT_EQ(bytes.high + bytes.low, "1AFF");
  EXPECT_EQ(bytes.error, "");
}

TEST(H2d, TakesWholeHexadecimalTextsOnly) {
  const std::pair<const char*, std::optional<std::uint32_t>> cases[] = {{"0", 0u},
                                                                        {"fF", 255u},
                                                                        {"0010", 16u},
                                                                        {"FFFFFFFF", 0xFFFFFFFFu},
                                                                        {"100000000", std::nullopt},
                                                                        {"", std::nullopt},
                                                                        {"-1", std::nullopt},
                                                                        {"1 ", std::nullopt},
                                                                        {"0x1", std::nullopt}};
  for (const auto& [text, number] : cases) {
    EXPECT_EQ(h2d(text), number) << text;
  }
}

}  // namespace
}  // namespace touch
