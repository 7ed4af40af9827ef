#include "core/language.h"

#include <gtest/gtest.h>

namespace touch {
namespace {

/// Backwards, as far as texts without places go.
class Backwards final : public Language {
 public:
  std::string translate(const std::string& context, const std::string& source) const override {
    return context + ':' + std::string(source.rbegin(), source.rend());
  }
};

TEST(Language, IsThatOfTheGlobalLocaleOrEnglish) {
  EXPECT_EQ(say("core", "none"), "none");
  const std::locale before = std::locale::global(std::locale(std::locale(), new Backwards));
  EXPECT_EQ(say("core", marked("core", "none")), "core:enon");
  std::locale::global(before);
  EXPECT_EQ(say("core", "none"), "none");
}

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
