#include "support/text/language.h"

#include <gtest/gtest.h>

namespace touch {
namespace {

TEST(Language, FillsPlacesInAnyOrderAndOnlyThose) {
  EXPECT_EQ(filled("%2, then %1, then %2", {"a", "b"}), "b, then a, then b");
  EXPECT_EQ(filled("a value is never a pattern: %1", {"%2"}), "a value is never a pattern: %2");
  EXPECT_EQ(filled("100 %, %0, %3 and %", {"a", "b"}), "100 %, %0, %3 and %");
}

}  // namespace
}  // namespace touch
