#include "core/language.h"

#include <gtest/gtest.h>

namespace touch {
namespace {

TEST(Language, FillsPlacesInAnyOrderAndOnlyThose) {
  const struct {
    const char* pattern;
    std::initializer_list<std::string_view> values;
    const char* expected;
  } cases[] = {
      {"%1 is ready.", {"A"}, "A is ready."},
      {"%2, then %1, then %2", {"a", "b"}, "b, then a, then b"},
      {"a value is never a pattern: %1", {"%2"}, "a value is never a pattern: %2"},
      {"100 %, %0, %3 and %", {"a", "b"}, "100 %, %0, %3 and %"},
      {"", {"a"}, ""},
  };
  for (const auto& [pattern, values, expected] : cases)
    EXPECT_EQ(filled(pattern, values), expected) << pattern;
}

}  // namespace
}  // namespace touch
